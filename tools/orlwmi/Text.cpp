// Code points of UTF-8 text, and what a terminal may be shown of them.
#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

constexpr char32_t Replacement = 0xFFFD;
constexpr char32_t LastCodePoint = 0x10FFFF;

char LowerLetter(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

// Length of the sequence that a lead byte announces, and the bits of the code point in it; 0 for no lead byte.
size_t SequenceLength(unsigned char lead, char32_t& bits)
{
    if (lead >= 0xC2 && lead <= 0xDF)
    {
        bits = lead & 0x1FU;
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF)
    {
        bits = lead & 0x0FU;
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4)
    {
        bits = lead & 0x07U;
        return 4;
    }
    return 0;
}

void AppendEscape(std::string& out, char32_t c)
{
    switch (c)
    {
    case U'\n':
        out += "\\n";
        return;
    case U'\r':
        out += "\\r";
        return;
    case U'\t':
        out += "\\t";
        return;
    default:
        break;
    }
    out += c <= 0xFF ? "\\x" + Hex(c, 2) : "\\u" + Hex(c, 4);
}

} // namespace

bool SteersTerminal(char32_t c)
{
    const bool turnsDirection =
        c == 0x200E || c == 0x200F || c == 0x061C || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x2028 || c == 0x2029 || turnsDirection;
}

void AppendUtf8(std::string& utf8, char32_t c)
{
    const auto tail = [&utf8, c](int shift) { utf8 += static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80)
    {
        utf8 += static_cast<char>(c);
    }
    else if (c < 0x800)
    {
        utf8 += static_cast<char>(0xC0U | (c >> 6));
        tail(0);
    }
    else if (c < 0x10000)
    {
        utf8 += static_cast<char>(0xE0U | (c >> 12));
        tail(6);
        tail(0);
    }
    else
    {
        utf8 += static_cast<char>(0xF0U | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

char32_t TakeCodePoint(std::string_view& utf8)
{
    const auto lead = static_cast<unsigned char>(utf8.front());
    utf8.remove_prefix(1);
    if (lead < 0x80)
    {
        return lead;
    }
    char32_t c = 0;
    const size_t length = SequenceLength(lead, c);
    size_t taken = 1;
    for (; taken < length && !utf8.empty() && (static_cast<unsigned char>(utf8.front()) & 0xC0U) == 0x80; ++taken)
    {
        c = (c << 6) | (static_cast<unsigned char>(utf8.front()) & 0x3FU);
        utf8.remove_prefix(1);
    }
    const bool whole = length != 0 && taken == length;
    const bool shortest = length < 3 || (length == 3 ? c >= 0x800 : c >= 0x10000);
    const bool scalar = c <= LastCodePoint && !IsSurrogate(c);
    return whole && shortest && scalar ? c : Replacement;
}

std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text)
    {
        quoted += c == '"' || c == '\\' ? "\\" : "";
        quoted += c;
    }
    return quoted + "\"";
}

std::string Hex(std::uint32_t number, size_t digits)
{
    std::string text;
    for (; number != 0 || text.size() < digits; number >>= 4)
    {
        text.insert(text.begin(), "0123456789ABCDEF"[number & 0xFU]);
    }
    return text;
}

std::string Printable(std::string_view utf8)
{
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty())
    {
        const char32_t c = TakeCodePoint(utf8);
        if (SteersTerminal(c))
        {
            AppendEscape(out, c);
        }
        else
        {
            AppendUtf8(out, c);
        }
    }
    return out;
}

std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerLetter);
    return lower;
}

bool SameName(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return LowerLetter(a) == LowerLetter(b); });
}

} // namespace orl::client
