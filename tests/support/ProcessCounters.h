// ProcessCounters: what the system says that this process holds.
#pragma once

#include <cstddef>

namespace orl::test
{

struct ProcessCounters
{
    std::size_t handles; // open files and sockets on Linux
    std::size_t threads;
    std::size_t heapBytes; // that are allocated and not freed; 0 where a sanitizer has replaced the heap
};

ProcessCounters CountProcess();

// What the C++ runtime that is linked into a library leaves on the heap, at most, each time the library is unloaded.
extern const std::size_t HeapLeftByUnload;

} // namespace orl::test
