// COrlString: values, comparison, character classes and editing.

#include "Common/Src/OrlString.h"

#include "Common/Src/OrlDebug.h"
#include "Common/Src/OrlSecure.h"
#include "winport/portable/BoundedCrt.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace
{

constexpr wchar_t SourceName[] = L"..\\..\\Common\\Src\\OrlString";

constexpr ULONG LettersAllowed = 0x1;
constexpr ULONG DigitsAllowed = 0x2;
constexpr ULONG SymbolsAllowed = 0x4;

// Room for nine characters; longer numbers are refused.
constexpr size_t NumberCapacity = 10;

const wchar_t* OrEmpty(const wchar_t* text)
{
    return text != nullptr ? text : L"";
}

COrlString Joined(std::wstring_view first, std::wstring_view second)
{
    COrlString joined;
    joined.reserve(first.size() + second.size());
    joined.append(first).append(second);
    return joined;
}

bool IsBetween(wchar_t character, wchar_t first, wchar_t last)
{
    return character >= first && character <= last;
}

// The runtime converts in place and knows plain buffers only.
void ConvertCase(COrlString& text, wchar_t* (*convert)(wchar_t*))
{
    std::vector<wchar_t> copy(text.size() + 1);
    OrlSafeCopy(SourceName, __LINE__, copy.data(), copy.size(), text.c_str());
    text = convert(copy.data());
}

} // namespace

COrlString::COrlString(const wchar_t* text) : std::wstring(OrEmpty(text)) {}

COrlString::COrlString(wchar_t* const text) : std::wstring(OrEmpty(text)) {}

COrlString::COrlString(const std::wstring& text) : std::wstring(text) {}

COrlString::COrlString(std::wstring&& text) noexcept : std::wstring(std::move(text)) {}

COrlString::COrlString(const int& number)
{
    *this = number;
}

COrlString& COrlString::operator=(const std::wstring& text)
{
    assign(text);
    return *this;
}

COrlString& COrlString::operator=(const wchar_t* text)
{
    assign(OrEmpty(text));
    return *this;
}

COrlString& COrlString::operator=(const int& number)
{
    wchar_t text[NumberCapacity] = {};
    orl::BoundedNumber(number, text, NumberCapacity, 10);
    assign(text);
    return *this;
}

void COrlString::ClearString()
{
    clear();
}

COrlString* COrlString::Copy() const
{
    return new COrlString(*this);
}

bool COrlString::operator==(const COrlString& other) const
{
    return compare(other) == 0;
}

bool COrlString::operator==(const std::wstring& other) const
{
    return compare(other) == 0;
}

bool COrlString::operator==(const wchar_t* text) const
{
    return compare(OrEmpty(text)) == 0;
}

bool COrlString::operator<(const COrlString& other) const
{
    return compare(other) < 0;
}

COrlString COrlString::operator+(const COrlString& other) const
{
    return Joined(*this, other);
}

COrlString COrlString::operator+(const std::wstring& other) const
{
    return Joined(*this, other);
}

COrlString COrlString::operator+(std::wstring&& other) const
{
    return Joined(*this, other);
}

COrlString COrlString::operator+(const wchar_t* text) const
{
    return Joined(*this, OrEmpty(text));
}

COrlString COrlString::operator+(wchar_t character) const
{
    return Joined(*this, std::wstring_view(&character, 1));
}

bool COrlString::CompareI(COrlString other) const
{
    COrlString own(*this);
    own.MakeLower();
    other.MakeLower();
    return own == other;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): other modules call it with its arguments by value
bool COrlString::IsStrGreater(COrlString a, COrlString b)
{
    return a < b;
}

bool COrlString::CompareVectors(std::vector<COrlString> a, std::vector<COrlString> b, bool caseSensitive)
{
    bool equal = false;
    COrlTraceScope scope(L"COrlString::CompareVectors", &equal);
    if (a.size() != b.size())
        return equal;
    // In one case before they are sorted: code units put B before a, and the pairs would part.
    if (!caseSensitive)
    {
        std::for_each(a.begin(), a.end(), [](COrlString& text) { text.MakeLower(); });
        std::for_each(b.begin(), b.end(), [](COrlString& text) { text.MakeLower(); });
    }
    std::sort(a.begin(), a.end(), IsStrGreater);
    std::sort(b.begin(), b.end(), IsStrGreater);
    equal = a == b;
    return equal;
}

bool COrlString::IsAlphaChar(wchar_t character)
{
    return IsBetween(character, L'A', L'Z') || IsBetween(character, L'a', L'z');
}

bool COrlString::IsNumericChar(wchar_t character)
{
    return IsBetween(character, L'0', L'9');
}

bool COrlString::IsHexadecimal(wchar_t character)
{
    return IsNumericChar(character) || IsBetween(character, L'A', L'F') || IsBetween(character, L'a', L'f');
}

bool COrlString::IsSymbolicChar(wchar_t character)
{
    return IsBetween(character, 0x20, 0x7E) && !IsAlphaChar(character) && !IsNumericChar(character);
}

bool COrlString::IsNumeric() const
{
    return !empty() && std::all_of(begin(), end(), IsNumericChar);
}

bool COrlString::IsStringHexadecimal() const
{
    return std::all_of(begin(), end(), IsHexadecimal);
}

bool COrlString::IsStringType(ULONG allowed) const
{
    ULONG present = 0;
    for (const wchar_t character : *this)
    {
        if (IsAlphaChar(character))
            present |= LettersAllowed;
        else if (IsNumericChar(character))
            present |= DigitsAllowed;
        else if (IsSymbolicChar(character))
            present |= SymbolsAllowed;
    }
    return (present & ~allowed) == 0;
}

bool COrlString::IsWithinAsciiRange(unsigned int low, unsigned int high) const
{
    COrlTraceScope scope(L"COrlString::IsWithinAsciiRange");
    const auto isOutside = [=](wchar_t character)
    {
        const unsigned int code = traits_type::to_int_type(character);
        return code < low || code > high;
    };
    return std::count_if(begin(), end(), isOutside) == 0;
}

void COrlString::Left(unsigned int n)
{
    if (n <= size())
        resize(n);
}

void COrlString::Right(unsigned int n)
{
    if (n <= size())
        erase(0, size() - n);
}

void COrlString::MakeLower()
{
    ConvertCase(*this, _wcslwr);
}

void COrlString::MakeUpper()
{
    ConvertCase(*this, _wcsupr);
}

void COrlString::Trim()
{
    TrimLeft();
    TrimRight();
}

void COrlString::TrimLeft()
{
    erase(0, find_first_not_of(L' '));
}

void COrlString::TrimRight()
{
    // npos + 1 is 0: nothing but spaces leaves nothing.
    erase(find_last_not_of(L' ') + 1);
}

bool COrlString::Split(char separator, std::vector<COrlString>& pieces) const
{
    // This string may be one of the pieces that go.
    const std::wstring text(*this);
    const auto wideSeparator = static_cast<wchar_t>(static_cast<unsigned char>(separator));
    pieces.clear();
    size_t start = 0;
    size_t found = text.find(wideSeparator);
    if (found == npos)
        return false;
    while (start < text.size())
    {
        const size_t end = std::min(found, text.size());
        pieces.emplace_back(text.substr(start, end - start));
        start = end + 1;
        found = text.find(wideSeparator, start);
    }
    return true;
}
