// Text without case, names, and the forms of Unicode that the three languages meet.
#include "wbem/Text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace wbem
{

namespace
{

// Capital letters from first to last in steps; the small one stands `distance` further.
struct CaseRange
{
    std::uint16_t first;
    std::uint16_t last;
    std::int16_t step;
    std::int16_t distance;
};

// The alphabets that names and values are written in, ascending. Letters whose small form is more than one character,
// depends on the language, or lies in ASCII are left as they are.
constexpr CaseRange kCaseRanges[] = {
    {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32}, {0x0100, 0x012E, 2, 1},    {0x0132, 0x0136, 2, 1},
    {0x0139, 0x0147, 2, 1},    {0x014A, 0x0176, 2, 1},  {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},
    {0x0182, 0x0184, 2, 1},    {0x01A0, 0x01A4, 2, 1},  {0x01B3, 0x01B5, 2, 1},    {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},    {0x01F8, 0x021E, 2, 1},  {0x0222, 0x0232, 2, 1},    {0x0246, 0x024E, 2, 1},
    {0x0370, 0x0372, 2, 1},    {0x0386, 0x0386, 1, 38}, {0x0388, 0x038A, 1, 37},   {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63},   {0x0391, 0x03A1, 1, 32}, {0x03A3, 0x03AB, 1, 32},   {0x03D8, 0x03EE, 2, 1},
    {0x0400, 0x040F, 1, 80},   {0x0410, 0x042F, 1, 32}, {0x0460, 0x0480, 2, 1},    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},   {0x04C1, 0x04CD, 2, 1},  {0x04D0, 0x052E, 2, 1},    {0x0531, 0x0556, 1, 48},
    {0x10A0, 0x10C5, 1, 7264}, {0x1E00, 0x1E94, 2, 1},  {0x1EA0, 0x1EFE, 2, 1},    {0x1F08, 0x1F0F, 1, -8},
    {0x1F18, 0x1F1D, 1, -8},   {0x1F28, 0x1F2F, 1, -8}, {0x1F38, 0x1F3F, 1, -8},   {0x1F48, 0x1F4D, 1, -8},
    {0x1F68, 0x1F6F, 1, -8},   {0x2160, 0x216F, 1, 16}, {0x24B6, 0x24CF, 1, 26},   {0x2C00, 0x2C2F, 1, 48},
    {0x2C80, 0x2CE2, 2, 1},    {0xA640, 0xA66C, 2, 1},  {0xA722, 0xA72E, 2, 1},    {0xA732, 0xA76E, 2, 1},
    {0xFF21, 0xFF3A, 1, 32},
};

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& bytes, char32_t c)
{
    const auto tail = [&bytes](char32_t bits) { bytes.push_back(static_cast<char>(0x80 | (bits & 0x3F))); };
    if (c < 0x80)
    {
        bytes.push_back(static_cast<char>(c));
    }
    else if (c < 0x800)
    {
        bytes.push_back(static_cast<char>(0xC0 | (c >> 6)));
        tail(c);
    }
    else if (c < 0x10000)
    {
        bytes.push_back(static_cast<char>(0xE0 | (c >> 12)));
        tail(c >> 6);
        tail(c);
    }
    else
    {
        bytes.push_back(static_cast<char>(0xF0 | (c >> 18)));
        tail(c >> 12);
        tail(c >> 6);
        tail(c);
    }
}

} // namespace

wchar_t FoldCaseBeyondAscii(wchar_t c) noexcept
{
    const char32_t unit = CodeUnit(c);
    const auto* range = std::upper_bound(std::begin(kCaseRanges), std::end(kCaseRanges), unit,
                                         [](char32_t value, const CaseRange& r) { return value < r.first; });
    if (range == std::begin(kCaseRanges))
        return c;
    --range;
    if (unit > range->last || (unit - range->first) % static_cast<char32_t>(range->step) != 0)
        return c;
    return static_cast<wchar_t>(c + range->distance);
}

bool EqualNoCase(std::wstring_view left, std::wstring_view right) noexcept
{
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); ++i)
    {
        if (left[i] != right[i] && FoldCase(left[i]) != FoldCase(right[i]))
            return false;
    }
    return true;
}

int CompareNoCase(std::wstring_view left, std::wstring_view right) noexcept
{
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i)
    {
        const char32_t a = CodeUnit(FoldCase(left[i]));
        const char32_t b = CodeUnit(FoldCase(right[i]));
        if (a != b)
            return a < b ? -1 : 1;
    }
    return left.size() == right.size() ? 0 : (left.size() < right.size() ? -1 : 1);
}

bool StartsWithNoCase(std::wstring_view text, std::wstring_view start) noexcept
{
    return text.size() >= start.size() && EqualNoCase(text.substr(0, start.size()), start);
}

std::size_t HashNoCase(std::wstring_view text) noexcept
{
    // FNV-1a, 64 bits, by folded characters.
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const wchar_t c : text)
    {
        hash ^= CodeUnit(FoldCase(c));
        hash *= 0x100000001B3u;
    }
    return static_cast<std::size_t>(hash);
}

std::wstring FoldCase(std::wstring_view text)
{
    std::wstring folded(text);
    for (wchar_t& c : folded)
        c = FoldCase(c);
    return folded;
}

bool IsNameStart(wchar_t c) noexcept
{
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_' || CodeUnit(c) >= 0x80;
}

bool IsNamePart(wchar_t c) noexcept
{
    return IsNameStart(c) || (c >= L'0' && c <= L'9');
}

bool IsName(std::wstring_view text) noexcept
{
    return !text.empty() && IsNameStart(text.front()) && std::all_of(text.begin(), text.end(), IsNamePart);
}

bool IsSpace(wchar_t c) noexcept
{
    return c == L' ' || (c >= L'\t' && c <= L'\r');
}

std::wstring_view Trim(std::wstring_view text) noexcept
{
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::wstring Excerpt(std::wstring_view text)
{
    constexpr std::size_t kMost = 60;
    return text.size() <= kMost ? std::wstring(text) : std::wstring(text.substr(0, kMost)) + L"...";
}

void AppendCodePoint(std::wstring& text, char32_t codePoint)
{
    if (sizeof(wchar_t) == 2 && codePoint >= 0x10000)
    {
        text.push_back(static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
        text.push_back(static_cast<wchar_t>(0xDC00 + (codePoint & 0x3FF)));
        return;
    }
    text.push_back(static_cast<wchar_t>(codePoint));
}

std::string ToUtf8(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        char32_t c = CodeUnit(text[i]);
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
        {
            ++i;
            c = 0x10000 + ((c - 0xD800) << 10) + (CodeUnit(text[i]) - 0xDC00);
        }
        else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i]) || c > 0x10FFFF)
        {
            c = kReplacement;
        }
        AppendUtf8(bytes, c);
    }
    return bytes;
}

std::optional<char32_t> DecodeUtf8(std::string_view bytes, std::size_t& length) noexcept
{
    length = 0;
    if (bytes.empty())
        return std::nullopt;
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80)
    {
        length = 1;
        return lead;
    }
    const std::size_t size = lead >= 0xF0 ? 4 : (lead >= 0xE0 ? 3 : 2);
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < size)
        return std::nullopt;
    char32_t c = static_cast<char32_t>(lead & (0x7F >> size));
    for (std::size_t i = 1; i < size; ++i)
    {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0) != 0x80)
            return std::nullopt;
        c = (c << 6) | (next & 0x3Fu);
    }
    const bool overlong = (size == 3 && c < 0x800) || (size == 4 && c < 0x10000);
    if (overlong || (c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF)
        return std::nullopt;
    length = size;
    return c;
}

std::wstring FromUtf8(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty())
    {
        std::size_t length = 0;
        const auto c = DecodeUtf8(bytes, length);
        AppendCodePoint(text, c.value_or(kReplacement));
        bytes.remove_prefix(c ? length : 1);
    }
    return text;
}

} // namespace wbem
