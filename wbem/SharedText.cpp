// Characters that values share.
#include "wbem/SharedText.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

namespace wbem
{

static_assert(sizeof(TextBlock) % alignof(wchar_t) == 0, "the characters lie right behind the header");

TextBlock* TextBlock::Make(std::size_t room)
{
    if (room > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("a text is too long");
    void* const memory = ::operator new(Size(room));
    return MakeIn(memory, memory, room);
}

TextBlock* TextBlock::MakeIn(void* memory, void* place, std::size_t room) noexcept
{
    return new (place) TextBlock(memory, room);
}

void TextBlock::Release() noexcept
{
    // The only one who holds it need not count: nobody else can begin to.
    if (m_references.load(std::memory_order_acquire) != 1 && m_references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    ::operator delete(m_memory);
}

const wchar_t* TextBlock::Append(std::wstring_view text) noexcept
{
    if (text.size() >= m_left)
        return nullptr;
    wchar_t* const place = reinterpret_cast<wchar_t*>(this + 1) + m_used;
    *std::copy(text.begin(), text.end(), place) = L'\0';
    m_used += text.size() + 1;
    m_left -= text.size() + 1;
    return place;
}

SharedText::SharedText(std::wstring_view text)
    : m_block(TextBlock::Make(text.size() + 1)), m_characters(m_block->Append(text)),
      m_length(static_cast<std::uint32_t>(text.size())), m_isHeld(true)
{
}

} // namespace wbem
