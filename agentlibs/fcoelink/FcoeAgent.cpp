// FcoeAgent: where a back end's exceptions end.

#include "agentlibs/fcoelink/FcoeAgent.h"

#include "agentlibs/Text.h"
#include "Common/Src/OrlDebug.h"

#include <exception>
#include <new>

namespace orl
{

namespace
{

constexpr const wchar_t* Source = L"Src\\FcoeAgent";

void Report(const wchar_t* operation, ULONG code, const wchar_t* text, CResult& status,
            std::vector<WarningMessageObj>* warnings)
{
    status.ulErrCode = code;
    g_OrlDebug.Error(Source, __LINE__, L"%s failed with %u: %s", operation, code, text);
    if (warnings == nullptr)
        return;
    try
    {
        warnings->push_back({WarningMessageObj::KindError, 0, text});
    }
    catch (const std::bad_alloc&)
    {
        g_OrlDebug.Error(Source, __LINE__, L"%s: no memory for the warning", operation);
    }
}

// Runs one operation. The exceptions that a fault asks for are the only ones to pass.
template <typename Call>
bool Run(const wchar_t* operation, CResult& status, std::vector<WarningMessageObj>* warnings, Call&& call)
{
    bool done = false;
    const COrlTraceScope scope(operation, &done);
    try
    {
        done = call();
    }
    catch (const FaultException&)
    {
        throw;
    }
    catch (const BackendError& error)
    {
        Report(operation, error.Code(), error.Text().c_str(), status, warnings);
    }
    catch (const std::bad_alloc&)
    {
        Report(operation, ERROR_NOT_ENOUGH_MEMORY, L"out of memory", status, warnings);
    }
    catch (const std::exception& error)
    {
        Report(operation, ERROR_INTERNAL_ERROR, Widen(error.what()).c_str(), status, warnings);
    }
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
