// Many texts, each once.
#include "host/KeyTextSet.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <stdexcept>

namespace orl
{
namespace
{

constexpr std::size_t BlockCharacters = 16384;
constexpr std::size_t FirstSlots = 16;

std::uint32_t HashOf(std::wstring_view text)
{
    const std::size_t hash = std::hash<std::wstring_view>()(text);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

} // namespace

bool KeyTextSet::Insert(std::wstring_view text)
{
    if (m_slots.size() < 2 * (m_texts.size() + 1))
        Grow();
    const std::uint32_t hash = HashOf(text);
    Slot& slot = SlotFor(text, hash);
    if (slot.number != 0)
        return false;
    if (m_texts.size() >= std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("more texts than a set can number");
    m_texts.push_back(Keep(text));
    slot = {hash, static_cast<std::uint32_t>(m_texts.size())};
    return true;
}

bool KeyTextSet::Contains(std::wstring_view text)
{
    if (m_texts.empty())
        return false;
    if (m_next == m_texts.size())
        m_next = 0;
    if (m_texts[m_next] != text)
    {
        const Slot& slot = SlotFor(text, HashOf(text));
        if (slot.number == 0)
            return false;
        m_next = slot.number - 1;
    }
    ++m_next;
    return true;
}

KeyTextSet::Slot& KeyTextSet::SlotFor(std::wstring_view text, std::uint32_t hash)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t place = hash & mask;
    while (m_slots[place].number != 0 && (m_slots[place].hash != hash || m_texts[m_slots[place].number - 1] != text))
        place = (place + 1) & mask;
    return m_slots[place];
}

void KeyTextSet::Grow()
{
    std::vector<Slot> old(std::max(FirstSlots, 2 * m_slots.size()));
    old.swap(m_slots);
    const std::size_t mask = m_slots.size() - 1;
    for (const Slot& slot : old)
    {
        if (slot.number == 0)
            continue;
        std::size_t place = slot.hash & mask;
        while (m_slots[place].number != 0)
            place = (place + 1) & mask;
        m_slots[place] = slot;
    }
}

std::wstring_view KeyTextSet::Keep(std::wstring_view text)
{
    if (text.size() > m_free || m_blocks.empty())
    {
        const std::size_t characters = std::max(BlockCharacters, text.size());
        m_blocks.push_back(std::make_unique<wchar_t[]>(characters));
        m_blockSize = m_free = characters;
    }
    wchar_t* const place = m_blocks.back().get() + (m_blockSize - m_free);
    std::copy(text.begin(), text.end(), place);
    m_free -= text.size();
    return {place, text.size()};
}

} // namespace orl
