// Which back end the registry asks an agent for.

#include "agentlibs/BackendConfig.h"

#include "agentlibs/AgentRegistry.h"
#include "agentlibs/Text.h"

namespace orl
{

namespace
{

BackendError Misconfigured(const std::wstring& agent, const std::wstring& value, const std::wstring& problem)
{
    return {ERROR_INVALID_DATA,
            L"the registry value " + value + L" of HKEY_LOCAL_MACHINE\\" + AgentKey(agent) + L" " + problem};
}

} // namespace

BackendConfig ReadBackendConfig(const std::wstring& agent)
{
    BackendConfig config;
    config.backend = ReadAgentValue(agent, L"Backend");
    config.inventory = ReadAgentValue(agent, L"Inventory");
    config.sysfsRoot = ReadAgentValue(agent, L"SysfsRoot");
    return config;
}

std::variant<BackendKind, BackendError> BackendOf(const std::wstring& agent, const BackendConfig& config)
{
    const std::wstring backend = FoldCase(config.backend);
    if (backend == L"inventory")
    {
        if (config.inventory.empty())
            return Misconfigured(agent, L"Inventory", L"is missing: it names the inventory's JSON file");
        return BackendKind::Inventory;
    }
    if (backend == L"sysfs")
        return BackendKind::Sysfs;
    return Misconfigured(agent, L"Backend",
                         (backend.empty() ? L"is missing" : L"is \"" + config.backend + L"\"") +
                             std::wstring(L": it names the back end, inventory or sysfs"));
}

BackendError SysfsUnavailable()
{
    return {ERROR_NOT_SUPPORTED,
            L"the back end \"sysfs\" is not available on this platform; set Backend to \"inventory\""};
}

std::wstring Counted(std::size_t count, const std::wstring& thing)
{
    return std::to_wstring(count) + L" " + thing + (count == 1 ? L"" : L"s");
}

} // namespace orl
