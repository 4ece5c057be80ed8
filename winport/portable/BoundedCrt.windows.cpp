// The runtime's functions, with the handler called for a runtime that does not: what it would refuse is refused before
// it is asked, so that a runtime that calls handlers itself does not call it again.
#include "winport/portable/BoundedCrt.h"

#include <windows.h>

#include <cstdlib>
#include <cwchar>

namespace orl
{

namespace
{

int Refuse(wchar_t* destination, size_t capacity, int error)
{
    if (destination && capacity)
        destination[0] = L'\0';
    if (const auto handler = _get_invalid_parameter_handler())
        handler(nullptr, nullptr, nullptr, 0, 0);
    return error;
}

} // namespace

int BoundedCopy(wchar_t* destination, size_t capacity, const wchar_t* source)
{
    if (!destination || !capacity || !source)
        return Refuse(destination, capacity, EINVAL);
    if (std::wcslen(source) >= capacity)
        return Refuse(destination, capacity, ERANGE);
    return wcscpy_s(destination, capacity, source);
}

int BoundedAppend(wchar_t* destination, size_t capacity, const wchar_t* source)
{
    if (!destination || !capacity || !source)
        return Refuse(destination, capacity, EINVAL);
    const size_t held = wcsnlen(destination, capacity);
    if (held == capacity)
        return Refuse(destination, capacity, EINVAL);
    if (std::wcslen(source) >= capacity - held)
        return Refuse(destination, capacity, ERANGE);
    return wcscat_s(destination, capacity, source);
}

int BoundedNumber(int value, wchar_t* destination, size_t capacity, int radix)
{
    if (!destination || !capacity || radix < 2 || radix > 36)
        return Refuse(destination, capacity, EINVAL);
    wchar_t digits[40];
    if (const int error = _itow_s(value, digits, sizeof digits / sizeof digits[0], radix))
        return Refuse(destination, capacity, error);
    return BoundedCopy(destination, capacity, digits);
}

} // namespace orl
