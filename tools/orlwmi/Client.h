// The client as a whole: from arguments to exit code.
#pragma once

#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/Session.h"

#include <functional>
#include <string>
#include <vector>

namespace orl::client
{

// Where errors go.
using ErrorLines = std::function<void(const std::string&)>;

// Carries out one command line. Never throws: what goes wrong is told to `errors` and by the exit code.
[[nodiscard]] ExitCode RunClient(const std::vector<std::string>& arguments, Output& output,
                                 const ErrorLines& errors) noexcept;

// Runs the command of the options against services that are connected already.
void RunCommand(const Options& options, Session& session);

} // namespace orl::client
