// The sysfs back end where there is no such kernel.

#include "agentlibs/fcoelink/Backend.h"

namespace orl
{

std::unique_ptr<FcoeBackend> MakeSysfsBackend(const BackendConfig& config)
{
    return MakeUnavailableBackend(config.sysfsRoot, SysfsUnavailable());
}

} // namespace orl
