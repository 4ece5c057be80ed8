// Locks, clocks, identifiers and the debugger's output.
#include <windows.h>

#include "winport/process/Process.h"

#include <cerrno>
#include <ctime>
#include <unistd.h>

namespace
{

void FillSystemTime(SYSTEMTIME* result, const std::tm& time, long nanoseconds)
{
    result->wYear = static_cast<WORD>(time.tm_year + 1900);
    result->wMonth = static_cast<WORD>(time.tm_mon + 1);
    result->wDayOfWeek = static_cast<WORD>(time.tm_wday);
    result->wDay = static_cast<WORD>(time.tm_mday);
    result->wHour = static_cast<WORD>(time.tm_hour);
    result->wMinute = static_cast<WORD>(time.tm_min);
    result->wSecond = static_cast<WORD>(time.tm_sec);
    result->wMilliseconds = static_cast<WORD>(nanoseconds / 1'000'000);
}

constexpr LONGLONG StepsPerSecond = 10'000'000;
constexpr LONGLONG NanosecondsPerStep = 1'000'000'000 / StepsPerSecond;

} // namespace

void InitializeCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&section->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

void DeleteCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_destroy(&section->mutex);
}

void EnterCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_lock(&section->mutex);
}

BOOL TryEnterCriticalSection(CRITICAL_SECTION* section)
{
    return pthread_mutex_trylock(&section->mutex) == 0;
}

void LeaveCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_unlock(&section->mutex);
}

void GetLocalTime(SYSTEMTIME* now)
{
    timespec time;
    std::tm local;
    clock_gettime(CLOCK_REALTIME, &time);
    localtime_r(&time.tv_sec, &local);
    FillSystemTime(now, local, time.tv_nsec);
}

void GetSystemTime(SYSTEMTIME* now)
{
    timespec time;
    std::tm universal;
    clock_gettime(CLOCK_REALTIME, &time);
    gmtime_r(&time.tv_sec, &universal);
    FillSystemTime(now, universal, time.tv_nsec);
}

BOOL QueryPerformanceCounter(LARGE_INTEGER* count)
{
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    count->QuadPart = time.tv_sec * StepsPerSecond + time.tv_nsec / NanosecondsPerStep;
    return TRUE;
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency)
{
    frequency->QuadPart = StepsPerSecond;
    return TRUE;
}

ULONGLONG GetTickCount64()
{
    timespec time;
    clock_gettime(CLOCK_BOOTTIME, &time);
    return static_cast<ULONGLONG>(time.tv_sec) * 1000 + static_cast<ULONGLONG>(time.tv_nsec) / 1'000'000;
}

void Sleep(DWORD milliseconds)
{
    timespec left{static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1'000'000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR)
    {
    }
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

DWORD GetCurrentThreadId()
{
    return static_cast<DWORD>(gettid());
}

void OutputDebugStringW(LPCWSTR text)
{
    if (const WinportDebugOutput output = winport::GetDebugOutput())
        output(text ? text : L"");
}

WinportDebugOutput WinportSetDebugOutput(WinportDebugOutput output)
{
    return winport::ExchangeDebugOutput(output);
}
