// What the texts of sysfs attributes and names mean.

#include "agentlibs/fcoelink/sysfs/SysfsText.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"

#include <algorithm>
#include <charconv>

namespace orl::sysfs
{
namespace
{

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Takes the digits at the front of the text off it, without leading zeros.
std::string_view TakeDigits(std::string_view& text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    std::string_view digits(text.begin(), end);
    text.remove_prefix(digits.size());
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

// Less than, equal to or greater than 0, as strcmp.
int CompareDigits(std::string_view left, std::string_view right)
{
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left.compare(right);
}

} // namespace

std::string_view AttributeText(std::string_view bytes)
{
    constexpr std::string_view padding = " \t\n\v\f\r";
    std::string_view text = bytes.substr(0, bytes.find('\0'));
    text.remove_prefix(std::min(text.find_first_not_of(padding), text.size()));
    return text.substr(0, text.find_last_not_of(padding) + 1);
}

std::wstring Wide(std::string_view text)
{
    std::wstring wide = Widen(text);
    constexpr wchar_t del = 0x7F;
    std::replace_if(
        wide.begin(), wide.end(), [](wchar_t c) { return c < L' ' || c == del; }, L' ');
    return wide;
}

bool NaturalLess(std::string_view left, std::string_view right)
{
    std::string_view l = left;
    std::string_view r = right;
    while (!l.empty() && !r.empty())
    {
        if (IsDigit(l.front()) && IsDigit(r.front()))
        {
            const std::string_view leftDigits = TakeDigits(l);
            if (const int order = CompareDigits(leftDigits, TakeDigits(r)))
                return order < 0;
            continue;
        }
        if (l.front() != r.front())
            return static_cast<unsigned char>(l.front()) < static_cast<unsigned char>(r.front());
        l.remove_prefix(1);
        r.remove_prefix(1);
    }
    // Names that differ in leading zeros only still have an order.
    if (l.empty() && r.empty())
        return left < right;
    return l.empty();
}

std::optional<std::uint64_t> ParseNumber(std::string_view text)
{
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X"))
    {
        base = 16;
        text.remove_prefix(2);
    }
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::uint32_t Number32(std::string_view text)
{
    const std::uint64_t number = ParseNumber(text).value_or(0);
    return number <= UINT32_MAX ? static_cast<std::uint32_t>(number) : 0;
}

std::wstring WorldWideName(std::string_view text)
{
    return FormatWorldWideName(ParseNumber(text).value_or(0));
}

std::wstring Words(std::string_view name)
{
    std::wstring words = Wide(name);
    std::replace(words.begin(), words.end(), L'_', L' ');
    if (!words.empty() && words.front() >= L'a' && words.front() <= L'z')
        words.front() = static_cast<wchar_t>(words.front() - L'a' + L'A');
    return words;
}

bool ReadNameNumbers(std::string_view name, std::string_view prefix, std::span<std::uint64_t> numbers)
{
    if (!name.starts_with(prefix))
        return false;
    const char* at = name.data() + prefix.size();
    const char* const end = name.data() + name.size();
    for (std::size_t i = 0; i < numbers.size(); ++i)
    {
        if (i > 0 && (at == end || (*at != ':' && *at != '-')))
            return false;
        at += i > 0 ? 1 : 0;
        const auto [next, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc())
            return false;
        at = next;
    }
    return at == end;
}

} // namespace orl::sysfs
