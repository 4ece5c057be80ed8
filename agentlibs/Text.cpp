// Between UTF-8 files and the wide texts of the records.

#include "agentlibs/Text.h"

#include <windows.h>

#include <algorithm>

namespace orl
{

namespace
{

std::wstring WidenAscii(std::string_view text)
{
    std::wstring wide(text.size(), L'?');
    std::transform(text.begin(), text.end(), wide.begin(),
                   [](char c) { return static_cast<unsigned char>(c) < 0x80 ? static_cast<wchar_t>(c) : L'?'; });
    return wide;
}

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

std::wstring Widen(std::string_view utf8)
{
    // Nearly every text of an inventory is ASCII, and there are many.
    if (IsAscii(utf8))
        return WidenAscii(utf8);
    const int bytes = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), bytes, nullptr, 0);
    if (length <= 0)
        return WidenAscii(utf8);
    std::wstring wide(static_cast<size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), bytes, wide.data(), length);
    return wide;
}

std::string Narrow(std::wstring_view text)
{
    const int units = static_cast<int>(text.size());
    if (units == 0)
        return {};
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    if (length <= 0)
        return {};
    std::string narrow(static_cast<size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, narrow.data(), length, nullptr, nullptr);
    return narrow;
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
