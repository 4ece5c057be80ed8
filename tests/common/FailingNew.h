// Want of memory, on demand.
#pragma once

#include <cstdint>

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

// From now on each allocation of every thread fails with the chance of one in `oneIn`; 0 ends it. The seed decides
// which allocations of a thread they are.
void MakeMemoryFlaky(unsigned oneIn, std::uint64_t seed);
// How many allocations have failed for that.
std::uint64_t FlakyFailures();

// What a test does for itself, and what it passes to the code under test from there: this thread's allocations do not
// fail while the innermost of these two is a Sheltered.
class Sheltered
{
public:
    Sheltered() : Sheltered(true) {}
    ~Sheltered();
    Sheltered(const Sheltered&) = delete;
    Sheltered& operator=(const Sheltered&) = delete;

protected:
    explicit Sheltered(bool isSheltered);

private:
    const bool m_before;
};
class Exposed : public Sheltered
{
public:
    Exposed() : Sheltered(false) {}
};

} // namespace orl::test
