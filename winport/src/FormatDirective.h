// One directive of a wide printf format: reading it, and the texts of numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace winport
{

enum class Size
{
    Default,
    Short,  // h
    Long,   // l, w, I32: 32 bits of a number, wide text
    Long64, // ll, I64, and I: 64 bits of a number
};

struct Directive
{
    static constexpr size_t NoPrecision = static_cast<size_t>(-1);

    bool left = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zero = false;
    size_t width = 0;
    size_t precision = NoPrecision;
    Size size = Size::Default;
    // Zero when the format ended inside the directive.
    wchar_t conversion = L'\0';

    bool HasPrecision() const { return precision != NoPrecision; }
    // In a wide format %s and %c are wide, %S and %C narrow, h and l have the last word.
    bool IsNarrowText() const
    {
        return size == Size::Short || ((conversion == L'S' || conversion == L'C') && size == Size::Default);
    }
};

// Reads the directive behind a '%' and moves the format past it. nextInt gives the argument for a '*'.
Directive ReadDirective(const wchar_t*& format, const std::function<int()>& nextInt);

// The digits of a number in the directive's radix, in the buffer; none for 0 with precision 0.
std::wstring_view DigitsOf(uint64_t value, const Directive& directive, wchar_t (&buffer)[24]);

// The text of a real number with its sign, before it is padded.
std::string FormatReal(const Directive& directive, double value);

// A narrow character as a wide one: the C locale's code page is the first 256 characters.
inline wchar_t Widen(char c)
{
    return static_cast<wchar_t>(static_cast<unsigned char>(c));
}
inline wchar_t Widen(wchar_t c)
{
    return c;
}

} // namespace winport
