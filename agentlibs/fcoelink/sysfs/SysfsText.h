// What the texts of sysfs attributes and names mean.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orl::sysfs
{

// The text that an attribute holds: up to the first NUL, without the newline and the blanks around it.
std::string_view AttributeText(std::string_view bytes);

// The text for users: UTF-8 decoded, control characters as blanks. Anybody may have written the bytes (a symbolic name
// is free text), and no name shall steer a terminal.
std::wstring Wide(std::string_view text);

// Compares runs of digits by their value and the rest by character: fcf_2 before fcf_10.
bool NaturalLess(std::string_view left, std::string_view right);

// A whole number, decimal or hexadecimal behind 0x. Nothing for any other text and for what does not fit.
std::optional<std::uint64_t> ParseNumber(std::string_view text);

// The number, or 0 for what is none and for what needs more than 32 bits.
std::uint32_t Number32(std::string_view text);

// A world wide name as the kernel writes it (0x2000525400fc0001) in the agents' form (2000525400fc0001). Zero, and
// what is no number, is empty.
std::wstring WorldWideName(std::string_view text);

// The name of a counter in words: "Tx frames" for tx_frames.
std::wstring Words(std::string_view name);

// The decimal numbers of a name that is a prefix and then numbers divided by ':' or '-'. False for any other name.
bool ReadNameNumbers(std::string_view name, std::string_view prefix, std::span<std::uint64_t> numbers);

// The same: 0, 0 and 1 for NumbersOf<3>("rport-0:0-1", "rport-").
template <std::size_t Count>
std::optional<std::array<std::uint64_t, Count>> NumbersOf(std::string_view name, std::string_view prefix = {})
{
    std::array<std::uint64_t, Count> numbers = {};
    if (!ReadNameNumbers(name, prefix, numbers))
        return std::nullopt;
    return numbers;
}

} // namespace orl::sysfs
