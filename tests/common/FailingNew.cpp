// Want of memory, on demand: the program's own allocation functions.

#include "tests/common/FailingNew.h"

#include <cstdlib>
#include <new>

namespace
{

// How many allocations still succeed; negative while none is meant to fail.
thread_local int s_left = -1;

void* Allocate(std::size_t size) noexcept
{
    if (s_left == 0)
        return nullptr;
    if (s_left > 0)
        --s_left;
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

void* operator new(std::size_t size)
{
    if (void* memory = Allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
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

} // namespace orl::test
