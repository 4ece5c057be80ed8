// The lines of a registry file, whatever its encoding.
#include "winport/src/RegLines.h"

namespace winport
{

namespace
{

bool IsHigh(unsigned int unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(unsigned int unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

unsigned int UnitAt(const BYTE* bytes, size_t index, bool bigEndian)
{
    const unsigned int first = bytes[2 * index];
    const unsigned int second = bytes[2 * index + 1];
    return bigEndian ? first << 8 | second : second << 8 | first;
}

} // namespace

std::wstring FromUtf16(const BYTE* bytes, size_t units, bool bigEndian)
{
    std::wstring text;
    text.reserve(units);
    for (size_t i = 0; i < units; ++i)
    {
        const unsigned int unit = UnitAt(bytes, i, bigEndian);
        const unsigned int next = i + 1 < units ? UnitAt(bytes, i + 1, bigEndian) : 0;
        if (IsHigh(unit) && IsLow(next))
        {
            text += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++i;
        }
        else
            text += static_cast<wchar_t>(unit);
    }
    return text;
}

std::string ToUtf16(std::wstring_view text)
{
    std::string bytes;
    const auto put = [&](unsigned int unit)
    {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    for (const wchar_t c : text)
    {
        const unsigned int code = static_cast<unsigned int>(c);
        if (code < 0x10000)
            put(code);
        else
        {
            put(0xD800 + ((code - 0x10000) >> 10 & 0x3FF));
            put(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return bytes;
}

bool HasLoneSurrogate(std::wstring_view text)
{
    for (const wchar_t c : text)
    {
        if (IsHigh(static_cast<unsigned int>(c)) || IsLow(static_cast<unsigned int>(c)))
            return true;
    }
    return false;
}

RegLines::RegLines(std::string_view bytes) : m_rest(bytes)
{
    constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
    constexpr std::string_view LittleMark = "\xFF\xFE";
    constexpr std::string_view BigMark = "\xFE\xFF";
    if (bytes.starts_with(Utf8Mark))
        m_rest.remove_prefix(Utf8Mark.size());
    else if (bytes.starts_with(LittleMark) || bytes.starts_with(BigMark))
    {
        m_encoding = bytes.starts_with(LittleMark) ? Encoding::Utf16Little : Encoding::Utf16Big;
        m_rest.remove_prefix(LittleMark.size());
    }
}

std::string_view RegLines::Cut()
{
    const size_t unit = m_encoding == Encoding::Narrow ? 1 : 2;
    const std::string_view newline = m_encoding == Encoding::Narrow        ? std::string_view("\n", 1)
                                     : m_encoding == Encoding::Utf16Little ? std::string_view("\n\0", 2)
                                                                           : std::string_view("\0\n", 2);
    size_t end = m_rest.find(newline);
    while (end != std::string_view::npos && end % unit != 0)
        end = m_rest.find(newline, end + 1);
    const std::string_view line = m_rest.substr(0, end);
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + unit);
    return line;
}

bool RegLines::Next(std::wstring& line)
{
    line.clear();
    m_fault = nullptr;
    if (m_rest.empty())
        return false;
    ++m_number;
    const std::string_view bytes = Cut();
    if (m_encoding == Encoding::Narrow)
        DecodeNarrow(bytes, line);
    else
        DecodeUtf16(bytes, line);
    if (!line.empty() && line.back() == L'\r')
        line.pop_back();
    if (line.find(L'\0') != std::wstring::npos)
        m_fault = "it holds a zero character";
    if (m_fault)
        line.clear();
    return true;
}

void RegLines::DecodeNarrow(std::string_view bytes, std::wstring& line)
{
    if (bytes.empty())
        return;
    const int length = static_cast<int>(bytes.size());
    // No character takes more wide ones than its bytes.
    line.resize(bytes.size());
    int converted = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), length, line.data(), length);
    if (converted == 0 && m_allowAnsi)
        converted = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, line.data(), length);
    if (converted == 0)
        m_fault = "it is not UTF-8";
    line.resize(static_cast<size_t>(converted));
}

void RegLines::DecodeUtf16(std::string_view bytes, std::wstring& line)
{
    line = FromUtf16(reinterpret_cast<const BYTE*>(bytes.data()), bytes.size() / 2, m_encoding == Encoding::Utf16Big);
    if (bytes.size() % 2 != 0 || HasLoneSurrogate(line))
        m_fault = "it is not UTF-16";
}

} // namespace winport
