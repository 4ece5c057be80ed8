// The wide functions of the Microsoft C runtime, with its results.
#pragma once

#include "winport/types.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

// Names that begin with an underscore are the system's, and stand here for it.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

// Called by the bounded functions below before they return their error; with none set they only return it. One handler
// a module.
typedef void (*_invalid_parameter_handler)(const wchar_t* expression, const wchar_t* function, const wchar_t* file,
                                           unsigned int line, uintptr_t reserved);
_invalid_parameter_handler _set_invalid_parameter_handler(_invalid_parameter_handler handler);
_invalid_parameter_handler _get_invalid_parameter_handler();

// 0, EINVAL (22: a missing argument) or ERANGE (34: too little room). The destination is emptied on failure.
errno_t wcscpy_s(wchar_t* destination, size_t capacity, const wchar_t* source);
errno_t wcscat_s(wchar_t* destination, size_t capacity, const wchar_t* source);
errno_t _itow_s(int value, wchar_t* destination, size_t capacity, int radix);

template <size_t Capacity>
errno_t wcscpy_s(wchar_t (&destination)[Capacity], const wchar_t* source)
{
    return wcscpy_s(destination, Capacity, source);
}
template <size_t Capacity>
errno_t wcscat_s(wchar_t (&destination)[Capacity], const wchar_t* source)
{
    return wcscat_s(destination, Capacity, source);
}

// In place; ASCII letters only.
wchar_t* _wcslwr(wchar_t* text);
wchar_t* _wcsupr(wchar_t* text);
// Compares with ASCII letters in lower case.
int _wcsicmp(const wchar_t* left, const wchar_t* right);
int _wcsnicmp(const wchar_t* left, const wchar_t* right, size_t count);

// Numbers out of range give the nearest limit.
int _wtoi(const wchar_t* text);
LONGLONG _wtoi64(const wchar_t* text);

#define _TRUNCATE (static_cast<size_t>(-1))

// %s is wide, %hs and %S narrow; l is 32 bits wide, ll and I64 64. At most count characters are written: a text that
// fits with its terminator returns its length; one of exactly count characters is not terminated; a longer one is cut,
// not terminated, and returns -1. No destination and a count of 0 returns the length.
int _vsnwprintf(wchar_t* destination, size_t count, const wchar_t* format, va_list arguments);
int _snwprintf(wchar_t* destination, size_t count, const wchar_t* format, ...);
// Always terminated. With _TRUNCATE a longer text is cut to the capacity and returns -1.
int _vsnwprintf_s(wchar_t* destination, size_t capacity, size_t count, const wchar_t* format, va_list arguments);
int _snwprintf_s(wchar_t* destination, size_t capacity, size_t count, const wchar_t* format, ...);
int _vscwprintf(const wchar_t* format, va_list arguments);

// Paths may use either separator. The modes are those of fopen; t and b change nothing. What is opened to be written is
// a regular file of one name: no symbolic link is followed, and nothing waits for the other end of a pipe.
FILE* _wfopen(const wchar_t* path, const wchar_t* mode);
int _wremove(const wchar_t* path);
int _fileno(FILE* file);
// -1 with errno when the descriptor is not open.
long _filelength(int descriptor);

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
