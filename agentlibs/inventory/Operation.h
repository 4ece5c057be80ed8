// The agents' operations by name, as an inventory's faults call them.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace orl
{

// In the order of the agents' tables of operations: Fcoelink's, then Corelink's.
enum class Operation : std::size_t
{
    EnumerateHBAs,
    EnumerateFabrics,
    EnumeratePorts,
    EnumerateTargets,
    EnumerateVLANs,
    EnumerateLUNs,
    EnumerateStatistics,
    Uninstall,
    CreateVirtualPort,
    DeleteVirtualPort,
    GenerateVirtualPortWWPN,
    RefreshTargets,
    GetSetting,
    SetSetting,
    SetSettingToDefault,
    GetAdapter,
    ValidateSettingModification,
    EnumerateSettings
};

inline const std::vector<std::string_view>& OperationNames()
{
    static const std::vector<std::string_view> names = {
        "EnumerateHBAs",
        "EnumerateFabrics",
        "EnumeratePorts",
        "EnumerateTargets",
        "EnumerateVLANs",
        "EnumerateLUNs",
        "EnumerateStatistics",
        "Uninstall",
        "CreateVirtualPort",
        "DeleteVirtualPort",
        "GenerateVirtualPortWWPN",
        "RefreshTargets",
        "GetSetting",
        "SetSetting",
        "SetSettingToDefault",
        "GetAdapter",
        "ValidateSettingModification",
        "EnumerateSettings",
    };
    return names;
}

} // namespace orl
