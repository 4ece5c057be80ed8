// Bounded copying that reports every refused copy to the trace log.
#pragma once

#include "Common/Src/OrlDebug.h"

#include <cstddef>
#include <cstdint>

// Copy or append a wide text into room for `capacity` characters, terminator included. Answer the runtime's error
// number: 0, 22 when the destination or the source is missing, 34 when the room does not suffice; the destination is
// then empty. file and line name the caller in the trace.
//
// The first call installs OrlSecureInvalidParameterHandler for the process.
int OrlSafeCopy(const wchar_t* file, int line, wchar_t* destination, size_t capacity, const wchar_t* source);
int OrlSafeCat(const wchar_t* file, int line, wchar_t* destination, size_t capacity, const wchar_t* source);

// The same with the capacity of an array, inside a trace scope that reports the error number.
template <size_t Capacity>
int OrlSafeCopy(const wchar_t* file, int line, wchar_t (&destination)[Capacity], const wchar_t* source)
{
    int result = 0;
    COrlTraceScope scope(L"OrlSafeCopy", &result);
    result = OrlSafeCopy(file, line, destination, Capacity, source);
    return result;
}
template <size_t Capacity>
int OrlSafeCat(const wchar_t* file, int line, wchar_t (&destination)[Capacity], const wchar_t* source)
{
    int result = 0;
    COrlTraceScope scope(L"OrlSafeCat", &result);
    result = OrlSafeCat(file, line, destination, Capacity, source);
    return result;
}

// Writes a trace line and returns, so that the failing runtime call answers its error instead of ending the process.
void OrlSecureInvalidParameterHandler(const wchar_t* expression, const wchar_t* function, const wchar_t* file,
                                      unsigned int line, uintptr_t reserved);

namespace orl
{

// Puts the handler back that was there before the first safe copy; the next one installs again. For tests.
void ForgetInvalidParameterHandler();

} // namespace orl
