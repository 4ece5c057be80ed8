// Writing object paths.

#include "provider/PathText.h"

#include <cstdarg>
#include <cwchar>

namespace orl
{

COrlString FormatPath(const wchar_t* format, ...)
{
    wchar_t buffer[PathCapacity];
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf(buffer, PathCapacity - 1, format, arguments);
    va_end(arguments);
    buffer[length < 0 ? PathCapacity - 1 : static_cast<std::size_t>(length)] = L'\0';
    return COrlString(static_cast<const wchar_t*>(buffer));
}

void StorePath(BSTR& path, const COrlString& text)
{
    CComBSTR made(static_cast<int>(text.Length()), text.c_str());
    SysFreeString(path);
    path = made.Detach();
}

} // namespace orl
