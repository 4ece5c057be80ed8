// Numbers as the three languages write them, independent of the locale, exact over the whole range of 64 bits.
#pragma once

#include "wbem/CimValue.h"

#include <optional>
#include <string>
#include <string_view>

namespace wbem
{

// Of a number's spelling, in characters. Longer spellings exist, but nobody writes them, and none is a number that
// another spelling could not give.
inline constexpr std::size_t kMaxNumberLength = 400;

enum class NumberFault
{
    NotANumber,
    TooLarge, // beyond 64 bits signed or unsigned, or beyond a 64-bit real
};

// Which forms of integers a language has besides decimal and hexadecimal (0x1F); all allow a sign.
enum class IntegerForms
{
    Plain, // leading zeros mean nothing
    Mof,   // 017 is octal, 101b binary
};

// The whole text as an integer: sint32, sint64 or uint64, the smallest that holds it.
std::optional<CimValue> ParseInteger(std::wstring_view text, IntegerForms forms, NumberFault& fault);

// The whole text as a decimal real; integers are reals too.
std::optional<double> ParseReal(std::wstring_view text, NumberFault& fault);

// An integer, else a real64.
std::optional<CimValue> ParseNumber(std::wstring_view text, IntegerForms forms, NumberFault& fault);

// How far a number that begins at the start of the text reaches: a sign, then letters, digits and points, and the sign
// after a decimal exponent's 'e'. What it holds may still be no number; that is for ParseNumber to say.
std::size_t NumberExtent(std::wstring_view text) noexcept;

// The shortest text that reads back as the same real; it has a point or an exponent, so that it stays a real.
std::wstring RealText(double value);

} // namespace wbem
