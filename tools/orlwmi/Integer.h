// Whole numbers as people and MOF write them.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orl::client
{

// A whole number between -(2^64-1) and 2^64-1. There is one 0, which is not negative.
struct Integer
{
    bool isNegative = false;
    std::uint64_t magnitude = 0;

    bool operator==(const Integer&) const = default;
    [[nodiscard]] std::strong_ordering operator<=>(const Integer& other) const;
};

// Decimal, or hexadecimal behind 0x, with or without a sign; none for any other text.
[[nodiscard]] std::optional<Integer> ParseInteger(std::string_view text);

} // namespace orl::client
