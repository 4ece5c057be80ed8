#include "tests/support/FakeClassObject.h"

#include <ostream>

namespace orl::test
{

namespace
{

bool SameName(const std::wstring& left, LPCWSTR right)
{
    return _wcsicmp(left.c_str(), right) == 0;
}

template <typename Entries>
auto FindName(Entries& entries, LPCWSTR name)
{
    auto found = entries.begin();
    while (found != entries.end() && !SameName(found->first, name))
        ++found;
    return found;
}

// Texts go through the product's own allocation, so that a test which makes allocations fail meets the service too.
HRESULT CopyValue(const VARIANT& from, VARIANT& to)
{
    if (from.vt != VT_BSTR || from.bstrVal == nullptr)
        return VariantCopy(&to, const_cast<VARIANT*>(&from));
    const BSTR copy = OrlAllocBstr(from.bstrVal, SysStringLen(from.bstrVal));
    if (copy == nullptr)
        return WBEM_E_OUT_OF_MEMORY;
    VariantClear(&to);
    to.vt = VT_BSTR;
    to.bstrVal = copy;
    return WBEM_S_NO_ERROR;
}

std::wstring ShownObject(IUnknown* object)
{
    const auto* fake = dynamic_cast<FakeClassObject*>(object);
    if (fake == nullptr)
        return L"<object>";
    std::wstring text = fake->Definition()->name + L"{";
    const wchar_t* separator = L"";
    for (const FakePut& put : fake->Puts())
    {
        text += separator + put.name + L"=" + put.value;
        separator = L", ";
    }
    return text + L"}";
}

std::wstring ShownArray(const VARIANT& value)
{
    LONG highest = -1;
    SafeArrayGetUBound(value.parray, 1, &highest);
    std::wstring text = L"{";
    for (LONG index = 0; index <= highest; ++index)
    {
        CComVariant element;
        element.vt = static_cast<VARTYPE>(value.vt & VT_TYPEMASK);
        SafeArrayGetElement(value.parray, &index, &element.llVal);
        text += (index == 0 ? L"" : L", ") + Shown(element);
    }
    return text + L"}";
}

// Of a class that declares nothing: what the value itself is.
CIMTYPE TypeOf(const VARIANT& value)
{
    return static_cast<CIMTYPE>(value.vt & VT_TYPEMASK);
}

CComPtr<IWbemClassObject> MakeSignature(const FakeClassPtr& definition)
{
    if (definition == nullptr)
        return {};
    return CComPtr<IWbemClassObject>(MakeObject<FakeClassObject>(definition, false).p);
}

} // namespace

std::wstring Shown(const VARIANT& value)
{
    if ((value.vt & VT_ARRAY) != 0)
        return ShownArray(value);
    switch (value.vt)
    {
    case VT_EMPTY:
    case VT_NULL:
        return L"NULL";
    case VT_BSTR:
        return std::wstring(value.bstrVal != nullptr ? value.bstrVal : L"", SysStringLen(value.bstrVal));
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE ? L"TRUE" : L"FALSE";
    case VT_UNKNOWN:
        return ShownObject(value.punkVal);
    case VT_UI1:
        return std::to_wstring(value.bVal);
    case VT_I2:
        return std::to_wstring(value.iVal);
    case VT_I4:
        return std::to_wstring(value.lVal);
    default:
        return L"<type " + std::to_wstring(value.vt) + L">";
    }
}

std::ostream& operator<<(std::ostream& stream, const FakePut& put)
{
    for (const wchar_t c : put.name + L"=" + put.value)
        stream << (c < 0x80 ? static_cast<char>(c) : '?');
    return stream << " (type " << put.type << ")";
}

std::wstring FakeClassObject::Value(const std::wstring& name) const
{
    const CComVariant* value = Find(name.c_str());
    return value != nullptr ? Shown(*value) : L"<none>";
}

void FakeClassObject::Preset(const std::wstring& name, const CComVariant& value)
{
    const auto found = FindName(m_values, name.c_str());
    if (found != m_values.end())
        found->second = value;
    else
        m_values.emplace_back(name, value);
}

const CIMTYPE* FakeClassObject::Declared(LPCWSTR name) const
{
    const auto found = FindName(m_definition->properties, name);
    return found != m_definition->properties.end() ? &found->second : nullptr;
}

const CComVariant* FakeClassObject::Find(LPCWSTR name) const
{
    const auto found = FindName(m_values, name);
    return found != m_values.end() ? &found->second : nullptr;
}

HRESULT FakeClassObject::Get(LPCWSTR name, LONG, VARIANT* value, CIMTYPE* type, LONG*)
{
    if (name == nullptr || value == nullptr)
        return WBEM_E_INVALID_PARAMETER;
    const auto failure = FindName(m_definition->getFails, name);
    if (failure != m_definition->getFails.end())
        return failure->second;
    CComVariant null;
    null.vt = VT_NULL;
    const CComVariant className(m_definition->name.c_str());
    const CIMTYPE* declared = Declared(name);
    const CComVariant* held = SameName(L"__CLASS", name) ? &className : Find(name);
    if (held == nullptr && declared == nullptr)
        return WBEM_E_NOT_FOUND;
    if (held == nullptr)
        held = &null;
    if (type != nullptr)
        *type = declared != nullptr ? *declared : TypeOf(*held);
    return CopyValue(*held, *value);
}

HRESULT FakeClassObject::Put(LPCWSTR name, LONG, VARIANT* value, CIMTYPE)
{
    if (name == nullptr || value == nullptr)
        return WBEM_E_INVALID_PARAMETER;
    const auto failure = FindName(m_definition->putFails, name);
    if (failure != m_definition->putFails.end())
        return failure->second;
    if (!m_definition->properties.empty() && Declared(name) == nullptr)
        return WBEM_E_NOT_FOUND;
    CComVariant copy;
    const HRESULT status = CopyValue(*value, copy);
    if (FAILED(status))
        return status;
    m_puts.push_back({name, Shown(copy), copy.vt});
    Preset(name, copy);
    return WBEM_S_NO_ERROR;
}

HRESULT FakeClassObject::SpawnInstance(LONG, IWbemClassObject** instance)
{
    if (instance == nullptr || m_isInstance)
        return WBEM_E_INVALID_OPERATION;
    const ULONG n = ++m_definition->spawned;
    const HRESULT status = m_definition->spawn ? m_definition->spawn(n) : WBEM_S_NO_ERROR;
    if (SUCCEEDED(status))
        *instance = MakeObject<FakeClassObject>(m_definition).Detach();
    return status;
}

HRESULT FakeClassObject::GetMethod(LPCWSTR name, LONG, IWbemClassObject** in, IWbemClassObject** out)
{
    if (name == nullptr || in == nullptr || out == nullptr || m_isInstance)
        return WBEM_E_INVALID_PARAMETER;
    const auto found = FindName(m_definition->methods, name);
    if (found == m_definition->methods.end())
        return WBEM_E_NOT_FOUND;
    *in = MakeSignature(found->second.first).Detach();
    *out = MakeSignature(found->second.second).Detach();
    return WBEM_S_NO_ERROR;
}

FakeClassPtr MakeFakeClass(std::wstring name, std::vector<std::pair<std::wstring, CIMTYPE>> properties)
{
    auto made = std::make_shared<FakeClass>(std::move(name));
    made->properties = std::move(properties);
    return made;
}

FakeClassPtr FakeWarningMessage()
{
    return MakeFakeClass(L"Zarn_WarningMessage",
                         {{L"Kind", CIM_UINT32}, {L"MessageID", CIM_UINT32}, {L"Message", CIM_STRING}});
}

FakeClassPtr FakeExtendedStatus()
{
    return MakeFakeClass(L"__ExtendedStatus", {{L"Description", CIM_STRING},
                                               {L"Operation", CIM_STRING},
                                               {L"ParameterInfo", CIM_STRING},
                                               {L"ProviderName", CIM_STRING},
                                               {L"StatusCode", CIM_UINT32}});
}

} // namespace orl::test
