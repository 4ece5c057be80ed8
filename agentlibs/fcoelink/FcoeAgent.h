// FcoeAgent: the agent object that the provider gets, around one back end.
#pragma once

#include "agentlibs/fcoelink/Backend.h"

#include <memory>
#include <string>
#include <vector>

namespace orl
{

// Traces every operation and turns what a back end throws into what the provider understands: false, the code in the
// status record, a warning of the error kind where there is a list for it, and an Error line in the trace. The status
// record is left alone when an operation succeeds. Only a FaultException leaves it, and
// std::bad_alloc when there is no memory for the warning that tells of a failure.
//
// As safe for concurrent calls as the back end is.
class FcoeAgent final : public COrlFcoeAgentIntf
{
public:
    explicit FcoeAgent(std::unique_ptr<FcoeBackend> backend) : m_backend(std::move(backend)) {}

    BackendStatus Status() { return m_backend->Status(); }

    bool EnumerateHBAs(const COrlString& deviceId, std::vector<ORL_FCOE_HBA>& hbas, CResult& status) override;
    bool EnumerateFabrics(const COrlString& deviceId, std::vector<ORL_FCOE_FABRIC>& fabrics, CResult& status) override;
    bool EnumeratePorts(const COrlString& deviceId, std::vector<ORL_FCOE_PORT>& ports, CResult& status) override;
    bool EnumerateTargets(const COrlString& deviceId, std::vector<ORL_FCOE_TARGET>& targets, CResult& status) override;
    bool EnumerateVLANs(const COrlString& deviceId, std::vector<ORL_FCOE_VLAN>& vlans, CResult& status) override;
    bool EnumerateLUNs(const COrlString& deviceId, std::vector<ORL_FCOE_LUN>& luns, CResult& status) override;
    bool EnumerateStatistics(const COrlString& deviceId, std::vector<ORL_FCOE_STATISTIC>& statistics,
                             CResult& status) override;

    bool Uninstall(CResult& status) override;
    bool CreateVirtualPort(const COrlString& deviceId, COrlString& worldWidePortName,
                           std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool DeleteVirtualPort(const COrlString& deviceId, const COrlString& worldWidePortName,
                           std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool GenerateVirtualPortWWPN(const COrlString& deviceId, COrlString& worldWidePortName,
                                 std::vector<WarningMessageObj>& warnings, CResult& status) override;
    bool RefreshTargets(const COrlString& deviceId, CResult& status) override;

private:
    const std::unique_ptr<FcoeBackend> m_backend;
};

} // namespace orl
