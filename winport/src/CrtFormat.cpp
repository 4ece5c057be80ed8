// Wide printf, with the widths, directives and results of the Microsoft C runtime.
#include <windows.h>

#include "winport/src/FormatDirective.h"
#include "winport/src/InvalidParameter.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <string>
#include <string_view>

namespace
{

using winport::Directive;
using winport::Size;

// Where the text goes; it counts past the end of the room.
class Destination
{
public:
    Destination(wchar_t* text, size_t room) : m_text(text), m_room(room) {}

    void Put(wchar_t c)
    {
        if (m_length < m_room)
            m_text[m_length] = c;
        ++m_length;
    }
    void Repeat(wchar_t c, size_t count)
    {
        for (; count > 0; --count)
            Put(c);
    }
    template <class Character>
    void Put(std::basic_string_view<Character> text)
    {
        for (const Character c : text)
            Put(winport::Widen(c));
    }
    void Put(std::wstring_view text)
    {
        if (m_length < m_room)
            std::copy_n(text.begin(), std::min(text.size(), m_room - m_length), m_text + m_length);
        m_length += text.size();
    }
    size_t Length() const { return m_length; }

private:
    wchar_t* m_text;
    size_t m_room;
    size_t m_length = 0;
};

class Formatter
{
public:
    // The list is read to its end by one Run.
    Formatter(Destination& out, va_list arguments) : m_out(out) { va_copy(m_arguments, arguments); }
    ~Formatter() { va_end(m_arguments); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    void Run(const wchar_t* format)
    {
        while (const wchar_t* const directive = std::wcschr(format, L'%'))
        {
            m_out.Put(std::wstring_view(format, static_cast<size_t>(directive - format)));
            format = directive + 1;
            if (*format == L's') // most directives, as plain as this
            {
                Text({}, va_arg(m_arguments, const wchar_t*));
                ++format;
            }
            else
                One(winport::ReadDirective(format, [this] { return va_arg(m_arguments, int); }));
        }
        m_out.Put(std::wstring_view(format));
    }

private:
    void One(const Directive& d)
    {
        switch (d.conversion)
        {
        case L'd':
        case L'i':
            return Signed(d);
        case L'u':
        case L'x':
        case L'X':
        case L'o':
            return Digits(d, Unsigned(d), L"");
        case L'p':
            return Pointer(d);
        case L'c':
        case L'C':
            return Character(d);
        case L's':
        case L'S':
            return d.IsNarrowText() ? Text(d, va_arg(m_arguments, const char*))
                                    : Text(d, va_arg(m_arguments, const wchar_t*));
        case L'e':
        case L'E':
        case L'f':
        case L'F':
        case L'g':
        case L'G':
            return Padded(d, std::string_view(winport::FormatReal(d, va_arg(m_arguments, double))), true);
        case L'\0':
            return;
        default: // %% and what is no directive print as themselves
            return m_out.Put(d.conversion);
        }
    }

    void Signed(const Directive& d)
    {
        LONGLONG value = d.size == Size::Long64 ? va_arg(m_arguments, LONGLONG) : va_arg(m_arguments, int);
        if (d.size == Size::Short)
            value = static_cast<short>(value);
        const ULONGLONG magnitude = value < 0 ? 0 - static_cast<ULONGLONG>(value) : static_cast<ULONGLONG>(value);
        Digits(d, magnitude, value < 0 ? L"-" : d.plus ? L"+" : d.space ? L" " : L"");
    }

    ULONGLONG Unsigned(const Directive& d)
    {
        if (d.size == Size::Long64)
            return va_arg(m_arguments, ULONGLONG);
        const unsigned int value = va_arg(m_arguments, unsigned int);
        return d.size == Size::Short ? static_cast<unsigned short>(value) : value;
    }

    void Pointer(Directive d)
    {
        d.conversion = L'X';
        d.precision = 2 * sizeof(void*);
        d.alternate = false;
        Digits(d, reinterpret_cast<uintptr_t>(va_arg(m_arguments, void*)), L"");
    }

    void Digits(const Directive& d, ULONGLONG value, std::wstring_view prefix)
    {
        wchar_t buffer[24];
        const std::wstring_view digits = winport::DigitsOf(value, d, buffer);
        if (d.alternate && value != 0 && (d.conversion == L'x' || d.conversion == L'X'))
            prefix = d.conversion == L'x' ? L"0x" : L"0X";
        size_t zeros = d.precision > digits.size() && d.HasPrecision() ? d.precision - digits.size() : 0;
        if (d.alternate && d.conversion == L'o' && zeros == 0 && (digits.empty() || digits[0] != L'0'))
            zeros = 1;
        const size_t length = prefix.size() + zeros + digits.size();
        size_t padding = d.width > length ? d.width - length : 0;
        if (d.zero && !d.left && !d.HasPrecision())
        {
            zeros += padding;
            padding = 0;
        }
        if (!d.left)
            m_out.Repeat(L' ', padding);
        m_out.Put(prefix);
        m_out.Repeat(L'0', zeros);
        m_out.Put(digits);
        if (d.left)
            m_out.Repeat(L' ', padding);
    }

    void Character(const Directive& d)
    {
        const int value = va_arg(m_arguments, int);
        const wchar_t c = d.IsNarrowText() ? winport::Widen(static_cast<char>(value)) : static_cast<wchar_t>(value);
        Padded(d, std::wstring_view(&c, 1), false);
    }

    template <class Unit>
    void Text(const Directive& d, const Unit* text)
    {
        if (!text)
            return Padded(d, std::wstring_view(L"(null)").substr(0, d.precision), false);
        if (!d.HasPrecision())
            return Padded(d, std::basic_string_view<Unit>(text), false);
        size_t length = 0;
        while (length < d.precision && text[length])
            ++length;
        Padded(d, std::basic_string_view<Unit>(text, length), false);
    }

    template <class Unit>
    void Padded(const Directive& d, std::basic_string_view<Unit> text, bool isNumber)
    {
        const size_t padding = d.width > text.size() ? d.width - text.size() : 0;
        if (isNumber && d.zero && !d.left && !text.empty())
        {
            const bool hasSign = text[0] == '-' || text[0] == '+' || text[0] == ' ';
            m_out.Put(text.substr(0, hasSign));
            m_out.Repeat(L'0', padding);
            return m_out.Put(text.substr(hasSign));
        }
        // Texts too are filled up with zeros when the directive says so.
        if (!d.left)
            m_out.Repeat(d.zero ? L'0' : L' ', padding);
        m_out.Put(text);
        if (d.left)
            m_out.Repeat(L' ', padding);
    }

    Destination& m_out;
    va_list m_arguments;
};

// The whole length, of which at most room characters were written.
size_t Format(wchar_t* destination, size_t room, const wchar_t* format, va_list arguments)
{
    Destination out(destination, room);
    Formatter(out, arguments).Run(format);
    return out.Length();
}

int ResultOf(size_t length)
{
    return length > static_cast<size_t>(std::numeric_limits<int>::max()) ? -1 : static_cast<int>(length);
}

} // namespace

int _vsnwprintf(wchar_t* destination, size_t count, const wchar_t* format, va_list arguments)
{
    const size_t length = Format(destination, destination ? count : 0, format, arguments);
    if (!destination)
        return count == 0 ? ResultOf(length) : -1;
    if (length > count)
        return -1;
    if (length < count)
        destination[length] = L'\0';
    return ResultOf(length);
}

int _snwprintf(wchar_t* destination, size_t count, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnwprintf(destination, count, format, arguments);
    va_end(arguments);
    return result;
}

int _vsnwprintf_s(wchar_t* destination, size_t capacity, size_t count, const wchar_t* format, va_list arguments)
{
    if (!destination || !capacity || !format)
        return winport::Refuse(destination, capacity, EINVAL), -1;
    const size_t room = std::min(capacity - 1, count);
    const size_t length = Format(destination, room, format, arguments);
    if (length > room && room < count && count != _TRUNCATE)
        return winport::Refuse(destination, capacity, ERANGE), -1;
    destination[std::min(length, room)] = L'\0';
    return length > room ? -1 : ResultOf(length);
}

int _snwprintf_s(wchar_t* destination, size_t capacity, size_t count, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnwprintf_s(destination, capacity, count, format, arguments);
    va_end(arguments);
    return result;
}

int _vscwprintf(const wchar_t* format, va_list arguments)
{
    return ResultOf(Format(nullptr, 0, format, arguments));
}
