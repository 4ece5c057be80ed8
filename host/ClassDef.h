// A class of the schema: what it declares and what it inherits, resolved once when the schema is loaded.
#pragma once

#include "host/ObjectBody.h"
#include "wbem/Mof.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

class ClassDef;
class Namespace;

// A schema that contradicts itself: where, and why.
class SchemaError : public std::exception
{
public:
    SchemaError(wbem::MofPosition where, std::wstring why) : position(where), reason(std::move(why)) {}
    const char* what() const noexcept override { return "the schema contradicts itself"; }

    wbem::MofPosition position;
    std::wstring reason;
};

// A property as one class sees it, its own or inherited.
struct PropertyDef
{
    const wbem::MofProperty* declaration = nullptr; // the nearest one: an override hides what it overrides
    const ClassDef* declaredBy = nullptr;           // the class of that declaration
    const ClassDef* origin = nullptr;               // the class that introduced the property
    bool isKey = false;

    const std::wstring& Name() const noexcept { return declaration->name; }
    wbem::CimType Type() const noexcept { return declaration->type.type; }
    bool IsArray() const noexcept { return declaration->type.isArray; }
    // As CIMTYPE, with CIM_FLAG_ARRAY.
    std::int32_t CimTypeNumber() const noexcept;
    // "uint32", "ref:Zarn_FCOEHBA", "object:Zarn_WarningMessage": the value of the qualifier CIMTYPE.
    std::wstring CimTypeText() const;
};

struct MethodDef
{
    const wbem::MofMethod* declaration = nullptr;
    const ClassDef* declaredBy = nullptr;
    const ClassDef* origin = nullptr;
    // The signature as classes named __PARAMETERS; null when there are no parameters of that direction.
    std::shared_ptr<const ClassDef> in;
    std::shared_ptr<const ClassDef> out;

    const std::wstring& Name() const noexcept { return declaration->name; }
};

// Immutable once made, and alive as long as its schema: users keep plain pointers.
class ClassDef
{
public:
    static constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

    // The superclass is null or older than this class; the reader of MOF has seen to it that no name is given twice.
    // Throws SchemaError.
    ClassDef(wbem::MofClass declaration, const ClassDef* superclass, const Namespace& nameSpace);
    ClassDef(const ClassDef&) = delete;
    ClassDef& operator=(const ClassDef&) = delete;

    const std::wstring& Name() const noexcept { return m_declaration.name; }
    const ClassDef* Superclass() const noexcept { return m_superclass; }
    const Namespace& InNamespace() const noexcept { return m_namespace; }
    const wbem::MofClass& Declaration() const noexcept { return m_declaration; }
    // The topmost superclass; the class itself when it has none.
    const ClassDef& Dynasty() const noexcept;
    bool IsSystem() const noexcept { return Name().starts_with(L"__"); }
    bool IsAssociation() const noexcept { return m_isAssociation; }
    bool IsSingleton() const noexcept { return m_isSingleton; }

    // Inherited ones first, in the superclass's order: a property has the same index in every class below.
    const std::vector<PropertyDef>& Properties() const noexcept { return m_properties; }
    // The index of a property, without case; kNotFound when the class has none of that name.
    std::size_t FindProperty(std::wstring_view name) const noexcept;
    // The same, fastest for the property that was asked for after that one before: who fills or reads objects of a
    // class names their properties in the same order each time. `last`: kNotFound for the first one.
    std::size_t FindPropertyAfter(std::size_t last, const wchar_t* name) const noexcept;
    // Indexes of the key properties, in the order of Properties.
    const std::vector<std::size_t>& Keys() const noexcept { return m_keys; }

    const std::vector<MethodDef>& Methods() const noexcept { return m_methods; }
    const MethodDef* FindMethod(std::wstring_view name) const noexcept;

    // Whether this class is that one, or below it.
    bool DerivesFrom(const ClassDef& ancestor) const noexcept;
    bool DerivesFrom(std::wstring_view ancestor) const noexcept;

    // The class as an object: its slots hold the default values.
    const Ref<ObjectBody>& Prototype() const noexcept { return m_prototype; }

    // How many characters the texts of an instance take, by those that there were: how much room is made for them at
    // once. 0 as long as nobody knows.
    std::size_t UsualTextRoom() const noexcept { return m_usualTextRoom.load(std::memory_order_relaxed); }
    void NoteTextRoom(std::size_t taken) const noexcept;

private:
    void TakeProperties();
    void TakeMethods();
    void IndexProperties();
    void FillPrototype();
    std::shared_ptr<const ClassDef> Signature(const wbem::MofMethod& method, bool isIn) const;

    wbem::MofClass m_declaration;
    const ClassDef* m_superclass;
    const Namespace& m_namespace;
    std::vector<PropertyDef> m_properties;
    std::vector<MethodDef> m_methods;
    std::vector<std::size_t> m_keys;
    std::vector<std::uint16_t> m_index; // open addressing by name; a power of two long; 0xffff: free
    // By the index of a property, plus one, the two properties that were named after it last, the later one in the
    // lower half: a property that is named twice has two. This and the next are all that changes.
    mutable std::vector<std::atomic<std::uint32_t>> m_followers;
    mutable std::atomic<std::size_t> m_usualTextRoom{0};
    bool m_isAssociation = false;
    bool m_isSingleton = false;
    Ref<ObjectBody> m_prototype;
};

// The class that a MofClass's method declares for its parameters.
inline constexpr std::wstring_view kParametersClass = L"__PARAMETERS";

} // namespace orl
