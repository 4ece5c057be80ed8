// The sysfs back end where there is no such kernel.

#include "agentlibs/corelink/SettingBackend.h"

namespace orl
{

std::unique_ptr<SettingBackend> MakeSysfsSettings(const BackendConfig& config)
{
    return MakeUnavailableSettings(config.sysfsRoot, SysfsUnavailable());
}

} // namespace orl
