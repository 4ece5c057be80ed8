// What all modules of a process share. Each module has its own copy of winport; this is the one thing they have in
// common.
#pragma once

#include <oleauto.h>

namespace winport
{

// Counts the CoInitializeEx calls that are not undone yet: of this thread, and of the process.
struct ComUse
{
    ULONG thread;
    ULONG process;
};
__declspec(dllexport) ComUse ComInitialized();
__declspec(dllexport) ComUse ComEnter();
__declspec(dllexport) void ComLeave();

// Puts the thread's error object and returns the one before; both counts move with the pointers.
__declspec(dllexport) IErrorInfo* ExchangeErrorInfo(IErrorInfo* error);

__declspec(dllexport) WinportDebugOutput GetDebugOutput();
__declspec(dllexport) WinportDebugOutput ExchangeDebugOutput(WinportDebugOutput output);

// True for a text's first time in this process.
__declspec(dllexport) bool FirstReport(const char* text);

} // namespace winport
