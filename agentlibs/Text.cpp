// The texts of device data.

#include "agentlibs/Text.h"

#include "winport/portable/Utf8.h"

#include <algorithm>

namespace orl
{

std::wstring Widen(std::string_view utf8)
{
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(utf8.begin(), utf8.end(), isAscii))
        return std::wstring(utf8.begin(), utf8.end());
    return FromUtf8(utf8);
}

std::string Narrow(std::wstring_view text)
{
    return ToUtf8(text);
}

std::wstring FoldCase(std::wstring_view text)
{
    std::wstring folded(text);
    for (wchar_t& c : folded)
        if (c >= L'A' && c <= L'Z')
            c = static_cast<wchar_t>(c - L'A' + L'a');
    return folded;
}

} // namespace orl
