// Quoted values of object paths and of WQL.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace wbem
{

inline bool IsQuote(wchar_t c) noexcept
{
    return c == L'"' || c == L'\'';
}

// Reads the value that opens with a quote at `position` and leaves `position` behind the closing one. A backslash
// before a double quote, a backslash or the quote in use stands for that character; before anything else it is itself,
// because producers put device paths between quotes as they are. False, with `position` where it was, when nothing
// closes it.
bool ReadQuoted(std::wstring_view text, std::size_t& position, std::wstring& value);

} // namespace wbem
