// What a command line asks for.
#pragma once

#include "tools/orlwmi/format/ResultWriter.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

enum class Command
{
    Tree,
    Enum,
    Get,
    Query,
    Class,
    Classes,
    Doctor
};

struct Options
{
    Command command = Command::Tree;
    std::string subject;                                   // class, path or query
    std::vector<std::pair<std::string, std::string>> keys; // of `get CLASS --key NAME=VALUE`
    std::optional<Format> format;                          // the command's own choice when not given
    std::vector<std::string> select;                       // properties in the order asked for; all when empty
    std::string where;                                     // WQL condition
    std::optional<std::chrono::milliseconds> timeout;
    bool timing = false;
    bool count = false;
    bool all = false; // system classes too
    std::string nameSpace = "root/KESTA";
    std::string server; // this machine when empty
};

} // namespace orl::client
