// ProcessCounters, from the system's own counts and a walk over the process's heaps.

#include "tests/support/ProcessCounters.h"

#include <windows.h>
#include <tlhelp32.h>

#include <vector>

namespace orl::test
{

namespace
{

std::size_t Handles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

std::size_t Threads()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return 0;
    std::size_t count = 0;
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
    {
        if (entry.th32OwnerProcessID == GetCurrentProcessId())
            ++count;
    }
    CloseHandle(snapshot);
    return count;
}

std::size_t BytesOf(HANDLE heap)
{
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry))
    {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
            bytes += entry.cbData;
    }
    HeapUnlock(heap);
    return bytes;
}

std::size_t HeapBytes()
{
    std::vector<HANDLE> heaps(64);
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    heaps.resize(count < heaps.size() ? count : heaps.size());
    std::size_t bytes = 0;
    for (const HANDLE heap : heaps)
        bytes += BytesOf(heap);
    return bytes;
}

} // namespace

// The thread library's record of the thread that loaded it.
const std::size_t HeapLeftByUnload = 1024;

ProcessCounters CountProcess()
{
    return {Handles(), Threads(), HeapBytes()};
}

} // namespace orl::test
