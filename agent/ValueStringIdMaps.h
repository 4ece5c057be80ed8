// What the agents' small numbers mean, as numbers of texts in the common resource library: look a value up by exact
// match, and its text with COrlString::LoadCommonResString. A value that a map lacks has no text.
//
// Filled before the module's exports can be called and never changed, so any thread may read them.
#pragma once

#include <windows.h>

#include <map>

// States of a port.
extern const std::map<ULONG, ULONG> ValueStringIdMap1;
// States of a target.
extern const std::map<ULONG, ULONG> ValueStringIdMap2;
// Types of a port, as the FC-HBA API counts them.
extern const std::map<ULONG, ULONG> ValueStringIdMap3;
// Types of a fabric.
extern const std::map<ULONG, ULONG> ValueStringIdMap4;
// Speeds of a port: one bit each, so several at once have no text.
extern const std::map<ULONG, ULONG> ValueStringIdMap5;
// Nothing but "not reported".
extern const std::map<ULONG, ULONG> ValueStringIdMap6;
// States of a VLAN.
extern const std::map<ULONG, ULONG> ValueStringIdMap7;
