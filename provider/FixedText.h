// FixedText: texts put together by the compiler, so that the name of a trace scope costs nothing at run time.
#pragma once

#include <cstddef>

template <std::size_t Size>
struct FixedText
{
    wchar_t text[Size]{};

    constexpr FixedText() = default;
    constexpr FixedText(const wchar_t (&source)[Size]) // NOLINT(google-explicit-constructor): reads as a literal
    {
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = source[i];
    }
};

template <std::size_t Left, std::size_t Right>
constexpr FixedText<Left + Right - 1> operator+(const FixedText<Left>& left, const FixedText<Right>& right)
{
    FixedText<Left + Right - 1> both;
    for (std::size_t i = 0; i + 1 < Left; ++i)
        both.text[i] = left.text[i];
    for (std::size_t i = 0; i < Right; ++i)
        both.text[Left - 1 + i] = right.text[i];
    return both;
}
