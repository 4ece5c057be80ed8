// Layout: where the fields of a record lie that is shared with modules built apart.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace orl::test
{

// Fields as they lie in memory, checked from front to back: each at the first place behind the one before that its
// alignment allows.
class Layout
{
public:
    Layout(const void* object, std::size_t head) : m_object(static_cast<const char*>(object)), m_end(head) {}

    template <typename Type, typename Field>
    Layout& Next(const Field& field, const char* name)
    {
        static_assert(std::is_same_v<Type, Field>);
        const std::size_t place = (m_end + alignof(Field) - 1) / alignof(Field) * alignof(Field);
        EXPECT_EQ(static_cast<std::size_t>(reinterpret_cast<const char*>(&field) - m_object), place) << name;
        m_end = place + sizeof(Field);
        return *this;
    }
    std::size_t End() const { return m_end; }

private:
    const char* m_object;
    std::size_t m_end;
};

} // namespace orl::test
