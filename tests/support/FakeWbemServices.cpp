#include "tests/support/FakeWbemServices.h"

namespace orl::test
{

std::vector<std::wstring> FakeWbemServices::Lookups() const
{
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_lookups;
}

HRESULT FakeWbemServices::GetObject(const BSTR path, LONG, IWbemContext*, IWbemClassObject** object, IWbemCallResult**)
{
    if (path == nullptr || object == nullptr)
        return WBEM_E_INVALID_PARAMETER;
    if (keepsLookups)
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_lookups.emplace_back(path);
    }
    const HRESULT status = before ? before(path) : WBEM_S_NO_ERROR;
    if (FAILED(status))
        return status;
    for (const FakeClassPtr& definition : m_classes)
    {
        if (_wcsicmp(definition->name.c_str(), path) != 0)
            continue;
        *object = MakeObject<FakeClassObject>(definition, false).Detach();
        return WBEM_S_NO_ERROR;
    }
    return WBEM_E_NOT_FOUND;
}

HRESULT FakeContext::SetValue(LPCWSTR name, LONG, VARIANT* value)
{
    m_values.emplace_back(name, CComVariant(*value));
    return WBEM_S_NO_ERROR;
}

HRESULT FakeContext::GetValue(LPCWSTR name, LONG, VARIANT* value)
{
    for (const auto& [known, held] : m_values)
    {
        if (_wcsicmp(known.c_str(), name) == 0)
            return held.CopyTo(value);
    }
    return WBEM_E_NOT_FOUND;
}

} // namespace orl::test
