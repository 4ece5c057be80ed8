// Many texts, each once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace orl
{

// A set of texts that is made once and then searched in about the order in which it was made, as an association's ends
// are: they lie side by side, so that the cost of one does not grow with how many there are. Not for several threads.
class KeyTextSet
{
public:
    // False when it is there already.
    bool Insert(std::wstring_view text);

    // Fastest for the text that was inserted after the one found last.
    bool Contains(std::wstring_view text);

    std::size_t Size() const noexcept { return m_texts.size(); }

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; // of the text, from 1; 0 for an empty slot
    };

    Slot& SlotFor(std::wstring_view text, std::uint32_t hash);
    void Grow();
    std::wstring_view Keep(std::wstring_view text);

    std::vector<std::unique_ptr<wchar_t[]>> m_blocks;
    std::size_t m_blockSize = 0;            // of the last block, in characters
    std::size_t m_free = 0;                 // characters left in it
    std::vector<std::wstring_view> m_texts; // in the blocks, in the order of insertion
    std::vector<Slot> m_slots;              // a power of two, at least half of them empty
    std::size_t m_next = 0;                 // the text that is expected next
};

} // namespace orl
