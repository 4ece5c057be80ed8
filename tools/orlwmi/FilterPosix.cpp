// The input is a file and not a pipe, so that the program cannot wait for us while we wait for it.
#include "tools/orlwmi/Filter.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace orl::client
{
namespace
{

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::string Message(int error)
{
    return std::generic_category().message(error);
}

class Descriptor
{
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor() { close(m_descriptor); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

// A started program. It is ended when nobody waits for it any more.
class Child
{
public:
    explicit Child(pid_t pid) : m_pid(pid) {}
    ~Child()
    {
        if (m_pid > 0)
        {
            kill(m_pid, SIGKILL);
            static_cast<void>(Wait());
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    int Wait()
    {
        int status = 0;
        while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR)
        {
        }
        m_pid = 0;
        return status;
    }

private:
    pid_t m_pid;
};

// 0, or why not.
int Start(const std::string& program, const std::vector<std::string>& arguments, int input, int output, pid_t& pid)
{
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), program);
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (auto& word : words)
    {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    // We ignore SIGPIPE; a program expects to be told.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int error = posix_spawnp(&pid, program.c_str(), &files, &attributes, pointers.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

std::string ReadAll(int descriptor, const Deadline& deadline)
{
    std::string text;
    std::array<char, 65536> buffer;
    for (;;)
    {
        pollfd wait{descriptor, POLLIN, 0};
        if (poll(&wait, 1, static_cast<int>(deadline.Slice())) <= 0)
        {
            continue;
        }
        const ssize_t got = read(descriptor, buffer.data(), buffer.size());
        if (got > 0)
        {
            text.append(buffer.data(), static_cast<size_t>(got));
        }
        else if (got == 0 || errno != EINTR)
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
    const File file(std::tmpfile(), std::fclose);
    if (!file || std::fwrite(input.data(), 1, input.size(), file.get()) != input.size() ||
        std::fseek(file.get(), 0, SEEK_SET) != 0)
    {
        result.reason = "no temporary file: " + Message(errno);
        return result;
    }
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
    {
        result.reason = "no pipe: " + Message(errno);
        return result;
    }
    const Descriptor reader(ends[0]);
    pid_t pid = 0;
    {
        const Descriptor writer(ends[1]);
        if (const int error = Start(program, arguments, fileno(file.get()), writer.Get(), pid); error != 0)
        {
            result.end = error == ENOENT ? FilterEnd::NotInstalled : FilterEnd::NotRun;
            result.reason = Message(error);
            return result;
        }
    }
    Child child(pid);
    result.output = ReadAll(reader.Get(), deadline);
    const int status = child.Wait();
    if (WIFEXITED(status))
    {
        result.end = FilterEnd::Finished;
        result.exitCode = WEXITSTATUS(status);
    }
    else
    {
        result.reason = "ended by signal " + std::to_string(WTERMSIG(status));
    }
    return result;
}

} // namespace orl::client
