// The data of one value in its text form.
#include "winport/src/RegData.h"

#include "winport/portable/Utf8.h"
#include "winport/src/RegLines.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace winport
{

namespace
{

std::wstring_view TrimLeft(std::wstring_view text)
{
    return text.substr(std::min(text.find_first_not_of(L" \t"), text.size()));
}

int DigitOf(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    return c >= L'A' && c <= L'F' ? c - L'A' + 10 : -1;
}

// Takes up to maxDigits hexadecimal digits off the rest; the count taken.
size_t ReadHex(std::wstring_view& rest, size_t maxDigits, DWORD& number)
{
    number = 0;
    size_t count = 0;
    for (; count < maxDigits && count < rest.size() && DigitOf(rest[count]) >= 0; ++count)
        number = number << 4 | static_cast<DWORD>(DigitOf(rest[count]));
    rest.remove_prefix(count);
    return count;
}

bool IsText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

std::vector<BYTE> BytesOf(std::wstring_view text)
{
    const BYTE* bytes = reinterpret_cast<const BYTE*>(text.data());
    return std::vector<BYTE>(bytes, bytes + text.size() * sizeof(wchar_t));
}

std::wstring TextOf(const std::vector<BYTE>& data)
{
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    std::copy_n(data.begin(), text.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(text.data()));
    return text;
}

std::vector<BYTE> ReadBytes(std::wstring_view& rest)
{
    std::vector<BYTE> bytes;
    rest = TrimLeft(rest);
    while (!rest.empty() && rest[0] != L';')
    {
        DWORD byte = 0;
        if (ReadHex(rest, 2, byte) == 0)
            throw RegFault{"a byte is not one or two hexadecimal digits"};
        bytes.push_back(static_cast<BYTE>(byte));
        rest = TrimLeft(rest);
        if (rest.empty() || rest[0] == L';')
            break;
        if (rest[0] != L',')
            throw RegFault{"there is no comma between two bytes"};
        rest = TrimLeft(rest.substr(1));
    }
    return bytes;
}

// The bytes of a text as this platform's wide characters.
std::vector<BYTE> WidenText(const std::vector<BYTE>& bytes, bool isAnsi)
{
    if (bytes.empty())
        return {};
    if (isAnsi)
    {
        std::wstring text(bytes.size(), L'\0');
        const int length = static_cast<int>(bytes.size());
        const char* source = reinterpret_cast<const char*>(bytes.data());
        text.resize(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, source, length, text.data(), length)));
        return BytesOf(text);
    }
    if (bytes.size() % 2 != 0)
        throw RegFault{"the text's bytes end inside a character"};
    return BytesOf(FromUtf16(bytes.data(), bytes.size() / 2, false));
}

void ReadHexData(std::wstring_view& rest, bool isVersion4, RegValue& value)
{
    value.type = REG_BINARY;
    if (rest.starts_with(L'('))
    {
        rest.remove_prefix(1);
        if (ReadHex(rest, 8, value.type) == 0 || !rest.starts_with(L')'))
            throw RegFault{"the type behind \"hex\" is not a hexadecimal number in parentheses"};
        rest.remove_prefix(1);
    }
    if (!rest.starts_with(L':'))
        throw RegFault{"there is no ':' behind \"hex\""};
    rest.remove_prefix(1);
    value.data = ReadBytes(rest);
    if (IsText(value.type))
        value.data = WidenText(value.data, isVersion4);
}

void ReadDword(std::wstring_view& rest, RegValue& value)
{
    DWORD number = 0;
    rest = TrimLeft(rest);
    if (ReadHex(rest, 8, number) == 0 || (!rest.empty() && DigitOf(rest[0]) >= 0))
        throw RegFault{"the dword is not one to eight hexadecimal digits"};
    value.type = REG_DWORD;
    value.data.resize(sizeof number);
    std::memcpy(value.data.data(), &number, sizeof number);
}

bool IsWritableAsQuoted(const RegValue& value)
{
    if (value.type != REG_SZ || value.data.size() % sizeof(wchar_t) != 0)
        return false;
    const std::wstring text = TextOf(value.data);
    if (text.empty() || text.find(L'\0') != text.size() - 1)
        return false;
    return std::none_of(text.begin(), text.end() - 1, [](wchar_t c) { return c < L' '; }) && !HasLoneSurrogate(text);
}

std::string HexList(const std::string& bytes)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string list;
    for (const char c : bytes)
    {
        if (!list.empty())
            list += ',';
        const unsigned int byte = static_cast<unsigned char>(c);
        list += Digits[byte >> 4];
        list += Digits[byte & 0xF];
    }
    return list;
}

std::string HexNumber(DWORD number, int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "%0*x", digits, number);
    return text;
}

} // namespace

std::wstring ReadQuoted(std::wstring_view& rest, const char* what)
{
    std::wstring text;
    for (size_t i = 1; i < rest.size(); ++i)
    {
        if (rest[i] == L'"')
        {
            rest.remove_prefix(i + 1);
            return text;
        }
        if (rest[i] == L'\\' && ++i < rest.size() && rest[i] != L'\\' && rest[i] != L'"')
            throw RegFault{std::string(what) + " has a single backslash before '" + orl::ToUtf8(rest.substr(i, 1)) +
                           "': a backslash is written twice"};
        if (i < rest.size())
            text += rest[i];
    }
    throw RegFault{std::string(what) + " has no closing quote"};
}

void ReadRegData(std::wstring_view text, bool isVersion4, RegValue& value, std::wstring& comment)
{
    constexpr std::wstring_view DwordPrefix = L"dword:";
    constexpr std::wstring_view HexPrefix = L"hex";
    if (text.starts_with(L'"'))
    {
        value.type = REG_SZ;
        std::wstring quoted = ReadQuoted(text, "the text");
        quoted += L'\0';
        value.data = BytesOf(quoted);
    }
    else if (EqualNames(text.substr(0, DwordPrefix.size()), DwordPrefix))
    {
        text.remove_prefix(DwordPrefix.size());
        ReadDword(text, value);
    }
    else if (EqualNames(text.substr(0, HexPrefix.size()), HexPrefix))
    {
        text.remove_prefix(HexPrefix.size());
        ReadHexData(text, isVersion4, value);
    }
    else
        throw RegFault{"the data is neither a text in quotes nor dword: nor hex:"};
    if (value.data.size() > MaxValueData)
        throw RegFault{"the data is longer than 1 MiB"};
    comment = TrimLeft(text);
    if (!comment.empty() && comment[0] != L';')
        throw RegFault{"characters follow the data"};
}

std::string WriteQuoted(std::wstring_view text)
{
    std::wstring quoted = L"\"";
    for (const wchar_t c : text)
    {
        if (c == L'\\' || c == L'"')
            quoted += L'\\';
        quoted += c;
    }
    return orl::ToUtf8(quoted + L'"');
}

std::string WriteRegData(const RegValue& value)
{
    if (IsWritableAsQuoted(value))
    {
        const std::wstring text = TextOf(value.data);
        return WriteQuoted(std::wstring_view(text).substr(0, text.size() - 1));
    }
    if (value.type == REG_DWORD && value.data.size() == sizeof(DWORD))
    {
        DWORD number;
        std::memcpy(&number, value.data.data(), sizeof number);
        return "dword:" + HexNumber(number, 8);
    }
    const std::string bytes =
        IsText(value.type) ? ToUtf16(TextOf(value.data)) : std::string(value.data.begin(), value.data.end());
    const std::string type = value.type == REG_BINARY ? "" : "(" + HexNumber(value.type, 1) + ")";
    return "hex" + type + ":" + HexList(bytes);
}

} // namespace winport
