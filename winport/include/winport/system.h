// Locks, clocks, identifiers, the environment and the debugger's output.
#pragma once

#include "winport/errors.h"

#include <pthread.h>

// Names that begin with an underscore are the system's, and stand here for it.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

// Re-entrant for the thread that holds it.
typedef struct _RTL_CRITICAL_SECTION
{
    pthread_mutex_t mutex;
} CRITICAL_SECTION;
typedef CRITICAL_SECTION* LPCRITICAL_SECTION;

void InitializeCriticalSection(CRITICAL_SECTION* section);
void DeleteCriticalSection(CRITICAL_SECTION* section);
void EnterCriticalSection(CRITICAL_SECTION* section);
BOOL TryEnterCriticalSection(CRITICAL_SECTION* section);
void LeaveCriticalSection(CRITICAL_SECTION* section);

typedef struct _SYSTEMTIME
{
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
} SYSTEMTIME;

void GetLocalTime(SYSTEMTIME* now);
void GetSystemTime(SYSTEMTIME* now);
// A steady count of 100-nanosecond steps.
BOOL QueryPerformanceCounter(LARGE_INTEGER* count);
BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency);
ULONGLONG GetTickCount64();
void Sleep(DWORD milliseconds);

DWORD GetCurrentProcessId();
DWORD GetCurrentThreadId();

// Returns the length, or the room needed with the terminator when the buffer is too small, or 0 with
// ERROR_ENVVAR_NOT_FOUND. Names compare without case; TEMP and TMP stand for the system's temporary folder when unset.
DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR value, DWORD capacity);
// No value removes the variable.
BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value);

// The folder of the system's own libraries; returns as GetEnvironmentVariableW.
UINT GetSystemDirectoryW(LPWSTR path, UINT capacity);

// size is in and out, in characters: in with room for the terminator, out without it. Too small a buffer gives
// ERROR_BUFFER_OVERFLOW (ERROR_MORE_DATA from Ex) and the size needed.
BOOL GetComputerNameW(LPWSTR name, DWORD* size);
typedef enum _COMPUTER_NAME_FORMAT
{
    ComputerNameNetBIOS,
    ComputerNameDnsHostname,
    ComputerNameDnsDomain,
    ComputerNameDnsFullyQualified
} COMPUTER_NAME_FORMAT;
BOOL GetComputerNameExW(COMPUTER_NAME_FORMAT format, LPWSTR name, DWORD* size);

// Passes the text to the function that WinportSetDebugOutput set for this process; without one it goes nowhere, as
// without a debugger.
void OutputDebugStringW(LPCWSTR text);
typedef void (*WinportDebugOutput)(LPCWSTR text);
WinportDebugOutput WinportSetDebugOutput(WinportDebugOutput output);

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
