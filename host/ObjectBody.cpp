// What an object is made of: memory in one piece.
#include "host/ObjectBody.h"

#include <memory>
#include <new>

namespace orl
{

static_assert(alignof(wbem::CimValue) <= alignof(ObjectBody) && sizeof(ObjectBody) % alignof(wbem::CimValue) == 0,
              "the values lie right behind the header");

Ref<ObjectBody> ObjectBody::Make(const ClassDef& ofClass, Genus genus, std::size_t count)
{
    void* memory = ::operator new(sizeof(ObjectBody) + count * sizeof(wbem::CimValue));
    auto* body = new (memory) ObjectBody(ofClass, genus, count);
    std::uninitialized_default_construct_n(body->Values(), count);
    return Ref<ObjectBody>(body);
}

Ref<ObjectBody> ObjectBody::Copy(Genus genus) const
{
    void* memory = ::operator new(sizeof(ObjectBody) + m_count * sizeof(wbem::CimValue));
    auto* body = new (memory) ObjectBody(*m_class, genus, m_count);
    std::uninitialized_copy_n(Values(), m_count, body->Values());
    return Ref<ObjectBody>(body);
}

void ObjectBody::Release() const noexcept
{
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    auto* self = const_cast<ObjectBody*>(this);
    std::destroy_n(self->Values(), m_count);
    self->~ObjectBody();
    ::operator delete(self);
}

} // namespace orl
