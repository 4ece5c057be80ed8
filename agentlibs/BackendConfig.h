// Which back end the registry asks an agent for, and how a back end stands.
#pragma once

#include "agentlibs/BackendError.h"

#include <string>
#include <variant>

namespace orl
{

// What the registry says about an agent, under its own key.
struct BackendConfig
{
    std::wstring backend;   // value `Backend`: `inventory` or `sysfs`, compared without regard to case
    std::wstring inventory; // value `Inventory`: path of the JSON file
    std::wstring sysfsRoot; // value `SysfsRoot`: the folder that holds `sys` and `proc`; empty stands for `/`
};

// How a back end stands, for whoever diagnoses an installation.
struct BackendStatus
{
    bool ready = false;
    std::wstring source; // the file or folder that the data comes from
    std::wstring text;   // ready: what was found there, in a few words ("2 HBAs"); else why not, as in BackendError
};

BackendConfig ReadBackendConfig(const std::wstring& agent);

enum class BackendKind
{
    Inventory,
    Sysfs
};
// Or what is wrong with the configuration, for the user.
std::variant<BackendKind, BackendError> BackendOf(const std::wstring& agent, const BackendConfig& config);

// Why there is no back end `sysfs` on platforms that have no such kernel.
BackendError SysfsUnavailable();

// "1 HBA", "2 HBAs".
std::wstring Counted(std::size_t count, const std::wstring& thing);

} // namespace orl
