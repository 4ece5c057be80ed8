// What the bounded functions do with bad arguments.
#pragma once

#include <windows.h>

namespace winport
{

// Empties the destination, calls the handler if there is one, sets errno and returns the error.
errno_t Refuse(wchar_t* destination, size_t capacity, errno_t error);

} // namespace winport
