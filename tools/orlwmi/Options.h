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
    Stats,
    Graph,
    Settings,
    Enum,
    Get,
    Query,
    Assoc,
    Refs,
    Call,
    Set,
    Reset,
    Delete,
    Class,
    Classes,
    Doctor
};

// What narrows the answer of `assoc` and `refs`. Empty where nothing is asked for.
struct AssociationOptions
{
    std::string assocClass;
    std::string resultClass;
    std::string role;
    std::string resultRole;
    bool keysOnly = false;
};

struct Options
{
    Command command = Command::Tree;
    std::string subject;               // class, path or query
    std::vector<std::string> operands; // adapters of tree, stats, graph and settings, paths of delete
    std::string method;                // of `call`
    std::vector<std::pair<std::string, std::string>> parameters; // of `call`, properties of `set`, in the order given
    std::vector<std::pair<std::string, std::string>> keys;       // of `get CLASS --key NAME=VALUE`
    AssociationOptions association;
    std::string hba;                 // of `set` and `reset`, with the next
    std::string setting;             // empty when an instance is named by its path
    bool dryRun = false;             // of `set`
    bool drawn = false;              // `graph` as SVG
    std::optional<Format> format;    // the command's own choice when not given
    std::vector<std::string> select; // properties in the order asked for; all when empty
    std::string where;               // WQL condition
    std::optional<std::chrono::milliseconds> timeout;
    std::optional<std::chrono::milliseconds> watch; // time from one sample to the next
    std::optional<unsigned> samples;                // after how many to end; never when not given
    bool timing = false;
    bool raw = false; // numbers without what they stand for
    bool count = false;
    bool all = false; // system classes too; counters that stand at 0 too
    std::string nameSpace = "root/KESTA";
    std::string server; // this machine when empty
};

} // namespace orl::client
