// The lines of a registry file, whatever its encoding.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace winport
{

// Wide text from 16-bit units: pairs become one character where wide characters have room for it.
std::wstring FromUtf16(const BYTE* bytes, size_t units, bool bigEndian);
// The other way, as little-endian bytes.
std::string ToUtf16(std::wstring_view text);
// Whether the text has a place that is no character.
bool HasLoneSurrogate(std::wstring_view text);

class RegLines
{
public:
    explicit RegLines(std::string_view bytes);

    // The next line without its end; false behind the last. The line is empty and Fault says why when it is no text.
    bool Next(std::wstring& line);
    // Counts from 1.
    size_t Number() const { return m_number; }
    const char* Fault() const { return m_fault; }
    // Bytes that are no UTF-8 are in the ANSI code page from now on.
    void AllowAnsi() { m_allowAnsi = true; }

private:
    enum class Encoding
    {
        Narrow,
        Utf16Little,
        Utf16Big,
    };

    void DecodeNarrow(std::string_view bytes, std::wstring& line);
    void DecodeUtf16(std::string_view bytes, std::wstring& line);
    // Cuts the next line off the rest, in bytes.
    std::string_view Cut();

    std::string_view m_rest;
    Encoding m_encoding = Encoding::Narrow;
    bool m_allowAnsi = false;
    size_t m_number = 0;
    const char* m_fault = nullptr;
};

} // namespace winport
