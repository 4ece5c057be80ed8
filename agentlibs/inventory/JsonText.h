// JsonText: a JSON text read into values that know where they stand, so that whoever finds fault with one can say
// where.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

struct JsonMember;

struct JsonValue
{
    enum class Kind
    {
        Null,
        Boolean,
        Number,
        Text,
        List,
        Object
    };

    Kind kind = Kind::Null;
    bool boolean = false;
    std::size_t offset = 0;          // of the value's first byte
    std::size_t end = 0;             // of the byte behind its last one
    std::string text;                // a text's characters in UTF-8, a number as it is written
    std::vector<JsonValue> items;    // of a list
    std::vector<JsonMember> members; // of an object, in the file's order; no key stands twice
};

struct JsonMember
{
    std::string key;
    std::size_t offset = 0; // of the key's opening quote
    JsonValue value;
};

// Where a value stands in its document: a chain from the value up to the document's root.
struct JsonPlace
{
    const JsonPlace* parent = nullptr;
    std::string_view key;  // of an object's member
    std::size_t index = 0; // in a list, where key is null
};

// The JSON pointer to a place (RFC 6901); empty for the root.
std::string PointerTo(const JsonPlace& place);

// A text of the document as a message shows it: in double quotes, control characters as question marks, no longer than
// what one reads.
std::string Quoted(std::string_view text);

// The text as a JSON string, quotes included.
std::string JsonString(std::string_view text);

// The text of one JSON document and its name, for messages.
class JsonText
{
public:
    // An inventory is read by people: what is nested deeper than this is a mistake, and would only cost stack.
    static constexpr std::size_t MaxDepth = 16;

    // Both are kept by reference and must outlive the object. `name` goes in front of every message.
    JsonText(const std::wstring& name, const std::string& text) : m_name(name), m_text(text) {}

    // Throws BackendError when the text is no JSON, is nested too deep, or has a key twice in one object.
    JsonValue Parse() const;

    // Throws BackendError: the file, the line and the column of the byte at `offset`, the pointer if there is one, and
    // the reason (UTF-8).
    [[noreturn]] void Refuse(std::size_t offset, const std::string& pointer, const std::string& reason) const;

    // "line 3, column 14", both counted from 1, columns in characters.
    std::string LineAndColumn(std::size_t offset) const;

    const std::wstring& Name() const { return m_name; }
    const std::string& Text() const { return m_text; }

private:
    struct Position
    {
        std::size_t line;
        std::size_t column;
    };
    Position PositionOf(std::size_t offset) const;

    const std::wstring& m_name;
    const std::string& m_text;
};

} // namespace orl
