// OrlBstr: allocation of BSTRs with a fault that tests set.

#include "com/OrlBstr.h"

#include <atomic>
#include <cwchar>
#include <limits>

namespace
{

std::atomic<ULONG> g_allocations{0};
// The count of g_allocations at which the allocation fails; 0 is never reached.
std::atomic<ULONG> g_failAt{0};

} // namespace

BSTR OrlAllocBstr(const wchar_t* text, std::size_t length)
{
    const ULONG number = g_allocations.fetch_add(1, std::memory_order_relaxed) + 1;
    if (number == g_failAt.load(std::memory_order_relaxed) || length >= std::numeric_limits<UINT>::max() / 4)
        return nullptr;
    return SysAllocStringLen(text, static_cast<UINT>(length));
}

BSTR OrlAllocBstr(const wchar_t* text)
{
    return text == nullptr ? nullptr : OrlAllocBstr(text, std::wcslen(text));
}

void OrlFailBstrAllocation(ULONG n)
{
    g_failAt.store(n == 0 ? 0 : g_allocations.load(std::memory_order_relaxed) + n, std::memory_order_relaxed);
}

ULONG OrlBstrAllocations()
{
    return g_allocations.load(std::memory_order_relaxed);
}
