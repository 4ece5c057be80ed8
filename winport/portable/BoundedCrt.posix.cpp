// winport's own bounded functions call the handler.
#include "winport/portable/BoundedCrt.h"

#include <windows.h>

namespace orl
{

int BoundedCopy(wchar_t* destination, size_t capacity, const wchar_t* source)
{
    return wcscpy_s(destination, capacity, source);
}

int BoundedAppend(wchar_t* destination, size_t capacity, const wchar_t* source)
{
    return wcscat_s(destination, capacity, source);
}

int BoundedNumber(int value, wchar_t* destination, size_t capacity, int radix)
{
    return _itow_s(value, destination, capacity, radix);
}

} // namespace orl
