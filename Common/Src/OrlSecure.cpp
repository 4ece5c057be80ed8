// Bounded copying that reports every refused copy to the trace log.

#include "Common/Src/OrlSecure.h"

#include "winport/portable/BoundedCrt.h"

#include <windows.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

namespace
{

constexpr wchar_t SourceName[] = L"..\\..\\Common\\Src\\OrlSecure";
// Places in this source that log readers know.
constexpr int InstallLine = 97;
constexpr int NoDestinationLine = 189;

// Two threads may both install the handler; that is harmless.
std::atomic<_invalid_parameter_handler> s_installed{nullptr};
std::atomic<_invalid_parameter_handler> s_previous{nullptr};

void InstallHandler()
{
    if (s_installed.load(std::memory_order_relaxed) == OrlSecureInvalidParameterHandler)
        return;
    g_OrlDebug.Error(SourceName, InstallLine,
                     L"Setting invalid parameter handler to: OrlSecureInvalidParameterHandler");
    s_previous.store(_set_invalid_parameter_handler(OrlSecureInvalidParameterHandler), std::memory_order_relaxed);
    s_installed.store(OrlSecureInvalidParameterHandler, std::memory_order_relaxed);
}

// Appending reports in the words of copying.
int Report(const wchar_t* file, int line, const wchar_t* destination, int error)
{
    if (error == EINVAL && destination == nullptr)
        g_OrlDebug.Error(SourceName, NoDestinationLine, L"OrlSafeCopy ERROR: NULL == strDestination");
    else if (error == EINVAL)
        g_OrlDebug.Error(file, line, L"OrlSafeCopy ERROR: NULL == strSource");
    else if (error == ERANGE)
        g_OrlDebug.Error(file, line, L"OrlSafeCopy ERROR: strDestination size 0, or too small");
    return error;
}

} // namespace

int OrlSafeCopy(const wchar_t* file, int line, wchar_t* destination, size_t capacity, const wchar_t* source)
{
    InstallHandler();
    return Report(file, line, destination, orl::BoundedCopy(destination, capacity, source));
}

int OrlSafeCat(const wchar_t* file, int line, wchar_t* destination, size_t capacity, const wchar_t* source)
{
    InstallHandler();
    return Report(file, line, destination, orl::BoundedAppend(destination, capacity, source));
}

void OrlSecureInvalidParameterHandler(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, uintptr_t)
{
    g_OrlDebug.Print(L"OrlSecureInvalidParameterHandler : ERROR");
}

namespace orl
{

void ForgetInvalidParameterHandler()
{
    if (s_installed.exchange(nullptr) != nullptr)
        _set_invalid_parameter_handler(s_previous.load());
}

} // namespace orl
