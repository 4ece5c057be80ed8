// Which new values a setting takes.
#pragma once

#include "agentlibs/settings/SettingDescription.h"

namespace orl
{

// Throws SettingRefusal when nobody may change the setting of this adapter.
void RequireWritable(const SettingDescription& setting, const COrlString& adapterId);

// The number that a client asks for. A text decides where the value has one, the number where it has none or the
// text that says so. Throws SettingRefusal, with the reason for the user, when the setting cannot have it.
LONG RequireValue(const SettingDescription& setting, const ORL_SETTING_VAL_INT& value);

} // namespace orl
