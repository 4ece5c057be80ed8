// ObjectReader: one JSON object against what may stand in it.

#include "agentlibs/inventory/ObjectReader.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"

#include <algorithm>
#include <charconv>
#include <numeric>

namespace orl
{

namespace
{

const char* Describe(JsonValue::Kind kind)
{
    switch (kind)
    {
    case JsonValue::Kind::Null:
        return "null";
    case JsonValue::Kind::Boolean:
        return "a boolean";
    case JsonValue::Kind::Number:
        return "a number";
    case JsonValue::Kind::Text:
        return "a text";
    case JsonValue::Kind::List:
        return "a list";
    case JsonValue::Kind::Object:
        break;
    }
    return "an object";
}

// The value as a message shows it.
std::string Found(const JsonValue& value)
{
    switch (value.kind)
    {
    case JsonValue::Kind::Number:
        return std::string(std::string_view(value.text).substr(0, 40));
    case JsonValue::Kind::Text:
        return Quoted(value.text);
    default:
        return Describe(value.kind);
    }
}

// How many letters have to be changed, added or left out to come from one key to the other, whatever their case.
std::size_t Distance(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i)
    {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j)
        {
            const std::size_t changed = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

template <typename Whole>
std::optional<Whole> ParseDigits(std::string_view digits, int base)
{
    Whole number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}

std::optional<ULONGLONG> ParseWhole(const JsonValue& value)
{
    std::string_view digits = value.text;
    int base = 10;
    if (value.kind == JsonValue::Kind::Text)
    {
        if (digits.size() < 3 || digits[0] != '0' || (digits[1] != 'x' && digits[1] != 'X'))
            return std::nullopt;
        digits.remove_prefix(2);
        base = 16;
    }
    else if (value.kind != JsonValue::Kind::Number)
        return std::nullopt;
    return ParseDigits<ULONGLONG>(digits, base);
}

template <typename Whole>
std::string NoWholeNumber(Whole low, Whole high, const JsonValue& found)
{
    return "expected a whole number from " + std::to_string(low) + " to " + std::to_string(high) + ", found " +
           Found(found);
}

std::optional<LONGLONG> ParseSigned(const JsonValue& value)
{
    if (value.kind == JsonValue::Kind::Number && value.text.starts_with('-'))
        return ParseDigits<LONGLONG>(value.text, 10);
    const auto number = ParseWhole(value);
    return number && *number <= 0xFFFFFFFF ? std::optional(static_cast<LONGLONG>(*number)) : std::nullopt;
}

} // namespace

ObjectReader::ObjectReader(const JsonText& source, const JsonPlace& place, const JsonValue& value)
    : m_source(source), m_place(place), m_value(value)
{
    if (value.kind != JsonValue::Kind::Object)
        source.Refuse(value.offset, PointerTo(place), std::string("expected an object, found ") + Describe(value.kind));
}

const JsonMember* ObjectReader::Member(std::string_view key) const
{
    const auto member =
        std::find_if(m_value.members.begin(), m_value.members.end(), [&](const auto& m) { return m.key == key; });
    return member == m_value.members.end() ? nullptr : &*member;
}

const JsonValue* ObjectReader::Find(std::string_view key, JsonValue::Kind kind)
{
    m_known.push_back(key);
    const JsonMember* member = Member(key);
    if (member == nullptr)
        return nullptr;
    if (member->value.kind != kind)
        Refuse(key, std::string("expected ") + Describe(kind) + ", found " + Describe(member->value.kind));
    return &member->value;
}

bool ObjectReader::Has(std::string_view key) const
{
    return Member(key) != nullptr;
}

void ObjectReader::Text(std::string_view key, COrlString& out)
{
    const JsonValue* value = Find(key, JsonValue::Kind::Text);
    if (value == nullptr)
        return;
    if (value->text.size() > MaxTextBytes)
        Refuse(key, "the text is " + std::to_string(value->text.size()) + " bytes long; at most " +
                        std::to_string(MaxTextBytes) + " are read");
    // A text ends at its first zero for most of those who get it, and the others can break lines of tables and traces.
    const auto control = std::find_if(value->text.begin(), value->text.end(),
                                      [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
    if (control != value->text.end())
    {
        const auto code = static_cast<unsigned char>(*control);
        Refuse(key, std::string("the text holds the control character U+00") + "01234567"[code >> 4] +
                        "0123456789ABCDEF"[code & 0xF]);
    }
    out = Widen(value->text);
}

void ObjectReader::WorldWideName(std::string_view key, COrlString& out)
{
    COrlString text;
    Text(key, text);
    const JsonMember* member = Member(key);
    if (member == nullptr)
        return;
    const auto name = ParseWorldWideName(text);
    if (!name && !text.empty())
        Refuse(key, Found(member->value) + " is no world wide name: 16 hexadecimal digits, not all 0");
    out = FormatWorldWideName(name.value_or(0));
}

std::optional<ULONGLONG> ObjectReader::Whole(std::string_view key, ULONGLONG low, ULONGLONG high)
{
    m_known.push_back(key);
    const JsonMember* member = Member(key);
    if (member == nullptr)
        return std::nullopt;
    const auto number = ParseWhole(member->value);
    if (!number || *number < low || *number > high)
        Refuse(key, NoWholeNumber(low, high, member->value));
    return number;
}

void ObjectReader::Number(std::string_view key, ULONG& out, ULONG low, ULONG high)
{
    if (const auto number = Whole(key, low, high))
        out = static_cast<ULONG>(*number);
}

void ObjectReader::Number(std::string_view key, ULONGLONG& out)
{
    out = Whole(key, 0, ~ULONGLONG{0}).value_or(out);
}

void ObjectReader::Signed(std::string_view key, LONG& out, LONG low, LONG high)
{
    m_known.push_back(key);
    const JsonMember* member = Member(key);
    if (member == nullptr)
        return;
    const auto number = ParseSigned(member->value);
    if (!number || *number < low || *number > high)
        Refuse(key, NoWholeNumber(low, high, member->value));
    out = static_cast<LONG>(*number);
}

void ObjectReader::Boolean(std::string_view key, bool& out)
{
    if (const JsonValue* value = Find(key, JsonValue::Kind::Boolean))
        out = value->boolean;
}

void ObjectReader::Real(std::string_view key, double& out, double high)
{
    const JsonValue* value = Find(key, JsonValue::Kind::Number);
    if (value == nullptr)
        return;
    double number = 0;
    const char* end = value->text.data() + value->text.size();
    const auto result = std::from_chars(value->text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || !(number >= 0 && number <= high))
    {
        Refuse(key, "expected a number from 0 to " + std::to_string(static_cast<ULONGLONG>(high)) + ", found " +
                        Found(*value));
    }
    out = number;
}

void ObjectReader::Choice(std::string_view key, std::size_t& out, const std::vector<std::string_view>& names)
{
    const JsonValue* value = Find(key, JsonValue::Kind::Text);
    if (value == nullptr)
        return;
    const auto name = std::find(names.begin(), names.end(), value->text);
    if (name == names.end())
    {
        std::string known;
        for (std::string_view choice : names)
            known += (known.empty() ? "" : ", ") + std::string(choice);
        Refuse(key, Quoted(value->text) + " is none of " + known);
    }
    out = static_cast<std::size_t>(name - names.begin());
}

void ObjectReader::Finish() const
{
    for (const JsonMember& member : m_value.members)
    {
        if (std::find(m_known.begin(), m_known.end(), member.key) != m_known.end())
            continue;
        const auto nearest =
            std::min_element(m_known.begin(), m_known.end(),
                             [&](auto a, auto b) { return Distance(a, member.key) < Distance(b, member.key); });
        m_source.Refuse(member.offset, PointerTo(m_place),
                        "unknown key " + Quoted(member.key) + "; the nearest known key is " + Quoted(*nearest));
    }
    for (std::string_view key : m_required)
        if (!Has(key))
            m_source.Refuse(m_value.offset, PointerTo(m_place), "the key " + Quoted(key) + " is missing");
}

void ObjectReader::Refuse(std::string_view key, const std::string& reason) const
{
    const JsonMember* member = Member(key);
    if (member == nullptr)
        m_source.Refuse(m_value.offset, PointerTo(m_place), reason);
    const JsonPlace place{&m_place, key, 0};
    m_source.Refuse(member->value.offset, PointerTo(place), reason);
}

std::size_t ObjectReader::Offset(std::string_view key) const
{
    const JsonMember* member = Member(key);
    return member == nullptr ? m_value.offset : member->value.offset;
}

} // namespace orl
