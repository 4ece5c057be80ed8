// Text between the wide form and UTF-8.
#include "winport/portable/Utf8.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <limits>
#include <stdexcept>

namespace orl
{

namespace
{

// The platform's conversions count in int.
int Countable(size_t length)
{
    if (length > static_cast<size_t>(std::numeric_limits<int>::max()))
        throw std::length_error("text too long to convert");
    return static_cast<int>(length);
}

bool IsHighSurrogate(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

} // namespace

std::string ToUtf8(std::wstring_view text)
{
    if (text.empty())
        return {};
    const int length = Countable(text.size());
    const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), needed, nullptr, nullptr);
    return result;
}

std::wstring FromUtf8(std::string_view text)
{
    if (text.empty())
        return {};
    const int length = Countable(text.size());
    const int needed = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring result(static_cast<size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), needed);
    return result;
}

std::filesystem::path NativePath(std::wstring_view text)
{
    std::wstring path(text);
    std::replace(path.begin(), path.end(), L'\\', L'/');
    const std::string bytes = ToUtf8(path);
    return std::filesystem::path(std::u8string(bytes.begin(), bytes.end()));
}

std::wstring PathText(const std::filesystem::path& path)
{
    const std::u8string bytes = path.u8string();
    return FromUtf8(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

bool WriteUtf8(FILE* file, const wchar_t* text)
{
    // In pieces on the stack: a trace line must not allocate.
    constexpr size_t Piece = 1024;
    char bytes[Piece * 4];
    size_t left = std::wcslen(text);
    while (left > 0)
    {
        size_t count = std::min(left, Piece);
        if (count < left && IsHighSurrogate(text[count - 1]))
            --count;
        const int length = WideCharToMultiByte(CP_UTF8, 0, text, static_cast<int>(count), bytes,
                                               static_cast<int>(sizeof bytes), nullptr, nullptr);
        if (std::fwrite(bytes, 1, static_cast<size_t>(length), file) != static_cast<size_t>(length))
            return false;
        text += count;
        left -= count;
    }
    return true;
}

} // namespace orl
