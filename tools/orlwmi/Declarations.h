// The commands and options as they are declared to the parser. What it makes of a command line is unchecked still.
#pragma once

#include "tools/orlwmi/Options.h"

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

// The options as the parser fills them, before they are checked.
struct Raw
{
    Options options;
    std::string format;
    std::string select;
    std::vector<std::string> keys;
    std::vector<std::string> parameters;
    double timeout = 0;
    double watch = 0;
};

[[nodiscard]] const std::vector<std::pair<std::string, Format>>& FormatNames();

// Both must live as long as the parser is used.
void Declare(CLI::App& app, Raw& raw);

} // namespace orl::client
