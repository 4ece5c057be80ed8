// ChildProcess on Windows.

#include "tests/support/ChildProcess.h"

#include <windows.h>

#include <stdexcept>

namespace orl::test
{

namespace
{

constexpr UINT KilledCode = 0xDEAD;

} // namespace

struct ChildProcess::Platform
{
    HANDLE process = nullptr;
    HANDLE output = nullptr;
};

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments)
    : m_platform(std::make_unique<Platform>())
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE write = nullptr;
    if (!CreatePipe(&m_platform->output, &write, &inherited, 0))
        throw std::runtime_error("CreatePipe");
    SetHandleInformation(m_platform->output, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = write;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    std::wstring line = L"\"" + program.wstring() + L"\"";
    for (const std::string& argument : arguments)
        line += L" \"" + std::filesystem::path(argument).wstring() + L"\"";
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                                        nullptr, &start, &process);
    CloseHandle(write);
    if (!started)
    {
        CloseHandle(m_platform->output);
        throw std::runtime_error("cannot start " + program.string());
    }
    CloseHandle(process.hThread);
    m_platform->process = process.hProcess;
}

ChildProcess::~ChildProcess()
{
    Kill();
    Wait();
    CloseHandle(m_platform->process);
    CloseHandle(m_platform->output);
}

void ChildProcess::Kill()
{
    TerminateProcess(m_platform->process, KilledCode);
}

int ChildProcess::Wait()
{
    WaitForSingleObject(m_platform->process, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(m_platform->process, &code);
    return code == KilledCode ? -1 : static_cast<int>(code);
}

std::size_t ChildProcess::Read(char* bytes, std::size_t capacity)
{
    DWORD length = 0;
    return ReadFile(m_platform->output, bytes, static_cast<DWORD>(capacity), &length, nullptr) ? length : 0;
}

std::filesystem::path BuiltProgram(const std::string& name)
{
    return std::filesystem::absolute(std::filesystem::path(ORL_BIN_DIR) / (name + ".exe")).make_preferred();
}

} // namespace orl::test
