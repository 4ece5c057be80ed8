// The input is a file and not a pipe, so that the program cannot wait for us while we wait for it.
#include "tools/orlwmi/Filter.h"

#include "winport/portable/Utf8.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace orl::client
{
namespace
{

class Handle
{
public:
    explicit Handle(HANDLE handle = nullptr) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] HANDLE Get() const { return m_handle; }
    HANDLE* Place() { return &m_handle; }
    void Close()
    {
        if (m_handle != nullptr)
        {
            CloseHandle(m_handle);
        }
        m_handle = nullptr;
    }

private:
    HANDLE m_handle;
};

std::string SystemError()
{
    return "system error " + std::to_string(GetLastError());
}

std::wstring Variable(const wchar_t* name)
{
    std::wstring text(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
    return text;
}

// The program's file in a folder of PATH; empty when there is none. The system's own search would begin in the current
// folder, where anybody may have put one.
std::wstring FindProgram(const std::wstring& name)
{
    const std::wstring path = Variable(L"PATH");
    for (size_t begin = 0; begin < path.size();)
    {
        const size_t end = std::min(path.find(L';', begin), path.size());
        const std::wstring folder = path.substr(begin, end - begin);
        begin = end + 1;
        if (folder.size() < 2 || (folder[1] != L':' && folder.compare(0, 2, L"\\\\") != 0))
        {
            continue;
        }
        std::wstring file = folder + L"\\" + name + L".exe";
        const DWORD attributes = GetFileAttributesW(file.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        {
            return file;
        }
    }
    return {};
}

// As the C runtime of the other program takes it apart again.
std::wstring QuotedArgument(const std::wstring& argument)
{
    std::wstring quoted = L"\"";
    size_t backslashes = 0;
    for (const wchar_t c : argument)
    {
        quoted.append(c == L'"' ? backslashes + 1 : 0, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L"\"";
}

// A file that is gone when it is closed, to be read by a started program from its beginning.
HANDLE MakeInput(std::string_view input)
{
    std::array<wchar_t, MAX_PATH + 1> folder{};
    std::array<wchar_t, MAX_PATH + 1> name{};
    if (GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) == 0 ||
        GetTempFileNameW(folder.data(), L"orl", 0, name.data()) == 0)
    {
        return nullptr;
    }
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE file =
        CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, &inherited,
                    CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    DWORD written = 0;
    if (file != INVALID_HANDLE_VALUE &&
        (!WriteFile(file, input.data(), static_cast<DWORD>(input.size()), &written, nullptr) ||
         written != input.size() || SetFilePointer(file, 0, nullptr, FILE_BEGIN) != 0))
    {
        CloseHandle(file);
        return nullptr;
    }
    return file;
}

bool Start(const std::wstring& program, const std::vector<std::string>& arguments, HANDLE input, HANDLE output,
           HANDLE* process)
{
    std::wstring line = QuotedArgument(program);
    for (const auto& argument : arguments)
    {
        line += L" " + QuotedArgument(FromUtf8(argument));
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input;
    start.hStdOutput = output;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &started))
    {
        return false;
    }
    CloseHandle(started.hThread);
    *process = started.hProcess;
    return true;
}

std::string ReadAll(HANDLE pipe, const Deadline& deadline)
{
    std::string text;
    std::array<char, 65536> buffer;
    for (;;)
    {
        DWORD waiting = 0;
        DWORD got = 0;
        if (!PeekNamedPipe(pipe, nullptr, 0, nullptr, &waiting, nullptr))
        {
            return text; // the writer has closed it
        }
        if (waiting == 0)
        {
            static_cast<void>(deadline.Slice());
            Sleep(10);
        }
        else if (ReadFile(pipe, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr))
        {
            text.append(buffer.data(), got);
        }
        else
        {
            return text;
        }
    }
}

} // namespace

Filtered RunFilter(const std::string& program, const std::vector<std::string>& arguments, std::string_view input,
                   const Deadline& deadline)
{
    Filtered result;
    const std::wstring file = FindProgram(FromUtf8(program));
    if (file.empty())
    {
        result.end = FilterEnd::NotInstalled;
        return result;
    }
    const Handle source(MakeInput(input));
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    Handle reader;
    Handle writer;
    Handle process;
    if (source.Get() == nullptr || !CreatePipe(reader.Place(), writer.Place(), &inherited, 0) ||
        !SetHandleInformation(reader.Get(), HANDLE_FLAG_INHERIT, 0) ||
        !Start(file, arguments, source.Get(), writer.Get(), process.Place()))
    {
        result.reason = SystemError();
        return result;
    }
    writer.Close();
    try
    {
        result.output = ReadAll(reader.Get(), deadline);
    }
    catch (...)
    {
        TerminateProcess(process.Get(), 1);
        throw;
    }
    WaitForSingleObject(process.Get(), INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(process.Get(), &exitCode);
    result.end = FilterEnd::Finished;
    result.exitCode = static_cast<int>(exitCode);
    return result;
}

} // namespace orl::client
