// What a parser answers: the thing it read, or why and where it could not.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <variant>

namespace wbem
{

struct ParseError
{
    std::wstring reason;
    // Offset of the character at fault, from 0; the length of the text when it ends too early.
    std::size_t position = 0;

    // For people: the reason and the place, counted from 1: "a value is missing, at character 14".
    std::wstring Text() const { return reason + L", at character " + std::to_wstring(position + 1); }

    bool operator==(const ParseError&) const = default;
};

template <class T>
class Parsed
{
public:
    Parsed(T value) : m_outcome(std::in_place_index<0>, std::move(value)) {}
    Parsed(ParseError error) : m_outcome(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const noexcept { return m_outcome.index() == 0; }

    // Only when it is true.
    const T& operator*() const& { return std::get<0>(m_outcome); }
    T& operator*() & { return std::get<0>(m_outcome); }
    T&& operator*() && { return std::get<0>(std::move(m_outcome)); }
    const T* operator->() const { return &std::get<0>(m_outcome); }
    T* operator->() { return &std::get<0>(m_outcome); }

    // Only when it is false.
    const ParseError& Error() const { return std::get<1>(m_outcome); }

private:
    std::variant<T, ParseError> m_outcome;
};

} // namespace wbem
