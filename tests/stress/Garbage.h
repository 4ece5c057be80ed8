// Answers that make no sense.
#pragma once

#include "agent/OrlFcoeRecords.h"
#include "agent/OrlSettings.h"
#include "tests/stress/Dice.h"
#include "tests/stress/Ledger.h"

#include <vector>

namespace orl::test
{

// A text that no agent should hand out: empty, with embedded NULs, quotes, backslashes, control characters, halves of
// characters, format directives; rarely one of 10 MB.
COrlString GarbageText(Dice& dice, Ledger& ledger);

// Makes the records useless in one of many ways: keys and texts replaced, numbers at their limits, records twice.
// For the records of all seven enumerations.
template <typename Record>
void Spoil(std::vector<Record>& records, Dice& dice, Ledger& ledger);
void Spoil(ORL_SETTING& setting, Dice& dice, Ledger& ledger);

} // namespace orl::test
