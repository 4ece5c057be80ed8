// The agent's operations on a simulated SAN.

#include "agentlibs/fcoelink/Backend.h"
#include "tests/support/TestFolder.h"
#include "winport/portable/Utf8.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <thread>

namespace orl::test
{

namespace
{

class InventoryBackendTest : public testing::Test
{
protected:
    std::unique_ptr<FcoeBackend> Backend(const std::string& text)
    {
        std::ofstream(m_path, std::ios::binary | std::ios::trunc) << text;
        return MakeInventoryBackend({L"inventory", m_path.wstring(), {}});
    }
    // The message of the error that a call ends with, behind the file's name.
    template <typename Call>
    std::string ErrorOf(ULONG code, Call&& call)
    {
        try
        {
            call();
        }
        catch (const BackendError& error)
        {
            EXPECT_EQ(error.Code(), code);
            const std::string text = ToUtf8(error.Text());
            const std::string name = ToUtf8(m_path.wstring());
            return text.substr(0, name.size()) == name ? text.substr(name.size()) : text;
        }
        return "done";
    }

    TestFolder m_folder;
    const std::filesystem::path m_path = m_folder / "san.json";
    CResult m_status{77, 88};
    std::vector<WarningMessageObj> m_warnings;
};

const std::string San = R"({"hbas": [
    {"deviceId": "eth0", "fabrics": [{"name": "f"}], "ports": [{"name": "p"}], "vlans": [{"vlanId": 5}],
     "targets": [{"name": "t", "luns": [{"id": 1}, {"id": 2}]}],
     "statistics": [{"statistic": "s", "value": 9, "perSecond": 1000000}]},
    {"deviceId": "eth1"}]})";

} // namespace

TEST_F(InventoryBackendTest, EachEnumerationAnswersItsRecordsAndLeavesTheStatusAlone)
{
    const auto backend = Backend(San);
    std::vector<ORL_FCOE_HBA> hbas;
    EXPECT_TRUE(backend->EnumerateHBAs(L"", hbas, m_status));
    EXPECT_EQ(hbas.size(), 2u);
    std::vector<ORL_FCOE_FABRIC> fabrics;
    EXPECT_TRUE(backend->EnumerateFabrics(L"ETH0", fabrics, m_status));
    EXPECT_EQ(fabrics.size(), 1u);
    std::vector<ORL_FCOE_PORT> ports;
    EXPECT_TRUE(backend->EnumeratePorts(L"eth0", ports, m_status));
    EXPECT_EQ(ports.size(), 1u);
    std::vector<ORL_FCOE_TARGET> targets;
    EXPECT_TRUE(backend->EnumerateTargets(L"eth0", targets, m_status));
    EXPECT_EQ(targets.size(), 1u);
    std::vector<ORL_FCOE_VLAN> vlans;
    EXPECT_TRUE(backend->EnumerateVLANs(L"eth0", vlans, m_status));
    EXPECT_EQ(vlans.size(), 1u);
    std::vector<ORL_FCOE_LUN> luns;
    EXPECT_TRUE(backend->EnumerateLUNs(L"eth0", luns, m_status));
    EXPECT_EQ(luns.size(), 2u);
    std::vector<ORL_FCOE_STATISTIC> statistics;
    EXPECT_TRUE(backend->EnumerateStatistics(L"eth0", statistics, m_status));
    EXPECT_EQ(statistics.size(), 1u);
    EXPECT_EQ(m_status.ulErrCode, 77u);
    EXPECT_EQ(m_status.ulReserved, 88u);
}

TEST_F(InventoryBackendTest, AnUnknownHbaHasNothingWhichIsNoFailure)
{
    std::vector<ORL_FCOE_HBA> hbas;
    EXPECT_TRUE(Backend(San)->EnumerateHBAs(L"eth2", hbas, m_status));
    EXPECT_TRUE(hbas.empty());
}

TEST_F(InventoryBackendTest, CountersAdvanceWithTheFilesAge)
{
    const auto backend = Backend(San);
    std::filesystem::last_write_time(m_path, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(100));
    std::vector<ORL_FCOE_STATISTIC> statistics;
    ASSERT_TRUE(backend->EnumerateStatistics(L"eth0", statistics, m_status));
    EXPECT_GE(statistics.at(0).value, 100000009u - 2000000);
    EXPECT_LE(statistics.at(0).value, 100000009u + 120000000);
}

TEST_F(InventoryBackendTest, CountersAdvanceBetweenTwoLooks)
{
    const auto backend = Backend(San);
    std::vector<ORL_FCOE_STATISTIC> first;
    ASSERT_TRUE(backend->EnumerateStatistics(L"eth0", first, m_status));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::vector<ORL_FCOE_STATISTIC> second;
    ASSERT_TRUE(backend->EnumerateStatistics(L"eth0", second, m_status));
    EXPECT_GE(second.at(0).value, first.at(0).value + 20000);
}

TEST_F(InventoryBackendTest, ActionsOnAnUnknownHbaSayThatThereIsNone)
{
    const auto backend = Backend(San);
    COrlString name;
    const std::string unknown = ": there is no HBA with the device id \"eth2\"";
    EXPECT_EQ(ErrorOf(ERROR_DEV_NOT_EXIST, [&] { backend->CreateVirtualPort(L"eth2", name, m_warnings, m_status); }),
              unknown);
    EXPECT_EQ(ErrorOf(ERROR_DEV_NOT_EXIST, [&] { backend->DeleteVirtualPort(L"eth2", name, m_warnings, m_status); }),
              unknown);
    EXPECT_EQ(
        ErrorOf(ERROR_DEV_NOT_EXIST, [&] { backend->GenerateVirtualPortWWPN(L"eth2", name, m_warnings, m_status); }),
        unknown);
    EXPECT_EQ(ErrorOf(ERROR_DEV_NOT_EXIST, [&] { backend->RefreshTargets(L"eth2", m_status); }), unknown);
}

TEST_F(InventoryBackendTest, TargetsAreAlwaysFresh)
{
    EXPECT_TRUE(Backend(San)->RefreshTargets(L"ETH1", m_status));
}

TEST_F(InventoryBackendTest, EachOperationMeetsTheFaultsOfItsOwnName)
{
    const auto failing = [&](const char* operation)
    {
        return Backend(std::string(R"({"hbas": [{"deviceId": "eth0"}], "faults": [{"operation": ")") + operation +
                       R"(", "effect": "fail", "code": 21, "text": "not ready"}]})");
    };
    std::vector<ORL_FCOE_HBA> hbas;
    std::vector<ORL_FCOE_FABRIC> fabrics;
    std::vector<ORL_FCOE_PORT> ports;
    std::vector<ORL_FCOE_TARGET> targets;
    std::vector<ORL_FCOE_VLAN> vlans;
    std::vector<ORL_FCOE_LUN> luns;
    std::vector<ORL_FCOE_STATISTIC> statistics;
    COrlString name;
    const std::pair<const char*, std::function<void(FcoeBackend&)>> operations[] = {
        {"EnumerateHBAs", [&](FcoeBackend& b) { b.EnumerateHBAs(L"", hbas, m_status); }},
        {"EnumerateFabrics", [&](FcoeBackend& b) { b.EnumerateFabrics(L"", fabrics, m_status); }},
        {"EnumeratePorts", [&](FcoeBackend& b) { b.EnumeratePorts(L"", ports, m_status); }},
        {"EnumerateTargets", [&](FcoeBackend& b) { b.EnumerateTargets(L"", targets, m_status); }},
        {"EnumerateVLANs", [&](FcoeBackend& b) { b.EnumerateVLANs(L"", vlans, m_status); }},
        {"EnumerateLUNs", [&](FcoeBackend& b) { b.EnumerateLUNs(L"", luns, m_status); }},
        {"EnumerateStatistics", [&](FcoeBackend& b) { b.EnumerateStatistics(L"", statistics, m_status); }},
        {"Uninstall", [&](FcoeBackend& b) { b.Uninstall(m_status); }},
        {"CreateVirtualPort", [&](FcoeBackend& b) { b.CreateVirtualPort(L"eth0", name, m_warnings, m_status); }},
        {"DeleteVirtualPort", [&](FcoeBackend& b) { b.DeleteVirtualPort(L"eth0", name, m_warnings, m_status); }},
        {"GenerateVirtualPortWWPN",
         [&](FcoeBackend& b) { b.GenerateVirtualPortWWPN(L"eth0", name, m_warnings, m_status); }},
        {"RefreshTargets", [&](FcoeBackend& b) { b.RefreshTargets(L"eth0", m_status); }},
    };
    for (const auto& [operation, call] : operations)
        EXPECT_EQ(ErrorOf(21, [&] { call(*failing(operation)); }), "not ready") << operation;
}

TEST_F(InventoryBackendTest, ItsStatusSaysWhatIsThereOrWhatIsWrong)
{
    BackendStatus status = Backend(San)->Status();
    EXPECT_TRUE(status.ready);
    EXPECT_EQ(status.source, m_path.wstring());
    EXPECT_EQ(status.text, L"2 HBAs");

    EXPECT_EQ(Backend(R"({"hbas": [{"deviceId": "eth0"}]})")->Status().text, L"1 HBA");

    status = Backend("{")->Status();
    EXPECT_FALSE(status.ready);
    EXPECT_EQ(status.source, m_path.wstring());
    EXPECT_EQ(ToUtf8(status.text),
              ToUtf8(m_path.wstring()) +
                  ":1:2: not JSON: syntax error while parsing object key - unexpected end of input; expected string "
                  "literal");
}

TEST_F(InventoryBackendTest, ItsStatusMeetsNoFaults)
{
    EXPECT_TRUE(Backend(R"({"faults": [{"operation": "*", "effect": "throw"}]})")->Status().ready);
}

TEST_F(InventoryBackendTest, ManyThreadsMayAskAtOnce)
{
    const auto backend = Backend(R"({"generate": {"hbas": 50}})");
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(
            [&]
            {
                for (int call = 0; call < 50; ++call)
                {
                    CResult status;
                    std::vector<ORL_FCOE_HBA> hbas;
                    std::vector<ORL_FCOE_LUN> luns;
                    if (!backend->EnumerateHBAs(L"", hbas, status) || hbas.size() != 50)
                        ++wrong;
                    if (!backend->EnumerateLUNs(L"sim7", luns, status) || luns.size() != 8)
                        ++wrong;
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace orl::test
