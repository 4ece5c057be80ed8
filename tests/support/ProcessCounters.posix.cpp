// ProcessCounters, from /proc and the C library's heap.

#include "tests/support/ProcessCounters.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

namespace orl::test
{

namespace
{

std::size_t Entries(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

const std::size_t HeapLeftByUnload = 0;

ProcessCounters CountProcess()
{
    return {Entries("/proc/self/fd"), Entries("/proc/self/task"), ::mallinfo2().uordblks};
}

} // namespace orl::test
