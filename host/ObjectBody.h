// What an object is made of: its class and one value for each property of the class.
#pragma once

#include "host/Ref.h"
#include "wbem/CimValue.h"

#include <cstddef>

namespace orl
{

class ClassDef;

// One allocation: the values lie behind the header, by the index of the class's property table. Bodies are shared by
// the COM objects that show them and are only written by who holds the single reference (see IsShared).
class ObjectBody
{
public:
    enum class Genus
    {
        Class,
        Instance
    };

    // All values null, of no type.
    static Ref<ObjectBody> Make(const ClassDef& ofClass, Genus genus, std::size_t count);
    // The same values, under the same or another genus.
    Ref<ObjectBody> Copy(Genus genus) const;

    const ClassDef& Class() const noexcept { return *m_class; }
    bool IsInstance() const noexcept { return m_genus == Genus::Instance; }
    Genus GenusOf() const noexcept { return m_genus; }

    std::size_t Count() const noexcept { return m_count; }
    const wbem::CimValue& operator[](std::size_t index) const noexcept { return Values()[index]; }
    wbem::CimValue& operator[](std::size_t index) noexcept { return Values()[index]; }

    // Whether somebody else may look at it; who writes then writes to a copy.
    bool IsShared() const noexcept { return m_references.load(std::memory_order_acquire) > 1; }

    void AddRef() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept;

    ObjectBody(const ObjectBody&) = delete;
    ObjectBody& operator=(const ObjectBody&) = delete;

private:
    ObjectBody(const ClassDef& ofClass, Genus genus, std::size_t count) noexcept
        : m_class(&ofClass), m_genus(genus), m_count(count)
    {
    }
    ~ObjectBody() = default;

    wbem::CimValue* Values() noexcept { return reinterpret_cast<wbem::CimValue*>(this + 1); }
    const wbem::CimValue* Values() const noexcept { return reinterpret_cast<const wbem::CimValue*>(this + 1); }

    const ClassDef* m_class;
    mutable std::atomic<std::uint32_t> m_references{0};
    Genus m_genus;
    std::size_t m_count;
};

} // namespace orl
