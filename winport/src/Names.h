// Names that compare without case.
#pragma once

#include <string>
#include <string_view>

namespace winport
{

// Upper case, whatever the process's locale.
wchar_t FoldCase(wchar_t c);
std::wstring FoldCase(std::wstring_view name);
bool EqualNames(std::wstring_view left, std::wstring_view right);

// Orders names as the registry lists them.
struct NameLess
{
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const;
};

} // namespace winport
