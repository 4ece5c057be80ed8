// ChildProcess on POSIX.

#include "tests/support/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace orl::test
{

struct ChildProcess::Platform
{
    pid_t pid = 0;
    int output = -1;
    int status = 0;
    bool ended = false;
};

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments)
    : m_platform(std::make_unique<Platform>())
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("pipe2");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::string name = program.string();
    std::vector<std::string> texts = arguments;
    std::vector<char*> argv{name.data()};
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    const int error = posix_spawn(&m_platform->pid, name.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    m_platform->output = ends[0];
    if (error != 0)
    {
        close(ends[0]);
        throw std::runtime_error("cannot start " + name);
    }
}

ChildProcess::~ChildProcess()
{
    Kill();
    Wait();
    close(m_platform->output);
}

void ChildProcess::Kill()
{
    if (!m_platform->ended)
        kill(m_platform->pid, SIGKILL);
}

int ChildProcess::Wait()
{
    while (!m_platform->ended)
        m_platform->ended = waitpid(m_platform->pid, &m_platform->status, 0) == m_platform->pid || errno != EINTR;
    return WIFEXITED(m_platform->status) ? WEXITSTATUS(m_platform->status) : -1;
}

std::size_t ChildProcess::Read(char* bytes, std::size_t capacity)
{
    for (;;)
    {
        const ssize_t length = read(m_platform->output, bytes, capacity);
        if (length >= 0)
            return static_cast<std::size_t>(length);
        if (errno != EINTR)
            throw std::runtime_error("cannot read from the child process");
    }
}

std::filesystem::path BuiltProgram(const std::string& name)
{
    return std::filesystem::path(ORL_BIN_DIR) / name;
}

} // namespace orl::test
