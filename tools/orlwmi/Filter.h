// Another program that turns a text into another text. One source file a platform.
#pragma once

#include "tools/orlwmi/Deadline.h"

#include <string>
#include <string_view>
#include <vector>

namespace orl::client
{

enum class FilterEnd
{
    Finished,     // with an exit code
    NotInstalled, // no such program in the folders of PATH
    NotRun        // it is there, and could not be started or ended by a signal
};

struct Filtered
{
    FilterEnd end = FilterEnd::NotRun;
    int exitCode = 0;
    std::string output;
    std::string reason; // why it was not run
};

// Runs the program with `input` on its standard input and gives what it writes to standard output; what it writes to
// standard error goes to ours. `program` is a bare name, looked for in PATH alone and never in the current folder; no
// shell sees name or arguments. Throws what the deadline throws when there is no more waiting; the program is ended
// then.
[[nodiscard]] Filtered RunFilter(const std::string& program, const std::vector<std::string>& arguments,
                                 std::string_view input, const Deadline& deadline);

} // namespace orl::client
