// Tells cmake/wine-run that this program was reached and that it came to its end: before any other object of the
// program is constructed it makes the file that the environment variable ORL_TEST_STARTED names, and after all others
// are destructed it writes into it.

#include <windows.h>

namespace
{

class Started
{
public:
    Started()
    {
        const DWORD length = GetEnvironmentVariableA("ORL_TEST_STARTED", m_file, MAX_PATH);
        if (length >= MAX_PATH)
            m_file[0] = '\0';
        // The file is about this process, not about those that it starts.
        SetEnvironmentVariableA("ORL_TEST_STARTED", nullptr);
        Write(nullptr, 0);
    }
    ~Started() { Write("ended", 5); }

private:
    void Write(const char* text, DWORD length) const
    {
        if (m_file[0] == '\0')
            return;
        const HANDLE file =
            CreateFileA(m_file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return;
        DWORD written = 0;
        WriteFile(file, text, length, &written, nullptr);
        CloseHandle(file);
    }

    char m_file[MAX_PATH] = "";
};

// The first priority that a program may use.
__attribute__((init_priority(101))) const Started g_started;

} // namespace
