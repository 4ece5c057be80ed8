// JsonText: JSON with places.

#include "agentlibs/inventory/JsonText.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>

namespace orl
{

namespace
{

// The parser tells its handler what it found but not where. It takes its input one byte at a time, so an iterator that
// tells how far it has come says where the token that was just found ends.
class CountingIterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* position, const char** reached) : m_position(position), m_reached(reached) {}

    reference operator*() const { return *m_position; }
    CountingIterator& operator++()
    {
        ++m_position;
        *m_reached = m_position;
        return *this;
    }
    bool operator==(const CountingIterator& other) const { return m_position == other.m_position; }
    bool operator!=(const CountingIterator& other) const { return m_position != other.m_position; }

private:
    const char* m_position;
    const char** m_reached;
};

bool StandsBetweenTokens(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == ',' || c == ':';
}

bool BelongsToNumber(char c)
{
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

// What is worth saying of the parser's message: it repeats its own error number and a position that we give ourselves.
std::string Reason(const std::string& message)
{
    const size_t start = message.find("syntax error");
    if (start != std::string::npos)
        return message.substr(start);
    const size_t number = message.find("] ");
    return number == std::string::npos ? message : message.substr(number + 2);
}

// Builds the values as the parser finds them.
class Builder
{
public:
    Builder(const JsonText& source, const char* const& reached)
        : m_source(source), m_text(source.Text()), m_reached(reached)
    {
    }

    JsonValue Take() { return std::move(m_root); }

    // The calls of the parser; each answers whether to go on.
    bool null() { return Add(JsonValue::Kind::Null), true; }
    bool boolean(bool value)
    {
        Add(JsonValue::Kind::Boolean).boolean = value;
        return true;
    }
    bool number_integer(nlohmann::json::number_integer_t) { return Number(); }
    bool number_unsigned(nlohmann::json::number_unsigned_t) { return Number(); }
    bool number_float(nlohmann::json::number_float_t, const std::string&) { return Number(); }
    bool string(std::string& value)
    {
        Add(JsonValue::Kind::Text).text = std::move(value);
        return true;
    }
    bool binary(nlohmann::json::binary_t&) { return false; } // is not in the text form of JSON
    bool start_object(std::size_t) { return Open(JsonValue::Kind::Object); }
    bool end_object()
    {
        RefuseKeysThatStandTwice(*m_open.back());
        return Close();
    }
    bool start_array(std::size_t) { return Open(JsonValue::Kind::List); }
    bool end_array() { return Close(); }
    bool key(std::string& name)
    {
        m_open.back()->members.push_back({std::move(name), NextToken(), {}});
        m_tokenEnd = Reached();
        return true;
    }
    bool parse_error(std::size_t position, const std::string&, const nlohmann::json::exception& error)
    {
        m_source.Refuse(position == 0 ? 0 : position - 1, {}, "not JSON: " + Reason(error.what()));
    }

private:
    std::size_t Reached() const { return static_cast<std::size_t>(m_reached - m_text.data()); }

    std::size_t NextToken() const
    {
        std::size_t offset = m_tokenEnd;
        while (offset < m_text.size() && StandsBetweenTokens(m_text[offset]))
            ++offset;
        return offset;
    }

    JsonValue& Add(JsonValue::Kind kind)
    {
        JsonValue* place = &m_root;
        if (!m_open.empty() && m_open.back()->kind == JsonValue::Kind::Object)
            place = &m_open.back()->members.back().value;
        else if (!m_open.empty())
            place = &m_open.back()->items.emplace_back();
        place->kind = kind;
        place->offset = NextToken();
        m_tokenEnd = Reached();
        place->end = m_tokenEnd;
        return *place;
    }

    bool Number()
    {
        JsonValue& value = Add(JsonValue::Kind::Number);
        // The parser looks one byte past a number to see its end.
        m_tokenEnd = value.offset;
        while (m_tokenEnd < m_text.size() && BelongsToNumber(m_text[m_tokenEnd]))
            ++m_tokenEnd;
        value.end = m_tokenEnd;
        value.text = m_text.substr(value.offset, m_tokenEnd - value.offset);
        return true;
    }

    bool Open(JsonValue::Kind kind)
    {
        JsonValue& value = Add(kind);
        if (m_open.size() == JsonText::MaxDepth)
            m_source.Refuse(value.offset, PointerToOpen(),
                            "nested deeper than " + std::to_string(JsonText::MaxDepth) + " levels");
        m_open.push_back(&value);
        return true;
    }

    bool Close()
    {
        m_tokenEnd = Reached();
        m_open.back()->end = m_tokenEnd;
        m_open.pop_back();
        return true;
    }

    void RefuseKeysThatStandTwice(const JsonValue& object) const
    {
        std::vector<const JsonMember*> byKey;
        byKey.reserve(object.members.size());
        for (const JsonMember& member : object.members)
            byKey.push_back(&member);
        std::stable_sort(byKey.begin(), byKey.end(), [](auto a, auto b) { return a->key < b->key; });
        const auto twice =
            std::adjacent_find(byKey.begin(), byKey.end(), [](auto a, auto b) { return a->key == b->key; });
        if (twice == byKey.end())
            return;
        m_source.Refuse(twice[1]->offset, PointerToOpen(),
                        "the key " + Quoted(twice[1]->key) + " stands twice in this object, first at " +
                            m_source.LineAndColumn(twice[0]->offset));
    }

    // The pointer to the innermost value that is still open.
    std::string PointerToOpen() const
    {
        std::vector<JsonPlace> places(std::max<std::size_t>(m_open.size(), 1));
        for (std::size_t level = 1; level < m_open.size(); ++level)
        {
            const JsonValue& container = *m_open[level - 1];
            places[level].parent = &places[level - 1];
            if (container.kind == JsonValue::Kind::Object)
                places[level].key = container.members.back().key;
            else
                places[level].index = container.items.size() - 1;
        }
        return PointerTo(places.back());
    }

    const JsonText& m_source;
    const std::string& m_text;
    const char* const& m_reached; // how far the parser has read
    std::size_t m_tokenEnd = 0;
    JsonValue m_root;
    std::vector<JsonValue*> m_open; // from the root inwards; only the last one grows, so the pointers hold
};

std::string Printable(std::string_view text)
{
    constexpr size_t longest = 60;
    std::string shown(text.substr(0, longest));
    if (text.size() > longest)
    {
        while (!shown.empty() && (static_cast<unsigned char>(shown.back()) & 0xC0) == 0x80)
            shown.pop_back(); // not in the middle of a character
        if (!shown.empty() && static_cast<unsigned char>(shown.back()) >= 0x80)
            shown.pop_back();
        shown += "...";
    }
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
    return shown;
}

} // namespace

std::string Quoted(std::string_view text)
{
    return '"' + Printable(text) + '"';
}

std::string JsonString(std::string_view text)
{
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string PointerTo(const JsonPlace& place)
{
    std::string pointer;
    for (const JsonPlace* at = &place; at->parent != nullptr; at = at->parent)
    {
        std::string part = "/";
        if (at->key.data() == nullptr)
            part += std::to_string(at->index);
        else
            for (const char c : Printable(at->key))
                part += c == '~' ? std::string("~0") : c == '/' ? std::string("~1") : std::string(1, c);
        pointer.insert(0, part);
    }
    return pointer;
}

JsonValue JsonText::Parse() const
{
    // The parser takes it for the end and would leave what follows unread.
    if (const std::size_t zero = m_text.find('\0'); zero != std::string::npos)
        Refuse(zero, {}, "not JSON: a byte of value 0");

    const char* reached = m_text.data();
    Builder builder(*this, reached);
    const CountingIterator first(m_text.data(), &reached);
    const CountingIterator last(m_text.data() + m_text.size(), &reached);
    nlohmann::json::sax_parse(first, last, &builder);
    return builder.Take();
}

JsonText::Position JsonText::PositionOf(std::size_t offset) const
{
    const std::string_view before = std::string_view(m_text).substr(0, offset);
    const size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0: the first line
    const auto characters = std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineStart), before.end(),
                                          [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    const auto lines = std::count(before.begin(), before.end(), '\n');
    return {static_cast<size_t>(lines) + 1, static_cast<size_t>(characters) + 1};
}

std::string JsonText::LineAndColumn(std::size_t offset) const
{
    const Position position = PositionOf(offset);
    return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
}

void JsonText::Refuse(std::size_t offset, const std::string& pointer, const std::string& reason) const
{
    const Position position = PositionOf(offset);
    std::string place = ":" + std::to_string(position.line) + ":" + std::to_string(position.column) + ": ";
    if (!pointer.empty())
        place += pointer + ": ";
    throw BackendError(ERROR_INVALID_DATA, m_name + Widen(place + reason));
}

} // namespace orl
