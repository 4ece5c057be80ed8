// Wide printf into a fixed buffer, always terminated.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace orl
{

// Format as the wide printf of Windows does (%s is a wide text) into room for `capacity` characters, terminator
// included; capacity is at least 1. Answer the length, or -1 when the text was cut to the room or could not be
// formatted.
int FormatBounded(wchar_t* buffer, size_t capacity, const wchar_t* format, ...);
int FormatBoundedList(wchar_t* buffer, size_t capacity, const wchar_t* format, va_list arguments);

} // namespace orl
