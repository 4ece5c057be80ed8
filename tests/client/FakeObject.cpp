// The fake service's objects and their qualifiers.
#include "tests/client/FakeWmi.h"

#include <algorithm>
#include <atomic>
#include <memory>

namespace orl::test
{
namespace
{

std::atomic<LONG> g_live{0};
std::atomic<LONG> g_most{0};

class FakeQualifiers final : public ComObject<IWbemQualifierSet>
{
public:
    explicit FakeQualifiers(std::map<std::wstring, CComVariant> values) : m_values(std::move(values)) {}

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG, VARIANT* value, LONG*) override
    {
        const auto found = m_values.find(name);
        return found == m_values.end() ? WBEM_E_NOT_FOUND : found->second.CopyTo(value);
    }
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR, VARIANT*, LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LONG, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }

private:
    std::map<std::wstring, CComVariant> m_values;
};

bool SameName(const std::wstring& left, LPCWSTR right)
{
    return _wcsicmp(left.c_str(), right) == 0;
}

HRESULT HandOut(const std::wstring& text, BSTR* out)
{
    *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return S_OK;
}

CComPtr<IWbemClassObject> Signature(const std::vector<FakeProperty>& parameters)
{
    FakeContent content;
    content.properties = parameters;
    return parameters.empty() ? CComPtr<IWbemClassObject>() : MakeFakeObject(content);
}

class FakeObject final : public ComObject<IWbemClassObject>
{
public:
    explicit FakeObject(FakeContent content) : m_content(std::move(content))
    {
        g_most = std::max(g_most.load(), ++g_live);
    }
    ~FakeObject() override { --g_live; }

    HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet** out) override
    {
        return HandOutQualifiers(m_content.qualifiers, out);
    }

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG, VARIANT* value, CIMTYPE* type, LONG*) override
    {
        if (const auto system = m_content.system.find(name); system != m_content.system.end())
        {
            Tell(type, static_cast<CIMTYPE>(CIM_STRING));
            return system->second.CopyTo(value);
        }
        const auto* property = Find(name);
        if (property == nullptr)
        {
            return WBEM_E_NOT_FOUND;
        }
        Tell(type, property->type);
        return property->value.CopyTo(value);
    }

    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) override
    {
        m_next = 0;
        return flags == WBEM_FLAG_NONSYSTEM_ONLY ? m_content.unreadable : E_INVALIDARG;
    }

    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR* name, VARIANT* value, CIMTYPE* type, LONG*) override
    {
        if (m_next == m_content.properties.size())
        {
            return WBEM_S_NO_MORE_DATA;
        }
        const auto& property = m_content.properties[m_next++];
        Tell(type, property.type);
        if (value != nullptr)
        {
            property.value.CopyTo(value);
        }
        return HandOut(property.name, name);
    }

    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR name, IWbemQualifierSet** out) override
    {
        const auto* property = Find(name);
        return property == nullptr ? WBEM_E_NOT_FOUND : HandOutQualifiers(property->qualifiers, out);
    }

    HRESULT STDMETHODCALLTYPE GetObjectText(LONG, BSTR* text) override { return HandOut(m_content.mof, text); }

    HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG) override
    {
        m_nextMethod = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE NextMethod(LONG, BSTR* name, IWbemClassObject** in, IWbemClassObject** out) override
    {
        if (m_nextMethod == m_content.methods.size())
        {
            return WBEM_S_NO_MORE_DATA;
        }
        const auto& method = m_content.methods[m_nextMethod++];
        *in = Signature(method.in).Detach();
        *out = Signature(method.out).Detach();
        return HandOut(method.name, name);
    }

    HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR name, IWbemQualifierSet** out) override
    {
        for (const auto& method : m_content.methods)
        {
            if (SameName(method.name, name))
            {
                return HandOutQualifiers(method.qualifiers, out);
            }
        }
        return WBEM_E_NOT_FOUND;
    }

    HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, LONG, VARIANT* value, CIMTYPE type) override
    {
        const auto* known = Find(name);
        if (known == nullptr || type != 0)
        {
            return WBEM_E_INVALID_PARAMETER;
        }
        m_content.properties[static_cast<size_t>(known - m_content.properties.data())].value = CComVariant(*value);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG, IWbemClassObject** out) override
    {
        *out = MakeFakeObject(m_content).Detach();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR, LONG, VARIANT*, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CompareTo(LONG, IWbemClassObject*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR, LONG, IWbemClassObject**, IWbemClassObject**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }

private:
    static void Tell(CIMTYPE* type, CIMTYPE value)
    {
        if (type != nullptr)
        {
            *type = value;
        }
    }

    static HRESULT HandOutQualifiers(const std::map<std::wstring, CComVariant>& values, IWbemQualifierSet** out)
    {
        *out = MakeObject<FakeQualifiers>(values).Detach();
        return S_OK;
    }

    const FakeProperty* Find(LPCWSTR name) const
    {
        const auto found = std::find_if(m_content.properties.begin(), m_content.properties.end(),
                                        [name](const FakeProperty& property) { return SameName(property.name, name); });
        return found == m_content.properties.end() ? nullptr : &*found;
    }

    FakeContent m_content;
    size_t m_next = 0;
    size_t m_nextMethod = 0;
};

} // namespace

LONG LiveFakeObjects()
{
    return g_live;
}

LONG MostLiveFakeObjects()
{
    return g_most;
}

void ForgetMostLiveFakeObjects()
{
    g_most = g_live.load();
}

CComPtr<IWbemClassObject> MakeFakeObject(FakeContent content)
{
    CComPtr<IWbemClassObject> object;
    object.Attach(MakeObject<FakeObject>(std::move(content)).Detach());
    return object;
}

FakeContent Instance(const std::wstring& className, const std::vector<std::pair<std::wstring, CComVariant>>& texts)
{
    FakeContent content;
    content.system = {{L"__CLASS", CComVariant(className.c_str())}, {L"__GENUS", CComVariant(WBEM_GENUS_INSTANCE)}};
    for (const auto& [name, value] : texts)
    {
        content.properties.push_back({name, value, CIM_STRING, {}});
    }
    return content;
}

FakeContent Definition(const std::wstring& className, const std::wstring& superclass)
{
    FakeContent content;
    content.system = {{L"__CLASS", CComVariant(className.c_str())}, {L"__GENUS", CComVariant(WBEM_GENUS_CLASS)}};
    if (!superclass.empty())
    {
        content.system[L"__SUPERCLASS"] = CComVariant(superclass.c_str());
    }
    return content;
}

} // namespace orl::test
