// One run: everybody at once for a while, then the reckoning.
#pragma once

#include <cstdint>

namespace orl::test
{

struct RunOptions
{
    std::uint64_t seed = 0;
    unsigned seconds = 20;
};

// Prints the seed first, what was done, and what was wrong. The exit code of the program.
int RunStress(const RunOptions& options);

} // namespace orl::test
