// Text of the client, which is UTF-8; wide text is only met where COM wants it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orl::client
{

// Takes one code point off the front of a non-empty text; U+FFFD for what is no character.
[[nodiscard]] char32_t TakeCodePoint(std::string_view& utf8);
void AppendUtf8(std::string& utf8, char32_t codePoint);

// Whether a terminal would obey the character instead of showing it: control characters of both sets, line separators,
// and marks that turn the direction of writing.
[[nodiscard]] bool SteersTerminal(char32_t codePoint);

// The text as a terminal may show it: characters that would steer it stand as escapes (\n, \t, \x1B, \u202E), so a
// value can neither move the cursor nor break a line. A backslash is itself.
[[nodiscard]] std::string Printable(std::string_view utf8);

// The text between double quotes, with a backslash before those inside it and before backslashes.
[[nodiscard]] std::string Quoted(std::string_view text);

// A number in hexadecimal, upper case, with at least that many digits.
[[nodiscard]] std::string Hex(std::uint32_t number, size_t digits);

// Columns that the text takes on a terminal: wide East Asian characters and emoji take two, combining ones none.
[[nodiscard]] size_t DisplayWidth(std::string_view utf8);

// The text with its ASCII letters in lower case.
[[nodiscard]] std::string Lower(std::string_view text);

// Compares ASCII letters without case, as names of classes and properties are compared.
[[nodiscard]] bool SameName(std::string_view left, std::string_view right);

} // namespace orl::client
