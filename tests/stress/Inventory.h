// The agents of an inventory, as they ship.
#pragma once

#include "agentlibs/corelink/CoreAgent.h"
#include "agentlibs/fcoelink/Backend.h"
#include "agentlibs/fcoelink/FcoeAgent.h"

#include <filesystem>
#include <memory>

namespace orl::test
{

struct Agents
{
    explicit Agents(const std::filesystem::path& inventory)
    {
        BackendConfig config;
        config.backend = L"inventory";
        config.inventory = inventory.wstring();
        fcoe = std::make_unique<FcoeAgent>(MakeInventoryBackend(config));
        adapter = std::make_unique<CoreAgent>(MakeInventorySettings(config));
    }

    std::unique_ptr<FcoeAgent> fcoe;
    std::unique_ptr<CoreAgent> adapter;
};

} // namespace orl::test
