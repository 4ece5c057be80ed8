// FcoeAgent: where a back end's exceptions end.

#include "agentlibs/fcoelink/FcoeAgent.h"

#include "agentlibs/AgentCall.h"
#include "Common/Src/OrlDebug.h"

#include <new>

namespace orl
{

namespace
{

bool TellsFailure(const std::vector<WarningMessageObj>& warnings)
{
    return !warnings.empty() && warnings.back().ulKind == WarningMessageObj::KindError;
}

// Runs one operation; see CallBackend. Without its warning an action that failed would read as one that was done: when
// there was no memory for that, std::bad_alloc tells instead.
template <typename Call>
bool Run(const wchar_t* operation, CResult& status, std::vector<WarningMessageObj>* warnings, Call&& call)
{
    bool done = false;
    const COrlTraceScope scope(operation, &done);
    const ULONG code = CallBackend({L"Src\\FcoeAgent", operation}, warnings, [&] { done = call(); });
    if (code != 0)
        status.ulErrCode = code;
    if (code != 0 && warnings != nullptr && !TellsFailure(*warnings))
        throw std::bad_alloc();
    return done;
}

} // namespace

bool FcoeAgent::EnumerateHBAs(const COrlString& deviceId, std::vector<ORL_FCOE_HBA>& hbas, CResult& status)
{
    return Run(L"FcoeAgent::EnumerateHBAs", status, nullptr,
               [&] { return m_backend->EnumerateHBAs(deviceId, hbas, status); });
}

bool FcoeAgent::EnumerateFabrics(const COrlString& deviceId, std::vector<ORL_FCOE_FABRIC>& fabrics, CResult& status)
{
    return Run(L"FcoeAgent::EnumerateFabrics", status, nullptr,
               [&] { return m_backend->EnumerateFabrics(deviceId, fabrics, status); });
}

bool FcoeAgent::EnumeratePorts(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& ports, CResult& status)
{
    return Run(L"FcoeAgent::EnumeratePorts", status, nullptr,
               [&] { return m_backend->EnumeratePorts(deviceId, ports, status); });
}

bool FcoeAgent::EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets, CResult& status)
{
    return Run(L"FcoeAgent::EnumerateTargets", status, nullptr,
               [&] { return m_backend->EnumerateTargets(deviceId, targets, status); });
}

bool FcoeAgent::EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult& status)
{
    return Run(L"FcoeAgent::EnumerateVLANs", status, nullptr,
               [&] { return m_backend->EnumerateVLANs(deviceId, vlans, status); });
}

bool FcoeAgent::EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult& status)
{
    return Run(L"FcoeAgent::EnumerateLUNs", status, nullptr,
               [&] { return m_backend->EnumerateLUNs(deviceId, luns, status); });
}

bool FcoeAgent::EnumerateStatistics(const COrlString& deviceId, std::vector<ORL_FCOE_STATISTIC>& statistics,
                                    CResult& status)
{
    return Run(L"FcoeAgent::EnumerateStatistics", status, nullptr,
               [&] { return m_backend->EnumerateStatistics(deviceId, statistics, status); });
}

bool FcoeAgent::Uninstall(CResult& status)
{
    return Run(L"FcoeAgent::Uninstall", status, nullptr, [&] { return m_backend->Uninstall(status); });
}

bool FcoeAgent::CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                                  std::vector<WarningMessageObj>& warnings, CResult& status)
{
    return Run(L"FcoeAgent::CreateVirtualPort", status, &warnings,
               [&] { return m_backend->CreateVirtualPort(deviceId, worldWidePortName, warnings, status); });
}

bool FcoeAgent::DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                                  std::vector<WarningMessageObj>& warnings, CResult& status)
{
    return Run(L"FcoeAgent::DeleteVirtualPort", status, &warnings,
               [&] { return m_backend->DeleteVirtualPort(deviceId, worldWidePortName, warnings, status); });
}

bool FcoeAgent::GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                        std::vector<WarningMessageObj>& warnings, CResult& status)
{
    return Run(L"FcoeAgent::GenerateVirtualPortWWPN", status, &warnings,
               [&] { return m_backend->GenerateVirtualPortWWPN(deviceId, worldWidePortName, warnings, status); });
}

bool FcoeAgent::RefreshTargets(const COrlString& deviceId, CResult& status)
{
    return Run(L"FcoeAgent::RefreshTargets", status, nullptr,
               [&] { return m_backend->RefreshTargets(deviceId, status); });
}

} // namespace orl
