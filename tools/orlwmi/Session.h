// Session: what a command works with.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/Timing.h"
#include "tools/orlwmi/Wmi.h"

namespace orl::client
{

struct Session
{
    IWbemServices* services;
    const Deadline& deadline;
    Output& output;
    Timing& timing;
};

} // namespace orl::client
