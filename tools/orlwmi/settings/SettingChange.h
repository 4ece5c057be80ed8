// Changing settings: by the methods that their classes have.
#pragma once

#include "tools/orlwmi/Session.h"
#include "tools/orlwmi/settings/Settings.h"

#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

enum class Intent
{
    Validate, // ask whether the value would be taken
    Set       // and set it when nothing speaks against it
};

// In-parameters of the method: CurrentValue, RegistryValue and DisplayValue as they are wanted.
using SettingValues = std::vector<std::pair<std::string, std::string>>;

// Asks the setting's adapter, and tells its messages to the session's errors. Whether the value was taken, or would be.
[[nodiscard]] bool OfferValues(const std::string& path, const SettingValues& values, Intent intent, Session& session);

// Gives the setting its default. Whether that was done; the session's errors tell why not.
[[nodiscard]] bool ResetSetting(const std::string& path, Session& session);

// The setting as it is now.
[[nodiscard]] Setting ReadSettingAt(const std::string& path, Session& session);

} // namespace orl::client
