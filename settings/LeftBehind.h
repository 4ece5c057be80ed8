// What the setting managers leave behind on purpose, and the only place that does.
//
// Two things outlive a request although nobody in the provider knows them any more: the text of a value whose object
// has been freed, and the setting that an update worked on. Agents that are built apart have always found both alive
// after the call, and none is known not to rely on it. It costs one text and one setting a change, which is a client's
// deliberate act; listing and reading leave nothing. Leak checkers are told of exactly these two, so that they
// still find everything else.
#pragma once

#include "agent/OrlSettings.h"

#include <memory>

namespace orl
{

// Frees a value as the ORL_SETTING_VAL that it is to its callers: its object goes, the text's own storage stays. The
// value must have been made with new. Null is allowed.
void FreeSettingValue(ORL_SETTING_VAL* value) noexcept;

struct FreeAsSettingValue
{
    void operator()(ORL_SETTING_VAL* value) const noexcept { FreeSettingValue(value); }
};
using SettingValuePtr = std::unique_ptr<ORL_SETTING_VAL_INT, FreeAsSettingValue>;

// Says of a setting that nobody will delete it. Null is allowed.
void LeaveSettingBehind(const ORL_SETTING* setting) noexcept;

// The one suppression: leak checkers overlook this allocation and what it alone refers to. Without a leak checker in
// the build it does nothing, see CMakeLists.txt.
void OverlookLeak(const void* memory) noexcept;

} // namespace orl
