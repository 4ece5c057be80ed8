// The text of a MOF file, whatever encoding its bytes have.
#include "wbem/MofSource.h"

#include "wbem/MofReader.h"
#include "wbem/Text.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <type_traits>

namespace wbem
{

namespace
{

enum class Encoding
{
    Utf8,
    Utf16Little,
    Utf16Big
};

Encoding TakeMark(std::string_view& bytes)
{
    const auto starts = [&bytes](std::string_view mark) { return bytes.substr(0, mark.size()) == mark; };
    if (starts("\xEF\xBB\xBF"))
    {
        bytes.remove_prefix(3);
        return Encoding::Utf8;
    }
    if (starts("\xFF\xFE") || starts("\xFE\xFF"))
    {
        const bool little = bytes[0] == '\xFF';
        bytes.remove_prefix(2);
        return little ? Encoding::Utf16Little : Encoding::Utf16Big;
    }
    // MOF begins with ASCII: of its two bytes one is zero.
    if (bytes.size() >= 2 && bytes.size() % 2 == 0 && (bytes[0] == 0) != (bytes[1] == 0))
        return bytes[0] == 0 ? Encoding::Utf16Big : Encoding::Utf16Little;
    return Encoding::Utf8;
}

std::wstring DecodeUtf16(std::string_view bytes, bool little)
{
    std::wstring text;
    text.reserve(bytes.size() / 2);
    const auto unit = [&](std::size_t at)
    {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<wchar_t>(little ? first | (second << 8) : (first << 8) | second);
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
    {
        const wchar_t c = unit(i);
        if (IsHighSurrogate(c) && i + 3 < bytes.size() && IsLowSurrogate(unit(i + 2)))
        {
            AppendCodePoint(text, 0x10000 + ((static_cast<char32_t>(c) - 0xD800) << 10) +
                                      (static_cast<char32_t>(unit(i + 2)) - 0xDC00));
            i += 2;
        }
        else
        {
            text.push_back(c);
        }
    }
    if (bytes.size() % 2 != 0) // half a character at the end
        text.push_back(static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(bytes.back())));
    return text;
}

std::wstring DecodeUtf8Text(std::string_view bytes)
{
    std::wstring text(bytes.size(), L'\0');
    std::size_t length = 0; // of the text so far; never more than the bytes read
    while (!bytes.empty())
    {
        const auto* const end = std::find_if(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
        for (const char c : bytes.substr(0, static_cast<std::size_t>(end - bytes.begin())))
            text[length++] = static_cast<wchar_t>(c);
        bytes.remove_prefix(static_cast<std::size_t>(end - bytes.begin()));
        if (bytes.empty())
            break;
        std::size_t taken = 0;
        std::wstring character;
        const auto codePoint = DecodeUtf8(bytes, taken);
        AppendCodePoint(character, codePoint.value_or(0xDC00u + static_cast<unsigned char>(bytes[0])));
        for (const wchar_t c : character)
            text[length++] = c;
        bytes.remove_prefix(codePoint ? taken : 1);
    }
    text.resize(length);
    return text;
}

} // namespace

std::wstring DecodeMof(std::string_view bytes)
{
    switch (TakeMark(bytes))
    {
    case Encoding::Utf16Little:
        return DecodeUtf16(bytes, true);
    case Encoding::Utf16Big:
        return DecodeUtf16(bytes, false);
    default:
        return DecodeUtf8Text(bytes);
    }
}

std::optional<std::string> ReadMofBytesOf(const std::filesystem::path& file, std::wstring& reason)
{
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found)
    {
        reason = L"there is no such file";
        return std::nullopt;
    }
    if (status.type() == std::filesystem::file_type::directory)
    {
        reason = L"this is a folder, not a file";
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    std::string bytes;
    constexpr std::size_t kBlock = 65536;
    while (stream && bytes.size() <= kMaxMofFileSize)
    {
        const std::size_t before = bytes.size();
        bytes.resize(before + kBlock);
        stream.read(bytes.data() + before, static_cast<std::streamsize>(kBlock));
        bytes.resize(before + static_cast<std::size_t>(stream.gcount()));
    }
    if (bytes.size() > kMaxMofFileSize)
    {
        reason = L"the file is larger than " + std::to_wstring(kMaxMofFileSize) + L" bytes";
        return std::nullopt;
    }
    if (!stream.eof())
    {
        reason = L"the file cannot be read";
        return std::nullopt;
    }
    return bytes;
}

std::wstring FileName(const std::filesystem::path& file)
{
    const auto text = []<class Native>(const Native& native)
    {
        if constexpr (std::is_same_v<Native, std::wstring>)
            return native;
        else
            return FromUtf8(native);
    };
    return text(file.native());
}

std::filesystem::path FilePath(std::wstring_view name)
{
    std::string bytes = ToUtf8(name);
    std::replace(bytes.begin(), bytes.end(), '\\', '/');
    return std::filesystem::path(std::u8string(bytes.begin(), bytes.end()));
}

} // namespace wbem
