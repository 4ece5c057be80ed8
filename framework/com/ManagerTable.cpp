// ManagerTable: taking managers over and finding them.

#include "framework/com/ManagerTable.h"

#include "Common/Src/OrlDebug.h"

namespace orl
{

HRESULT ManagerTable::AddClassManager(CComBSTR className, CWomClassManagerRoot* manager)
{
    std::unique_ptr<CWomClassManagerRoot> owned(manager);
    if (owned == nullptr || className.Length() == 0)
        return WBEM_E_INVALID_PARAMETER;
    if (Find(className.m_str) != nullptr)
    {
        g_OrlDebug.Print(L"A second class manager for %s was refused", className.m_str);
        return WBEM_E_ALREADY_EXISTS;
    }
    try
    {
        m_entries.push_back({std::wstring(className.m_str), std::move(owned)});
    }
    catch (const std::bad_alloc&)
    {
        return WBEM_E_OUT_OF_MEMORY;
    }
    return WBEM_S_NO_ERROR;
}

CWomClassManagerRoot* ManagerTable::Find(std::wstring_view className) const
{
    for (const Entry& entry : m_entries)
    {
        if (entry.className == className)
            return entry.manager.get();
    }
    return nullptr;
}

} // namespace orl
