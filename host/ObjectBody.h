// What an object is made of: its class and one value for each property of the class.
#pragma once

#include "host/Ref.h"
#include "wbem/CimValue.h"

#include <cstddef>

namespace orl
{

class ClassDef;

// One allocation: behind the header the values, by the index of the class's property table, and behind them room for as
// many characters as instances of the class have had in their texts. Bodies are shared by the COM objects that show
// them and are only written by who holds the single reference (see IsShared).
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

    // Makes the value a text. The texts of a body lie behind its values, as far as there is room.
    void SetText(std::size_t index, wbem::CimType type, std::wstring_view text);
    // Lets the class know how much room the texts of this instance take. Not left to the body's end, which the class
    // need not live to see: what a thread last failed at may be the last object of all.
    void TellRoomOfTexts() const noexcept;

    // Whether somebody else may look at it; who writes then writes to a copy.
    bool IsShared() const noexcept { return m_references.load(std::memory_order_acquire) > 1; }

    void AddRef() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept;

    ObjectBody(const ObjectBody&) = delete;
    ObjectBody& operator=(const ObjectBody&) = delete;

private:
    static ObjectBody* Allocate(const ClassDef& ofClass, Genus genus, std::size_t count);

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
    wbem::TextBlock* m_texts = nullptr; // where values lodge; in this body's memory, which it frees
    std::size_t m_textRoom = 0;         // what all texts take that were set
};

} // namespace orl
