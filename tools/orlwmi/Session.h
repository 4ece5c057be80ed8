// Session: what a command works with.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/Timing.h"
#include "tools/orlwmi/Wmi.h"

#include <functional>
#include <string>

namespace orl::client
{

// Where errors and warnings go, as whole lines.
using ErrorLines = std::function<void(const std::string&)>;

struct Session
{
    IWbemServices* services;
    const Deadline& deadline;
    Output& output;
    Timing& timing;
    const ErrorLines& errors;
};

} // namespace orl::client
