// The whole product within this process, on agents that the test brings: service, framework and all class managers.
#pragma once

#include "com/OrlCom.h"
#include "framework/com/ManagerTable.h"
#include "framework/com/OrlInstProvider.h"
#include "host/Host.h"

#include "agent/OrlAdapterAgent.h"
#include "agent/OrlFcoeAgentIntf.h"

#include <memory>
#include <string>

namespace orl::test
{

// Thread safe once it is made. The agents outlive it.
class WholeService
{
public:
    WholeService(COrlFcoeAgentIntf& fcoe, OrlAdapterAgent& adapter);
    // Waits for all calls to end.
    ~WholeService();
    WholeService(const WholeService&) = delete;
    WholeService& operator=(const WholeService&) = delete;

    // Throws std::runtime_error when there is no connection.
    CComPtr<IWbemServices> Connect();
    Host& Own() { return *m_host; }

private:
    class AllManagers final : public ManagerSource
    {
    public:
        AllManagers(COrlFcoeAgentIntf& fcoe, OrlAdapterAgent& adapter);
        const ManagerTable* Managers(HRESULT& answer, COrlString& reason) noexcept override;

    private:
        ManagerTable m_table;
    };

    AllManagers m_managers;
    std::unique_ptr<Host> m_host;
};

// A property's text; empty for any other value, and for no object.
std::wstring TextIn(IWbemClassObject* object, const wchar_t* property);

// An instance of a class's, empty. Null when the class cannot be had.
CComPtr<IWbemClassObject> SpawnOf(IWbemServices& services, const wchar_t* className);
// In-parameters of a method, empty; null when it takes none.
CComPtr<IWbemClassObject> ParametersOf(IWbemServices& services, const wchar_t* className, const wchar_t* method);

} // namespace orl::test
