// ChildProcess: a program that a test starts, listens to, and may kill.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orl::test
{

// Its standard output goes to the test through a pipe. Killed at the end if it still runs.
class ChildProcess
{
public:
    // Arguments without quotes. Throws std::runtime_error when it cannot be started.
    ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // At once and without its having a say.
    void Kill();
    // The next line of what it writes, without the line's end; false when it has ended and all is read. What stands
    // behind the last line end is not answered.
    bool ReadLine(std::string& line);
    // Waits for its end. Answers its exit code, -1 when it was killed.
    int Wait();

private:
    struct Platform;
    std::size_t Read(char* bytes, std::size_t capacity);

    const std::unique_ptr<Platform> m_platform;
    std::string m_read;
};

// The program of this name among the built ones.
std::filesystem::path BuiltProgram(const std::string& name);

} // namespace orl::test
