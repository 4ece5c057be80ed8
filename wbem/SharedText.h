// Characters that values share: one allocation holds those of one text, or those of many texts of one object.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace wbem
{

// Room for characters, counted by those who hold it; freed by the last Release. Characters that are in it do not change
// and may be read from several threads; one thread at a time may append.
class TextBlock
{
public:
    // What a block with room for so many characters takes, zeros at the ends of texts included.
    static constexpr std::size_t Size(std::size_t room) noexcept { return sizeof(TextBlock) + room * sizeof(wchar_t); }
    // A block of its own. Its one reference is the caller's. Throws std::length_error for a room of 2^32 or more.
    static TextBlock* Make(std::size_t room);
    // A block at a place of Size(room) bytes, aligned as this is, in memory from ::operator new that has other things
    // too: the last Release frees all of it.
    static TextBlock* MakeIn(void* memory, void* place, std::size_t room) noexcept;
    TextBlock(const TextBlock&) = delete;
    TextBlock& operator=(const TextBlock&) = delete;

    void AddRef() noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept;

    // The text's place in the block, with a zero behind it; null when there is no room left for it.
    const wchar_t* Append(std::wstring_view text) noexcept;

private:
    TextBlock(void* memory, std::size_t room) noexcept : m_memory(memory), m_left(room) {}
    ~TextBlock() = default; // not called: only memory is freed

    void* m_memory;
    std::size_t m_left;     // room that is left, at the end
    std::size_t m_used = 0; // the characters before it, which lie behind this header
    std::atomic<std::uint32_t> m_references{1};
};

// A text that copies share. Mostly it holds its block. A lodger does not: it lies in a block that somebody else holds
// for longer than the lodger lives, which saves the counting. What is copied or moved from a lodger holds the block.
class SharedText
{
public:
    // A text in a block of its own. Throws std::length_error for one of 2^32 characters or more.
    explicit SharedText(std::wstring_view text);
    // A lodger: `characters` are what the block's Append answered, of a text that is no longer than a block can be.
    SharedText(TextBlock& block, const wchar_t* characters, std::size_t length) noexcept
        : m_block(&block), m_characters(characters), m_length(static_cast<std::uint32_t>(length))
    {
    }
    SharedText(const SharedText& other) noexcept
        : m_block(other.m_block), m_characters(other.m_characters), m_length(other.m_length), m_isHeld(Hold(m_block))
    {
    }
    SharedText(SharedText&& other) noexcept
        : m_block(other.m_block), m_characters(other.m_characters), m_length(other.m_length),
          m_isHeld(other.m_isHeld || Hold(m_block))
    {
        other.m_isHeld = false;
        other.Clear();
    }
    SharedText& operator=(SharedText other) noexcept
    {
        std::swap(m_block, other.m_block);
        std::swap(m_characters, other.m_characters);
        std::swap(m_length, other.m_length);
        std::swap(m_isHeld, other.m_isHeld);
        return *this;
    }
    ~SharedText()
    {
        if (m_isHeld)
            m_block->Release();
    }

    // A zero follows.
    std::wstring_view View() const noexcept { return {m_characters, m_length}; }

private:
    static bool Hold(TextBlock* block) noexcept
    {
        if (block)
            block->AddRef();
        return block != nullptr;
    }
    void Clear() noexcept
    {
        m_block = nullptr;
        m_characters = L"";
        m_length = 0;
    }

    TextBlock* m_block; // null: the empty text that is left behind by a move
    const wchar_t* m_characters;
    std::uint32_t m_length;
    bool m_isHeld = false;
};

} // namespace wbem
