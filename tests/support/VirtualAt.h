// Calling a virtual operation by its place in the table, as modules do that were built apart.
#pragma once

#include <bit>
#include <cstddef>

namespace orl::test
{

// The destructor has two entries in this ABI's tables and one in those of the contracts, whose counting the indexes
// here follow: what stands behind the destructor is one entry further on.
constexpr std::size_t EntryOf(std::size_t index, std::size_t destructorIndex)
{
    return index > destructorIndex ? index + 1 : index;
}

// A pointer to the virtual member at that entry of the table, whatever its name is. The Itanium C++ ABI, which both
// compilers follow on x86-64, writes such a pointer as the entry's offset in bytes plus one, and no adjustment.
template <typename Member>
Member VirtualAt(std::size_t entry)
{
    struct Representation
    {
        std::ptrdiff_t offset;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(Representation) == sizeof(Member));
    return std::bit_cast<Member>(Representation{static_cast<std::ptrdiff_t>(entry * sizeof(void*)) + 1, 0});
}

} // namespace orl::test
