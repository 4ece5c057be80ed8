// Which back end the registry asks for.

#include "agentlibs/fcoelink/Backend.h"

#include "agentlibs/AgentRegistry.h"
#include "agentlibs/Text.h"

namespace orl
{

namespace
{

std::unique_ptr<FcoeBackend> Misconfigured(const std::wstring& value, const std::wstring& problem)
{
    return MakeUnavailableBackend({},
                                  {ERROR_INVALID_DATA, L"the registry value " + value + L" of HKEY_LOCAL_MACHINE\\" +
                                                           AgentKey(L"Fcoelink") + L" " + problem});
}

} // namespace

std::unique_ptr<FcoeBackend> MakeBackend(const BackendConfig& config)
{
    const std::wstring backend = FoldCase(config.backend);
    if (backend == L"inventory")
        return config.inventory.empty() ? Misconfigured(L"Inventory", L"is missing: it names the inventory's JSON file")
                                        : MakeInventoryBackend(config);
    if (backend == L"sysfs")
        return MakeSysfsBackend(config);
    return Misconfigured(L"Backend", (backend.empty() ? L"is missing" : L"is \"" + config.backend + L"\"") +
                                         std::wstring(L": it names the back end, inventory or sysfs"));
}

} // namespace orl
