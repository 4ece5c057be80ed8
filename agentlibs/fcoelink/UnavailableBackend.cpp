// A back end that cannot be had, and why.

#include "agentlibs/fcoelink/Backend.h"

namespace orl
{

namespace
{

class UnavailableBackend final : public FcoeBackend
{
public:
    // Kept to be thrown later. NOLINTNEXTLINE(bugprone-throw-keyword-missing)
    UnavailableBackend(std::wstring source, const BackendError& error) : m_source(std::move(source)), m_error(error) {}

    BackendStatus Status() override { return {false, m_source, m_error.Text()}; }

    bool EnumerateHBAs(const COrlString&, std::vector<ORL_FCOE_HBA>&, CResult&) override { throw m_error; }
    bool EnumerateFabrics(const COrlString&, std::vector<ORL_FCOE_FABRIC>&, CResult&) override { throw m_error; }
    bool EnumeratePorts(const COrlString&, std::vector<ORL_FCOE_PORT>&, CResult&) override { throw m_error; }
    bool EnumerateTargets(const COrlString&, std::vector<ORL_FCOE_TARGET>&, CResult&) override { throw m_error; }
    bool EnumerateVLANs(const COrlString&, std::vector<ORL_FCOE_VLAN>&, CResult&) override { throw m_error; }
    bool EnumerateLUNs(const COrlString&, std::vector<ORL_FCOE_LUN>&, CResult&) override { throw m_error; }
    bool EnumerateStatistics(const COrlString&, std::vector<ORL_FCOE_STATISTIC>&, CResult&) override { throw m_error; }

    bool Uninstall(CResult&) override { throw m_error; }
    bool CreateVirtualPort(const COrlString&, COrlString&, std::vector<WarningMessageObj>&, CResult&) override
    {
        throw m_error;
    }
    bool DeleteVirtualPort(const COrlString&, const COrlString&, std::vector<WarningMessageObj>&, CResult&) override
    {
        throw m_error;
    }
    bool GenerateVirtualPortWWPN(const COrlString&, COrlString&, std::vector<WarningMessageObj>&, CResult&) override
    {
        throw m_error;
    }
    bool RefreshTargets(const COrlString&, CResult&) override { throw m_error; }

private:
    const std::wstring m_source;
    const BackendError m_error;
};

} // namespace

std::unique_ptr<FcoeBackend> MakeUnavailableBackend(std::wstring source, const BackendError& error)
{
    return std::make_unique<UnavailableBackend>(std::move(source), error);
}

} // namespace orl
