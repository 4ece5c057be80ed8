// IWbemClassObject: a class or an instance as clients and providers hold it.
#pragma once

#include "com/OrlCom.h"
#include "host/ClassDef.h"
#include "host/ObjectBody.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

class Namespace;

// Which properties of a class an object shows: the SELECT list of a query.
struct Projection
{
    std::vector<bool> shows; // by the index of the class's property table; beyond its end: not shown
    std::size_t count = 0;

    bool Shows(std::size_t index) const noexcept { return index < shows.size() && shows[index]; }
};

// A view of a body. Several views may share one body, in several threads; a view that is written to takes a copy of its
// own first, so nobody sees another's changes. One view belongs to one thread at a time.
//
// Failures leave an __ExtendedStatus in the thread's error object. Objects of a class are read-only apart from their
// default values, which a client may set in its own copy (as script clients do with a method's parameters); the schema
// itself does not change.
class ClassObject : public ComObject<IWbemClassObject>
{
public:
    explicit ClassObject(Ref<ObjectBody> body, std::shared_ptr<const Projection> projection = nullptr)
        : m_body(std::move(body)), m_projection(std::move(projection))
    {
    }

    // The view behind an interface pointer; null when the object is none of this library's.
    static CComPtr<ClassObject> From(IUnknown* object) noexcept;

    // Embedded objects, in values. Throws CallFailure when the class is not in the namespace.
    static CComPtr<ClassObject> FromEmbedded(const wbem::CimObject& object, const Namespace& nameSpace);
    static std::optional<wbem::CimValue> ToEmbedded(IUnknown* object, std::wstring& reason);

    const Ref<ObjectBody>& Body() const noexcept { return m_body; }
    const ClassDef& Class() const noexcept { return m_body->Class(); }
    const std::shared_ptr<const Projection>& Shown() const noexcept { return m_projection; }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;

    // IWbemClassObject
    HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet** set) override;
    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE* type, LONG* flavor) override;
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE type) override;
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR name) override;
    HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR qualifier, LONG flags, VARIANT* qualifierValue,
                                       SAFEARRAY** names) override;
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) override;
    HRESULT STDMETHODCALLTYPE Next(LONG flags, BSTR* name, VARIANT* value, CIMTYPE* type, LONG* flavor) override;
    HRESULT STDMETHODCALLTYPE EndEnumeration() override;
    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR property, IWbemQualifierSet** set) override;
    HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject** copy) override;
    HRESULT STDMETHODCALLTYPE GetObjectText(LONG flags, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG flags, IWbemClassObject** derived) override;
    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG flags, IWbemClassObject** instance) override;
    HRESULT STDMETHODCALLTYPE CompareTo(LONG flags, IWbemClassObject* other) override;
    HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR name, BSTR* className) override;
    HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR ancestor) override;
    HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR name, LONG flags, IWbemClassObject** in,
                                        IWbemClassObject** out) override;
    HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR name, LONG flags, IWbemClassObject* in, IWbemClassObject* out) override;
    HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR name) override;
    HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG flags) override;
    HRESULT STDMETHODCALLTYPE NextMethod(LONG flags, BSTR* name, IWbemClassObject** in,
                                         IWbemClassObject** out) override;
    HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override;
    HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR method, IWbemQualifierSet** set) override;
    HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR method, BSTR* className) override;

private:
    static constexpr std::size_t kNotEnumerating = static_cast<std::size_t>(-1);

    bool Shows(std::size_t index) const noexcept { return !m_projection || m_projection->Shows(index); }
    // Of a property that the object shows. Throws CallFailure WBEM_E_NOT_FOUND.
    std::size_t IndexOf(LPCWSTR name) const;
    const MethodDef& MethodOf(LPCWSTR name) const;
    bool IsAdmitted(std::size_t index, LONG flags) const noexcept;
    // The body for writing, this view's alone.
    ObjectBody& Writable();
    // The values that need no look at their kind, and are most of all: a text for a text or a reference, a number for a
    // uint32. False for all others.
    bool SetAsItIs(const VARIANT& value, std::size_t index);
    void Answer(std::size_t index, VARIANT* value, CIMTYPE* type, LONG* flavor) const;

    Ref<ObjectBody> m_body;
    std::shared_ptr<const Projection> m_projection;
    mutable std::atomic<std::size_t> m_lastNamed = ClassDef::kNotFound; // a hint: several threads may read an object
    std::size_t m_next = kNotEnumerating; // of an enumeration: properties, or system properties
    LONG m_enumerated = 0;                // its flags
    std::size_t m_nextMethod = kNotEnumerating;
    LONG m_enumeratedMethods = 0;
};

} // namespace orl
