// World wide names: as users write them, and as the agents do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orl
{

inline constexpr std::size_t WorldWideNameDigits = 16;

// The value of a hexadecimal digit, -1 for any other character.
template <typename Char>
constexpr int HexDigit(Char c)
{
    if (c >= Char('0') && c <= Char('9'))
        return static_cast<int>(c - Char('0'));
    if (c >= Char('a') && c <= Char('f'))
        return static_cast<int>(c - Char('a')) + 10;
    if (c >= Char('A') && c <= Char('F'))
        return static_cast<int>(c - Char('A')) + 10;
    return -1;
}

// Reads a name that a user wrote: 16 hexadecimal digits, the same behind 0x, or eight pairs divided by colons, in any
// case. Nothing for any other text, and for zero, which names nothing.
constexpr std::optional<std::uint64_t> ParseWorldWideName(std::wstring_view text)
{
    constexpr std::size_t colonForm = WorldWideNameDigits / 2 * 3 - 1;
    const bool colons = text.size() == colonForm;
    if (!colons && text.size() == WorldWideNameDigits + 2 && text[0] == L'0' && (text[1] == L'x' || text[1] == L'X'))
        text.remove_prefix(2);
    if (!colons && text.size() != WorldWideNameDigits)
        return std::nullopt;
    std::uint64_t name = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (colons && i % 3 == 2)
        {
            if (text[i] != L':')
                return std::nullopt;
            continue;
        }
        const int digit = HexDigit(text[i]);
        if (digit < 0)
            return std::nullopt;
        name = name << 4 | static_cast<std::uint64_t>(digit);
    }
    if (name == 0)
        return std::nullopt;
    return name;
}

// The name as the agents write it: 16 lower-case hexadecimal digits. Zero names nothing and gives an empty text.
inline std::wstring FormatWorldWideName(std::uint64_t name)
{
    if (name == 0)
        return {};
    std::wstring text(WorldWideNameDigits, L'0');
    for (auto digit = text.rbegin(); name != 0; ++digit, name >>= 4)
        *digit = L"0123456789abcdef"[name & 0xF];
    return text;
}

} // namespace orl
