// The client's side of POSIX.
#include "tools/orlwmi/Platform.h"

#include "winport/portable/Utf8.h"

#include <windows.h>

#include <cerrno>
#include <csignal>
#include <system_error>
#include <unistd.h>

namespace orl::client
{
namespace
{

volatile std::sig_atomic_t g_interrupted = 0;
int g_writeError = 0;

extern "C" void OnInterrupt(int)
{
    g_interrupted = 1;
}

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written > 0)
        {
            bytes.remove_prefix(static_cast<size_t>(written));
        }
        else if (written < 0 && errno != EINTR)
        {
            return false;
        }
    }
    return true;
}

} // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv)
{
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

void PrepareStreams()
{
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, nullptr);
}

WriteResult WriteStandardOutput(std::string_view bytes)
{
    if (WriteAll(STDOUT_FILENO, bytes))
    {
        return WriteResult::Written;
    }
    g_writeError = errno;
    return g_writeError == EPIPE ? WriteResult::ReceiverGone : WriteResult::Failed;
}

std::string LastWriteError()
{
    return std::generic_category().message(g_writeError);
}

void WriteStandardError(std::string_view bytes) noexcept
{
    // There is nowhere left to tell that telling failed.
    static_cast<void>(WriteAll(STDERR_FILENO, bytes));
}

void CatchInterrupts()
{
    struct sigaction action = {};
    action.sa_handler = OnInterrupt;
    // Reset: the second one has the default effect. Restart: reads and writes of the agents go on undisturbed.
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

bool Interrupted()
{
    return g_interrupted != 0;
}

void EndProcess(int exitCode)
{
    _exit(exitCode);
}

std::string RegistryPlace()
{
    std::wstring file(GetEnvironmentVariableW(L"ORL2_REGISTRY", nullptr, 0), L'\0');
    file.resize(GetEnvironmentVariableW(L"ORL2_REGISTRY", file.data(), static_cast<DWORD>(file.size())));
    return file.empty() ? "/etc/orl2/registry.reg" : ToUtf8(file);
}

} // namespace orl::client
