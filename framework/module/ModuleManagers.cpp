// ModuleManagers: loading once.

#include "framework/module/ModuleManagers.h"

#include "framework/com/Implementors.h"

#include <new>

namespace orl
{

const ManagerTable* ModuleManagers::Managers(HRESULT& status, COrlString& reason) noexcept
{
    const std::lock_guard<std::mutex> guard(m_lock);
    if (!m_loaded)
    {
        m_table.reset(new (std::nothrow) ManagerTable);
        if (m_table == nullptr)
        {
            status = E_OUTOFMEMORY;
            return nullptr;
        }
        m_loaded = true;
        m_status = LoadImplementors(*m_table, m_reason);
        ReleaseManagersAtUnload();
    }
    status = m_status;
    try
    {
        reason = m_reason;
    }
    catch (...)
    {
        reason.clear();
    }
    return SUCCEEDED(m_status) ? m_table.get() : nullptr;
}

void ModuleManagers::Release() noexcept
{
    const std::lock_guard<std::mutex> guard(m_lock);
    m_table.reset();
    m_status = WBEM_E_SHUTTING_DOWN;
    COrlString().swap(m_reason);
}

// Never destroyed itself: the order of the modules' ends is not ours to choose, see ReleaseManagersAtUnload. It lies in
// the library's own memory, so that a process may load and unload the library for ever.
ModuleManagers& TheModuleManagers() noexcept
{
    alignas(ModuleManagers) static unsigned char place[sizeof(ModuleManagers)];
    static ModuleManagers& managers = *new (place) ModuleManagers;
    return managers;
}

} // namespace orl
