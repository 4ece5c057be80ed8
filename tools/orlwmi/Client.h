// The client as a whole: from arguments to exit code.
#pragma once

#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/Session.h"

#include <string>
#include <vector>

namespace orl::client
{

// Carries out one command line. Never throws: what goes wrong is told to `errors` and by the exit code.
[[nodiscard]] ExitCode RunClient(const std::vector<std::string>& arguments, Output& output,
                                 const ErrorLines& errors) noexcept;

// Runs the command of the options against services that are connected already. Throws Failure when it cannot do what it
// was asked; other codes than Done say what it found.
[[nodiscard]] ExitCode RunCommand(const Options& options, Session& session);

} // namespace orl::client
