// The whole product within this process.
#include "tests/whole/WholeService.h"

#include "host/Locator.h"
#include "provider/RegisterCimImplementors.h"

#include <stdexcept>

namespace orl::test
{

WholeService::AllManagers::AllManagers(COrlFcoeAgentIntf& fcoe, OrlAdapterAgent& adapter)
{
    AddClassManagers(m_table, &fcoe, &adapter);
}

const ManagerTable* WholeService::AllManagers::Managers(HRESULT& answer, COrlString&) noexcept
{
    answer = WBEM_S_NO_ERROR;
    return &m_table;
}

WholeService::WholeService(COrlFcoeAgentIntf& fcoe, OrlAdapterAgent& adapter)
    : m_managers(fcoe, adapter),
      m_host(std::make_unique<Host>([] { return Repository::FromFolder(ORL_SCHEMA); },
                                    [this](const std::wstring&, IUnknown** provider) -> HRESULT
                                    {
                                        const auto made = MakeObject<OrlInstProvider>(m_managers);
                                        return made->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(provider));
                                    }))
{
}

WholeService::~WholeService()
{
    m_host->Workers().Stop();
}

CComPtr<IWbemServices> WholeService::Connect()
{
    CComPtr<IWbemServices> services;
    const HRESULT code = MakeObject<Locator>(*m_host)->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr,
                                                                     nullptr, 0, nullptr, nullptr, &services);
    if (FAILED(code))
        throw std::runtime_error("there is no connection to the service");
    return services;
}

std::wstring TextIn(IWbemClassObject* object, const wchar_t* property)
{
    CComVariant value;
    if (object == nullptr || FAILED(object->Get(property, 0, &value, nullptr, nullptr)) || value.vt != VT_BSTR)
        return {};
    return {value.bstrVal, SysStringLen(value.bstrVal)};
}

CComPtr<IWbemClassObject> SpawnOf(IWbemServices& services, const wchar_t* className)
{
    CComPtr<IWbemClassObject> definition;
    CComPtr<IWbemClassObject> instance;
    if (SUCCEEDED(services.GetObject(CComBSTR(className), 0, nullptr, &definition, nullptr)))
        definition->SpawnInstance(0, &instance);
    return instance;
}

CComPtr<IWbemClassObject> ParametersOf(IWbemServices& services, const wchar_t* className, const wchar_t* method)
{
    CComPtr<IWbemClassObject> definition;
    CComPtr<IWbemClassObject> signature;
    CComPtr<IWbemClassObject> parameters;
    if (SUCCEEDED(services.GetObject(CComBSTR(className), 0, nullptr, &definition, nullptr)) &&
        SUCCEEDED(definition->GetMethod(method, 0, &signature, nullptr)) && signature)
        signature->SpawnInstance(0, &parameters);
    return parameters;
}

} // namespace orl::test
