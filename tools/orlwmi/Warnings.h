// The messages that a method hands back beside its return value (Zarn_WarningMessage).
#pragma once

#include "tools/orlwmi/Record.h"

#include <string>
#include <vector>

namespace orl::client
{

struct Warning
{
    bool isError = false; // the action was refused or failed; otherwise advice about one that was done
    std::string id;       // the number of the text; empty for a text without
    std::string message;
};

// The messages among the out-parameters, in their order.
[[nodiscard]] std::vector<Warning> WarningsIn(const Record& out);

// The out-parameters without those that carry messages.
[[nodiscard]] Record WithoutWarnings(const Record& out);

// One line, ended by a line feed: "error: the port exists already (message 1201)".
[[nodiscard]] std::string LineOf(const Warning& warning);

} // namespace orl::client
