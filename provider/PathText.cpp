// Writing object paths.

#include "provider/PathText.h"

#include <cstdarg>
#include <cwchar>

namespace orl
{
namespace
{

// One path as it is written.
class PathBuffer
{
public:
    PathBuffer(const wchar_t* format, va_list arguments)
    {
        const int length = _vsnwprintf(m_text, PathCapacity - 1, format, arguments);
        m_length = length < 0 ? PathCapacity - 1 : static_cast<std::size_t>(length);
        m_text[m_length] = L'\0';
    }
    const wchar_t* Text() const { return m_text; }
    std::size_t Length() const { return m_length; }

private:
    wchar_t m_text[PathCapacity];
    std::size_t m_length;
};

void Store(BSTR& path, const wchar_t* text, std::size_t length)
{
    CComBSTR made(static_cast<int>(length), text);
    SysFreeString(path);
    path = made.Detach();
}

} // namespace

COrlString FormatPath(const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const PathBuffer path(format, arguments);
    va_end(arguments);
    return COrlString(path.Text());
}

void StorePath(BSTR& path, const COrlString& text)
{
    Store(path, text.c_str(), text.Length());
}

void StoreFormattedPath(BSTR& path, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const PathBuffer formatted(format, arguments);
    va_end(arguments);
    Store(path, formatted.Text(), formatted.Length());
}

} // namespace orl
