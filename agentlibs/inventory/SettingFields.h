// The list `settings` of an adapter.
#pragma once

#include "agentlibs/inventory/ObjectReader.h"
#include "agentlibs/settings/SettingDescription.h"

#include <vector>

namespace orl
{

// Appends the settings that the adapter's object lists. What would contradict itself is refused with its place: names
// that two settings share, a value outside of the setting's own limits, texts of choices that cannot be told apart.
void ReadSettings(ObjectReader& hba, std::vector<SettingDescription>& settings);

} // namespace orl
