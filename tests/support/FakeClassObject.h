// FakeClassObject: a class or an instance that remembers what was put into it, and in which order.
#pragma once

#include "com/OrlCom.h"

#include <atomic>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orl::test
{

struct FakeClass;
using FakeClassPtr = std::shared_ptr<FakeClass>;

// What a class declares, and how its objects fail. To be written before the first object is made.
struct FakeClass
{
    explicit FakeClass(std::wstring className) : name(std::move(className)) {}

    std::wstring name;
    // Names and CIM types. A class that declares none takes any property, of the type that comes.
    std::vector<std::pair<std::wstring, CIMTYPE>> properties;
    // In- and out-parameters, either may be null.
    std::map<std::wstring, std::pair<FakeClassPtr, FakeClassPtr>> methods;

    // What Put and Get answer for a property instead of doing it.
    std::map<std::wstring, HRESULT> putFails;
    std::map<std::wstring, HRESULT> getFails;
    // What the n-th SpawnInstance answers, from 1.
    std::function<HRESULT(ULONG n)> spawn;

    std::atomic<ULONG> spawned{0};
};

// One Put: numbers in decimal, TRUE or FALSE, NULL, texts as they are, lists and objects as {a, b} and Class{A=1}.
struct FakePut
{
    std::wstring name;
    std::wstring value;
    VARTYPE type = VT_BSTR;

    bool operator==(const FakePut&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const FakePut& put);

std::wstring Shown(const VARIANT& value);

// Names compare without case. What no test needs answers E_NOTIMPL.
class FakeClassObject final : public ComObject<IWbemClassObject>
{
public:
    explicit FakeClassObject(FakeClassPtr definition, bool isInstance = true)
        : m_definition(std::move(definition)), m_isInstance(isInstance)
    {
    }

    const FakeClassPtr& Definition() const { return m_definition; }
    const std::vector<FakePut>& Puts() const { return m_puts; }
    // The value as the last Put left it, "<none>" when there was none.
    std::wstring Value(const std::wstring& name) const;
    // For a test's own hands: sets a value without noting it.
    void Preset(const std::wstring& name, const CComVariant& value);

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE* type, LONG* flavor) override;
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE type) override;
    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG flags, IWbemClassObject** instance) override;
    HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR name, LONG flags, IWbemClassObject** in,
                                        IWbemClassObject** out) override;

    HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR, LONG, VARIANT*, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*, CIMTYPE*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR, IWbemQualifierSet**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetObjectText(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CompareTo(LONG, IWbemClassObject*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NextMethod(LONG, BSTR*, IWbemClassObject**, IWbemClassObject**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR, IWbemQualifierSet**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }

private:
    const CIMTYPE* Declared(LPCWSTR name) const;
    const CComVariant* Find(LPCWSTR name) const;

    FakeClassPtr m_definition;
    bool m_isInstance;
    std::vector<FakePut> m_puts;
    std::vector<std::pair<std::wstring, CComVariant>> m_values;
};

// A class for a test, with its declarations in one line.
FakeClassPtr MakeFakeClass(std::wstring name, std::vector<std::pair<std::wstring, CIMTYPE>> properties = {});

// Zarn_WarningMessage as the schema declares it.
FakeClassPtr FakeWarningMessage();
// __ExtendedStatus as the service declares it.
FakeClassPtr FakeExtendedStatus();

} // namespace orl::test
