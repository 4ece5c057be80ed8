// The sysfs back end where there is no such kernel.

#include "agentlibs/fcoelink/Backend.h"

namespace orl
{

std::unique_ptr<FcoeBackend> MakeSysfsBackend(const BackendConfig& config)
{
    return MakeUnavailableBackend(config.sysfsRoot, {ERROR_NOT_SUPPORTED,
                                                     L"the back end \"sysfs\" is not available on this platform; set "
                                                     L"Backend to \"inventory\""});
}

} // namespace orl
