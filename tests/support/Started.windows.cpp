// Tells cmake/wine-run that this program was reached: before any other object of the program is constructed, the file
// that the environment variable ORL_TEST_STARTED names is made.

#include <windows.h>

namespace
{

struct Started
{
    Started()
    {
        char file[MAX_PATH];
        const DWORD length = GetEnvironmentVariableA("ORL_TEST_STARTED", file, MAX_PATH);
        if (length == 0 || length >= MAX_PATH)
            return;
        const HANDLE made = CreateFileA(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (made != INVALID_HANDLE_VALUE)
            CloseHandle(made);
    }
};

// The first priority that a program may use.
__attribute__((init_priority(101))) const Started g_started;

} // namespace
