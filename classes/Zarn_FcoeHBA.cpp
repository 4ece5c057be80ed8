// CZarn_FcoeHBA: the HBA id, and the methods, each one call of the agent.

#include "classes/Zarn_FcoeHBA.h"

namespace orl
{

COrlString HbaIdOf(const ORL_FCOE_HBA& hba)
{
    const std::size_t last = hba.instancePath.rfind(L'\\');
    return last == std::wstring::npos ? hba.instancePath : COrlString(hba.instancePath.c_str() + last + 1);
}

} // namespace orl

namespace
{

// Every failure to set an out-parameter.
constexpr ULONG OutParameterCode = 0x80040901;

constexpr const wchar_t* PortName = L"WorldWidePortName";

// The in-parameter; one that is absent or null reads as empty, which is for the agent to refuse.
COrlString PortNameFrom(const CWomClassObject& in)
{
    CComBSTR text;
    in.GetProperty(PortName, text);
    return text.m_str == nullptr ? COrlString() : COrlString(static_cast<const wchar_t*>(text.m_str));
}

void RequireSet(HRESULT status, const CWomContext& context, const wchar_t* method, int line)
{
    if (FAILED(status))
        throw CWomProviderException(context, OutParameterCode, CComBSTR(method), status, L"Src\\Zarn_FCOEHBA", line);
}

// The agent's results never become the method's: a client reads them in the warnings.
HRESULT ReportDone(CWomClassObject& out)
{
    return out.SetPropertyUint32(L"ReturnValue", 0);
}

} // namespace

const CZarn_FcoeHBA::Method CZarn_FcoeHBA::Methods[] = {
    {L"CreateVirtualPort", &CZarn_FcoeHBA::CreateVirtualPort},
    {L"DeleteVirtualPort", &CZarn_FcoeHBA::DeleteVirtualPort},
    {L"GenerateVirtualPortWWPN", &CZarn_FcoeHBA::GenerateVirtualPortWWPN},
    {L"RefreshTargets", &CZarn_FcoeHBA::RefreshTargets},
    {L"Uninstall", &CZarn_FcoeHBA::Uninstall},
};

HRESULT CZarn_FcoeHBA::ExecMethodAsync(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName,
                                       CWomContext& context, CWomClassObject& inParameters,
                                       CWomClassObject& outParameters, CComPtr<IWbemObjectSink>)
{
    g_OrlDebug.Print(L"CZarn_FcoeHBA::ExecMethodAsync");
    for (const Method& method : Methods)
    {
        if (COrlString(methodName).CompareI(method.name))
        {
            Call call{path, context, inParameters, outParameters};
            return (this->*method.run)(call);
        }
    }
    return static_cast<HRESULT>(WBEM_E_METHOD_NOT_IMPLEMENTED);
}

HRESULT CZarn_FcoeHBA::CreateVirtualPort(Call& call)
{
    COrlTraceScope scope(L"CZarn_FcoeHBA::CreateVirtualPort");
    CResult status = AgentStatus(call.context);
    const COrlString deviceId = GetDeviceIdFromPath(call.path, call.context);
    COrlString portName = PortNameFrom(call.in);
    std::vector<WarningMessageObj> warnings;
    Agent()->CreateVirtualPort(deviceId, portName, warnings, status);

    CComBSTR portPath;
    MakePortPathFromWWN(call.context, deviceId, portName, portPath.m_str);
    call.out.SetProperty(L"PortPath", portPath);
    RequireSet(call.out.SetProperty(L"WarningMessages", warnings), call.context, L"CZarn_FcoeHBA::CreateVirtualPort()",
               304);
    return ReportDone(call.out);
}

HRESULT CZarn_FcoeHBA::DeleteVirtualPort(Call& call)
{
    COrlTraceScope scope(L"CZarn_FcoeHBA::DeleteVirtualPort");
    CResult status = AgentStatus(call.context);
    const COrlString deviceId = GetDeviceIdFromPath(call.path, call.context);
    const COrlString portName = PortNameFrom(call.in);
    std::vector<WarningMessageObj> warnings;
    Agent()->DeleteVirtualPort(deviceId, portName, warnings, status);
    RequireSet(call.out.SetProperty(L"WarningMessages", warnings), call.context, L"CZarn_FcoeHBA::DeleteVirtualPort()",
               368);
    return ReportDone(call.out);
}

HRESULT CZarn_FcoeHBA::GenerateVirtualPortWWPN(Call& call)
{
    COrlTraceScope scope(L"CZarn_FcoeHBA::GenerateVirtualPortWWPN");
    // Tools know the failures of this method under the name of another.
    constexpr const wchar_t* reportedAs = L"CZarn_FcoeHBA::DeleteVirtualPort()";
    CResult status = AgentStatus(call.context);
    const COrlString deviceId = GetDeviceIdFromPath(call.path, call.context);
    COrlString portName;
    std::vector<WarningMessageObj> warnings;
    Agent()->GenerateVirtualPortWWPN(deviceId, portName, warnings, status);
    RequireSet(call.out.SetProperty(L"WarningMessages", warnings), call.context, reportedAs, 428);
    RequireSet(call.out.SetProperty(PortName, portName), call.context, reportedAs, 441);
    return ReportDone(call.out);
}

HRESULT CZarn_FcoeHBA::RefreshTargets(Call& call)
{
    COrlTraceScope scope(L"CZarn_FcoeHBA::RefreshTargets");
    CResult status = AgentStatus(call.context);
    const COrlString deviceId = GetDeviceIdFromPath(call.path, call.context);
    Agent()->RefreshTargets(deviceId, status);
    return ReportDone(call.out);
}

HRESULT CZarn_FcoeHBA::Uninstall(Call& call)
{
    COrlTraceScope scope(L"CZarn_FcoeHBA::Uninstall");
    CResult status = AgentStatus(call.context);
    Agent()->Uninstall(status);
    return ReportDone(call.out);
}
