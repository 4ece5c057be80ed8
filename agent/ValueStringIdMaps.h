// What the agents' small numbers mean, as numbers of texts in the common resource library: look a value up by exact
// match, and its text with COrlString::LoadCommonResString. A value that a map lacks has no text.
//
// Filled before the module's exports can be called and never changed, so any thread may read them.
#pragma once

#include <windows.h>

#include <map>

namespace orl
{

// The values 0 to `count`: 0 has a text of its own, the others have consecutive ones.
inline std::map<ULONG, ULONG> ConsecutiveTexts(ULONG textOfZero, ULONG count, ULONG textOfOne)
{
    std::map<ULONG, ULONG> texts{{0, textOfZero}};
    for (ULONG value = 1; value <= count; ++value)
        texts.emplace(value, textOfOne + value - 1);
    return texts;
}

} // namespace orl

// States of a port.
inline const std::map<ULONG, ULONG> ValueStringIdMap1 = orl::ConsecutiveTexts(2021, 7, 1195);
// States of a target.
inline const std::map<ULONG, ULONG> ValueStringIdMap2{{0, 2040}, {1, 2023}, {2, 1244}, {3, 1245}};
// Types of a port, as the FC-HBA API counts them.
inline const std::map<ULONG, ULONG> ValueStringIdMap3 = orl::ConsecutiveTexts(2021, 14, 1202);
// Types of a fabric.
inline const std::map<ULONG, ULONG> ValueStringIdMap4 = orl::ConsecutiveTexts(2021, 3, 1216);
// Speeds of a port: one bit each, so several at once have no text.
inline const std::map<ULONG, ULONG> ValueStringIdMap5{{0, 2021}, {1, 1219}, {2, 1220},
                                                      {4, 1221}, {8, 1222}, {16, 1223}};
// Nothing but "not reported".
inline const std::map<ULONG, ULONG> ValueStringIdMap6 = orl::ConsecutiveTexts(2040, 0, 0);
// States of a VLAN.
inline const std::map<ULONG, ULONG> ValueStringIdMap7{{0, 2040}, {1, 2020}, {2, 1228}, {3, 1229}, {4, 1230}};
