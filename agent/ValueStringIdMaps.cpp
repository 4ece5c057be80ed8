// The value description maps. Out of line, so that the provider's library holds its one set of them, also while nothing
// in it looks a value up.

#include "agent/ValueStringIdMaps.h"

namespace
{

// The values 0 to `count`: 0 has a text of its own, the others have consecutive ones.
std::map<ULONG, ULONG> ConsecutiveTexts(ULONG textOfZero, ULONG count, ULONG textOfOne)
{
    std::map<ULONG, ULONG> texts{{0, textOfZero}};
    for (ULONG value = 1; value <= count; ++value)
        texts.emplace(value, textOfOne + value - 1);
    return texts;
}

} // namespace

const std::map<ULONG, ULONG> ValueStringIdMap1 = ConsecutiveTexts(2021, 7, 1195);
const std::map<ULONG, ULONG> ValueStringIdMap2{{0, 2040}, {1, 2023}, {2, 1244}, {3, 1245}};
const std::map<ULONG, ULONG> ValueStringIdMap3 = ConsecutiveTexts(2021, 14, 1202);
const std::map<ULONG, ULONG> ValueStringIdMap4 = ConsecutiveTexts(2021, 3, 1216);
const std::map<ULONG, ULONG> ValueStringIdMap5{{0, 2021}, {1, 1219}, {2, 1220}, {4, 1221}, {8, 1222}, {16, 1223}};
const std::map<ULONG, ULONG> ValueStringIdMap6{{0, 2040}};
const std::map<ULONG, ULONG> ValueStringIdMap7{{0, 2040}, {1, 2020}, {2, 1228}, {3, 1229}, {4, 1230}};
