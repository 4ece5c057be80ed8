// Sign, base, digits.
#include "tools/orlwmi/Integer.h"

#include <charconv>

namespace orl::client
{

std::strong_ordering Integer::operator<=>(const Integer& other) const
{
    if (isNegative != other.isNegative)
    {
        return isNegative ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    return isNegative ? other.magnitude <=> magnitude : magnitude <=> other.magnitude;
}

std::optional<Integer> ParseInteger(std::string_view text)
{
    const bool hasSign = !text.empty() && (text[0] == '-' || text[0] == '+');
    const bool hasMinus = hasSign && text[0] == '-';
    text.remove_prefix(hasSign ? 1 : 0);
    const bool isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    text.remove_prefix(isHex ? 2 : 0);
    Integer number;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number.magnitude, isHex ? 16 : 10);
    number.isNegative = hasMinus && number.magnitude != 0;
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

} // namespace orl::client
