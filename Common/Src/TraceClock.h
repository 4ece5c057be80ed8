// Where the trace log takes its times from.
#pragma once

#include <windows.h>

namespace orl
{

struct TraceTime
{
    SYSTEMTIME local;
    LARGE_INTEGER counter;
};

using TraceClock = TraceTime (*)();

// Local time and performance counter of the system.
TraceTime ReadSystemClock();

// Replaces the module's clock and answers the one before. For tests, which know the whole line that is due, while no
// other thread writes; a clock that throws stands for any failure while a line is made.
TraceClock ReplaceTraceClock(TraceClock clock);

// The time that the module's clock shows.
TraceTime ReadTraceClock();

} // namespace orl
