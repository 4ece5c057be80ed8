// ModuleManagers: loading once.

#include "framework/module/ModuleManagers.h"

#include "framework/com/Implementors.h"

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
}

// Never destroyed itself: the order of the modules' ends is not ours to choose, see ReleaseManagersAtUnload.
ModuleManagers& TheModuleManagers() noexcept
{
    // Without memory for these few words at its first request the process has no use left.
    static ModuleManagers& managers = *new ModuleManagers; // NOLINT(bugprone-unhandled-exception-at-new)
    return managers;
}

} // namespace orl
