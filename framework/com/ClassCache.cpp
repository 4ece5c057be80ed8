// ClassCache: looking definitions up and keeping them.

#include "framework/com/ClassCache.h"

namespace orl
{

HRESULT ClassCache::LoadClass(const CComBSTR& className, IWbemContext* clientContext,
                              CComPtr<IWbemClassObject>& definition)
{
    definition.Release();
    const std::wstring_view name =
        className.m_str != nullptr ? std::wstring_view(className.m_str, className.Length()) : std::wstring_view();
    if (Find(name, definition))
        return WBEM_S_NO_ERROR;
    // The service may call back into this module, so no lock is held meanwhile.
    const HRESULT status = m_services->GetObject(className, 0, clientContext, &definition, nullptr);
    if (FAILED(status))
        return status;
    if (definition == nullptr)
        return WBEM_E_FAILED;
    Remember(name, definition);
    return status;
}

bool ClassCache::Find(std::wstring_view name, CComPtr<IWbemClassObject>& definition)
{
    const std::lock_guard<std::mutex> guard(m_lock);
    const auto found = m_definitions.find(name);
    if (found == m_definitions.end())
        return false;
    definition = found->second;
    return true;
}

void ClassCache::Remember(std::wstring_view name, const CComPtr<IWbemClassObject>& definition)
{
    const std::lock_guard<std::mutex> guard(m_lock);
    if (m_definitions.size() >= Capacity)
        m_definitions.clear();
    m_definitions.insert_or_assign(std::wstring(name), definition);
}

} // namespace orl
