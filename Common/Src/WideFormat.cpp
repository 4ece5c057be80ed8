// Wide printf into a fixed buffer, always terminated.

#include "Common/Src/WideFormat.h"

#include <windows.h>

#include <cstdio>

namespace orl
{

int FormatBounded(wchar_t* buffer, size_t capacity, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = FormatBoundedList(buffer, capacity, format, arguments);
    va_end(arguments);
    return length;
}

int FormatBoundedList(wchar_t* buffer, size_t capacity, const wchar_t* format, va_list arguments)
{
    // A refused format leaves the buffer as it is, and an exact fit leaves it without its end.
    buffer[0] = L'\0';
    buffer[capacity - 1] = L'\0';
    if (format == nullptr)
        return -1;
    const int length = _vsnwprintf(buffer, capacity - 1, format, arguments);
    buffer[capacity - 1] = L'\0';
    return length;
}

} // namespace orl
