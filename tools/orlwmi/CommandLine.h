// The command line: commands, options, help.
#pragma once

#include "tools/orlwmi/Options.h"

#include <string>
#include <variant>
#include <vector>

namespace orl::client
{

// Text that was asked for instead of a request: help, or the version.
struct Help
{
    std::string text;
};

// Throws Failure with ExitCode::Usage for what makes no sense; its text says where help is.
[[nodiscard]] std::variant<Options, Help> ParseCommandLine(const std::vector<std::string>& arguments);

} // namespace orl::client
