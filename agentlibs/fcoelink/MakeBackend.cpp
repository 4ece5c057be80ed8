// Which back end the registry asks for.

#include "agentlibs/fcoelink/Backend.h"

namespace orl
{

std::unique_ptr<FcoeBackend> MakeBackend(const BackendConfig& config)
{
    const auto backend = BackendOf(L"Fcoelink", config);
    if (const auto* problem = std::get_if<BackendError>(&backend))
        return MakeUnavailableBackend({}, *problem);
    return std::get<BackendKind>(backend) == BackendKind::Inventory ? MakeInventoryBackend(config)
                                                                    : MakeSysfsBackend(config);
}

} // namespace orl
