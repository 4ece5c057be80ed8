// How fuzz targets insist.
#pragma once

#include <cstdlib>

// Ends the process where the condition does not hold, which is what libFuzzer reports with its input.
inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}
