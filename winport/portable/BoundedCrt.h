// Bounded wide copying that calls the module's invalid-parameter handler, then returns its error, whichever C runtime
// it runs on: some store a handler and never call it.
#pragma once

#include <cerrno>
#include <cstddef>

namespace orl
{

// 0; 22 (EINVAL) without a destination, a capacity or a source; 34 (ERANGE) when the text and its terminator do not
// fit. On failure the destination, if there is one, is empty.
int BoundedCopy(wchar_t* destination, size_t capacity, const wchar_t* source);
// As above, behind the text that the destination holds; 22 too when that text has no end within the capacity.
int BoundedAppend(wchar_t* destination, size_t capacity, const wchar_t* source);
// The number's text, radix 2 to 36.
int BoundedNumber(int value, wchar_t* destination, size_t capacity, int radix);

} // namespace orl
