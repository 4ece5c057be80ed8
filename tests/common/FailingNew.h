// Want of memory, on demand.
#pragma once

namespace orl::test
{

// While it lives, the nth allocation of this thread from now on (1 is the next) and all after it fail.
class AllocationFailure
{
public:
    explicit AllocationFailure(unsigned nth);
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;
};

} // namespace orl::test
