// The client's side of Windows.
#include "tools/orlwmi/Platform.h"
#include "winport/portable/Utf8.h"

#include <windows.h>
#include <shellapi.h>

#include <algorithm>
#include <array>
#include <atomic>

namespace orl::client
{
namespace
{

std::atomic<bool> g_interrupted{false};
DWORD g_writeError = 0;

BOOL WINAPI OnControl(DWORD event)
{
    // Answering FALSE lets the system end the process.
    return event == CTRL_C_EVENT && !g_interrupted.exchange(true) ? TRUE : FALSE;
}

// A console takes wide text, whatever its code page; a file or pipe takes the bytes.
bool WriteToConsole(HANDLE console, std::string_view bytes)
{
    constexpr size_t Piece = 4096;
    const std::wstring text = FromUtf8(bytes);
    for (size_t at = 0; at < text.size();)
    {
        size_t length = std::min(Piece, text.size() - at);
        const bool splitsPair = at + length < text.size() && text[at + length] >= 0xDC00 && text[at + length] <= 0xDFFF;
        length += splitsPair ? 1U : 0U;
        DWORD written = 0;
        if (!WriteConsoleW(console, text.data() + at, static_cast<DWORD>(length), &written, nullptr) || written == 0)
        {
            return false;
        }
        at += written;
    }
    return true;
}

bool WriteAll(HANDLE handle, std::string_view bytes)
{
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode))
    {
        return WriteToConsole(handle, bytes);
    }
    while (!bytes.empty())
    {
        constexpr size_t Piece = 1U << 20;
        DWORD written = 0;
        if (!WriteFile(handle, bytes.data(), static_cast<DWORD>(std::min(Piece, bytes.size())), &written, nullptr))
        {
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

} // namespace

std::vector<std::string> ProgramArguments(int, char**)
{
    // The C runtime's arguments are in the ANSI code page and have lost what it lacks.
    std::vector<std::string> arguments;
    int count = 0;
    LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; words != nullptr && i < count; ++i)
    {
        arguments.push_back(ToUtf8(words[i]));
    }
    LocalFree(words);
    return arguments;
}

void PrepareStreams() {}

WriteResult WriteStandardOutput(std::string_view bytes)
{
    if (WriteAll(GetStdHandle(STD_OUTPUT_HANDLE), bytes))
    {
        return WriteResult::Written;
    }
    g_writeError = GetLastError();
    const bool gone = g_writeError == ERROR_BROKEN_PIPE || g_writeError == ERROR_NO_DATA;
    return gone ? WriteResult::ReceiverGone : WriteResult::Failed;
}

std::string LastWriteError()
{
    std::array<wchar_t, 512> text{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        g_writeError, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::wstring_view message(text.data(), length);
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L'.'))
    {
        message.remove_suffix(1);
    }
    return message.empty() ? "system error " + std::to_string(g_writeError) : ToUtf8(message);
}

void WriteStandardError(std::string_view bytes) noexcept
{
    // There is nowhere left to tell that telling failed.
    static_cast<void>(WriteAll(GetStdHandle(STD_ERROR_HANDLE), bytes));
}

void CatchInterrupts()
{
    SetConsoleCtrlHandler(OnControl, TRUE);
}

bool Interrupted()
{
    return g_interrupted;
}

void EndProcess(int exitCode)
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    ExitProcess(static_cast<UINT>(exitCode));
}

std::string RegistryPlace()
{
    return "the system's registry";
}

} // namespace orl::client
