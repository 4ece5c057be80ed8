// Where the trace log takes its times from.

#include "Common/Src/TraceClock.h"

#include <utility>

namespace orl
{

namespace
{

TraceClock s_clock = ReadSystemClock;

} // namespace

TraceTime ReadSystemClock()
{
    TraceTime now = {};
    GetLocalTime(&now.local);
    QueryPerformanceCounter(&now.counter);
    return now;
}

TraceClock ReplaceTraceClock(TraceClock clock)
{
    return std::exchange(s_clock, clock);
}

TraceTime ReadTraceClock()
{
    return s_clock();
}

} // namespace orl
