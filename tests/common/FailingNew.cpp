// Want of memory, on demand: the program's own allocation functions.

#include "tests/common/FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

// How many allocations still succeed; negative while none is meant to fail.
thread_local int s_left = -1;

std::atomic<unsigned> s_flakyOneIn{0};
std::atomic<std::uint64_t> s_flakySeed{0};
std::atomic<std::uint64_t> s_flakyFailures{0};
std::atomic<std::uint64_t> s_flakyThreads{0};
thread_local bool s_isSheltered = false;
thread_local std::uint64_t s_flakyState = 0; // of this thread's random numbers; 0 before the first

// The next of a thread's random numbers (xorshift, which has no state 0).
std::uint64_t NextFlaky() noexcept
{
    if (s_flakyState == 0)
        s_flakyState = (s_flakySeed + ++s_flakyThreads) * 0x9E3779B97F4A7C15u | 1u;
    s_flakyState ^= s_flakyState << 13;
    s_flakyState ^= s_flakyState >> 7;
    s_flakyState ^= s_flakyState << 17;
    return s_flakyState;
}

bool FailsByChance() noexcept
{
    const unsigned oneIn = s_flakyOneIn.load(std::memory_order_relaxed);
    if (oneIn == 0 || s_isSheltered || NextFlaky() % oneIn != 0)
        return false;
    s_flakyFailures.fetch_add(1, std::memory_order_relaxed);
    return true;
}

void* Allocate(std::size_t size) noexcept
{
    if (s_left == 0 || FailsByChance())
        return nullptr;
    if (s_left > 0)
        --s_left;
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

// Not inlined: a compiler that sees one of a pair inlined takes it for a new without its delete.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (void* memory = Allocate(size))
        return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void* operator new[](std::size_t size)
{
    return operator new(size);
}

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

[[gnu::noinline]] void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

namespace orl::test
{

AllocationFailure::AllocationFailure(unsigned nth)
{
    s_left = static_cast<int>(nth) - 1;
}

AllocationFailure::~AllocationFailure()
{
    s_left = -1;
}

void MakeMemoryFlaky(unsigned oneIn, std::uint64_t seed)
{
    s_flakySeed = seed;
    s_flakyOneIn = oneIn;
}

std::uint64_t FlakyFailures()
{
    return s_flakyFailures;
}

Sheltered::Sheltered(bool isSheltered) : m_before(s_isSheltered)
{
    s_isSheltered = isSheltered;
}

Sheltered::~Sheltered()
{
    s_isSheltered = m_before;
}

} // namespace orl::test
