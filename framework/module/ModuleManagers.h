// ModuleManagers: the one table of managers of the loaded framework.
#pragma once

#include "framework/com/OrlInstProvider.h"

namespace orl
{

// Loads the implementors at the first call and never again; what that came to is every later call's answer too. The
// managers live until the library is unloaded.
class ModuleManagers final : public ManagerSource
{
public:
    const ManagerTable* Managers(HRESULT& status, COrlString& reason) noexcept override;
    // Destroys the managers; the implementors' libraries stay loaded.
    void Release() noexcept;

private:
    std::mutex m_lock;
    std::unique_ptr<ManagerTable> m_table;
    bool m_loaded = false;
    HRESULT m_status = WBEM_S_NO_ERROR;
    COrlString m_reason;
};

ModuleManagers& TheModuleManagers() noexcept;

// Sees to it that Release is called while the implementors can still run: their managers trace when they are destroyed,
// and at the end of a process an implementor's own log goes before the framework's objects do. Called once, after the
// implementors are loaded.
void ReleaseManagersAtUnload() noexcept;

} // namespace orl
