// What the client needs of the operating system beyond COM. One source file a platform.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orl::client
{

// The program's arguments in UTF-8, without the program itself.
[[nodiscard]] std::vector<std::string> ProgramArguments(int argc, char** argv);

// Makes standard output and standard error carry bytes as they are, and a closed pipe an error instead of an end.
void PrepareStreams();

enum class WriteResult
{
    Written,
    ReceiverGone,
    Failed
};

[[nodiscard]] WriteResult WriteStandardOutput(std::string_view bytes);
[[nodiscard]] std::string LastWriteError(); // of the write that failed last
void WriteStandardError(std::string_view bytes) noexcept;

// From now on Ctrl-C sets a flag, once; a second one ends the program at once.
void CatchInterrupts();
[[nodiscard]] bool Interrupted();

// Ends the process without winding up: used when a call into the service is stuck and would be waited for.
[[noreturn]] void EndProcess(int exitCode);

// Where the platform keeps its registry, as a place that a user can go to.
[[nodiscard]] std::string RegistryPlace();

} // namespace orl::client
