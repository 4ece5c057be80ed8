// What an object is made of: memory in one piece.
#include "host/ObjectBody.h"

#include "host/ClassDef.h"

#include <memory>
#include <new>

namespace orl
{

static_assert(alignof(wbem::CimValue) <= alignof(ObjectBody) && sizeof(ObjectBody) % alignof(wbem::CimValue) == 0 &&
                  alignof(wbem::TextBlock) <= alignof(wbem::CimValue),
              "the values lie right behind the header, and the texts behind them");

ObjectBody* ObjectBody::Allocate(const ClassDef& ofClass, Genus genus, std::size_t count)
{
    const std::size_t room = genus == Genus::Instance ? ofClass.UsualTextRoom() : 0;
    const std::size_t size = sizeof(ObjectBody) + count * sizeof(wbem::CimValue);
    char* const memory = static_cast<char*>(::operator new(size + (room ? wbem::TextBlock::Size(room) : 0)));
    auto* body = new (memory) ObjectBody(ofClass, genus, count);
    if (room)
        body->m_texts = wbem::TextBlock::MakeIn(memory, memory + size, room);
    return body;
}

Ref<ObjectBody> ObjectBody::Make(const ClassDef& ofClass, Genus genus, std::size_t count)
{
    ObjectBody* body = Allocate(ofClass, genus, count);
    std::uninitialized_default_construct_n(body->Values(), count);
    return Ref<ObjectBody>(body);
}

Ref<ObjectBody> ObjectBody::Copy(Genus genus) const
{
    ObjectBody* body = Allocate(*m_class, genus, m_count);
    std::uninitialized_copy_n(Values(), m_count, body->Values());
    return Ref<ObjectBody>(body);
}

void ObjectBody::SetText(std::size_t index, wbem::CimType type, std::wstring_view text)
{
    wbem::CimValue& value = Values()[index];
    m_textRoom += text.size() + 1;
    if (!m_texts || !value.LodgeText(type, *m_texts, text))
        value = wbem::CimValue::Text(type, text);
}

void ObjectBody::TellRoomOfTexts() const noexcept
{
    if (m_textRoom)
        m_class->NoteTextRoom(m_textRoom);
}

void ObjectBody::Release() const noexcept
{
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    auto* self = const_cast<ObjectBody*>(this);
    std::destroy_n(self->Values(), m_count);
    wbem::TextBlock* const texts = m_texts;
    self->~ObjectBody();
    // Copies of the values may hold the texts, and with them the memory.
    if (texts)
        texts->Release();
    else
        ::operator delete(self);
}

} // namespace orl
