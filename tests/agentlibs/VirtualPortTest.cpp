// What clients can change of an inventory: virtual ports created, deleted and named.

#include "VirtualPorts.h"

#include "agentlibs/fcoelink/FcoeAgent.h"
#include "agentlibs/inventory/VirtualPortActions.h"
#include "tests/common/FailingNew.h"

#include <chrono>

namespace orl::test
{

namespace
{

using VirtualPorts = VirtualPortFixture;

// eth0 has a virtual port with a target of its own; eth1 has the same MAC address; eth2 has no link.
const std::string San = R"({"hbas": [
  {"deviceId": "eth0", "name": "first", "fcid": "0x010300", "linkStatus": "Online",
   "worldWidePortName": "2000525400fc0001", "worldWideNodeName": "1000525400fc0001",
   "ports": [{"worldWidePortName": "2000525400fc0001", "fcid": "0x010300",
              "fabricWorldWideNodeName": "20000000fc00000a", "fabricName": "10000000fc00000a"}],
   "virtualPorts": [{"worldWidePortName": "2101525400fc0001", "fcid": "0x010301", "name": "listed"}],
   "targets": [
     {"name": "t0", "worldWidePortName": "2000525400fc2000", "fcid": "0x010303", "luns": [{"id": 0}, {"id": 1}]},
     {"name": "t1", "worldWidePortName": "2000525400fc2000", "portWorldWidePortName": "2101525400fc0001",
      "luns": [{"id": 0}]}]},
  {"deviceId": "eth1", "fcid": "0x020000", "worldWidePortName": "2001525400fc0001"},
  {"deviceId": "eth2", "name": "third", "linkStatus": "Linkdown", "fcid": "0x030000",
   "worldWidePortName": "2000525400fc0003", "worldWideNodeName": "1000525400fc0003"}]})";

template <typename Record>
std::vector<Record> Seen(FcoeBackend& backend, const wchar_t* hba,
                         bool (FcoeBackend::*enumerate)(const COrlString&, std::vector<Record>&, CResult&))
{
    std::vector<Record> records;
    CResult status;
    EXPECT_TRUE((backend.*enumerate)(COrlString(hba), records, status));
    return records;
}
std::size_t Targets(FcoeBackend& backend, const wchar_t* hba)
{
    return Seen<ORL_FCOE_TARGET>(backend, hba, &FcoeBackend::EnumerateTargets).size();
}
std::size_t Luns(FcoeBackend& backend, const wchar_t* hba)
{
    return Seen<ORL_FCOE_LUN>(backend, hba, &FcoeBackend::EnumerateLUNs).size();
}

using Texts = std::vector<std::string>;

} // namespace

TEST_F(VirtualPorts, AreCreatedLikeThis)
{
    const auto backend = Backend(San);
    EXPECT_EQ(Create(*backend, L"ETH0", L"0x21AA525400FC0001"), "21aa525400fc0001");
    EXPECT_TRUE(m_warnings.empty());
    const std::vector<ORL_FCOE_PORT> ports = Ports(*backend, L"eth0");
    ASSERT_EQ(ports.size(), 3u);
    const ORL_FCOE_PORT& port = ports.back();
    EXPECT_EQ(port.portWWN, L"21aa525400fc0001");
    EXPECT_EQ(port.nodeWWN, L"11aa525400fc0001");
    EXPECT_EQ(port.portTypeId, 2u);
    EXPECT_EQ(port.portType, L"NPIV VPORT");
    EXPECT_EQ(port.fcid, 0x010302u);
    EXPECT_EQ(port.deviceId, L"eth0");
    EXPECT_EQ(port.name, L"first : 21aa525400fc0001");
    EXPECT_EQ(port.fabricNodeWWN, L"20000000fc00000a");
    EXPECT_EQ(port.fabricName, L"10000000fc00000a");
    EXPECT_EQ(Targets(*backend, L"eth0"), 2u) << "it sees none itself";
}

TEST_F(VirtualPorts, AreNamedInAnyFormAndShownInOne)
{
    const struct
    {
        const wchar_t* given;
        const char* assigned;
    } cases[] = {
        {L"2102525400FC0001", "2102525400fc0001"},
        {L"0X2103525400fc0001", "2103525400fc0001"},
        {L"21:04:52:54:00:FC:00:01", "2104525400fc0001"},
        {L"5000525400FC0001", "5000525400fc0001"},
    };
    const auto backend = Backend(San);
    for (const auto& [given, assigned] : cases)
        EXPECT_EQ(Create(*backend, L"eth0", given), assigned);
    EXPECT_EQ(Names(*backend, L"eth0"), (Texts{"2000525400fc0001", "2101525400fc0001", "2102525400fc0001",
                                               "2103525400fc0001", "2104525400fc0001", "5000525400fc0001"}));
    EXPECT_EQ(Ports(*backend, L"eth0").back().nodeWWN, L"1000525400fc0001") << "of a name that holds no node's";
}

TEST_F(VirtualPorts, WithoutANameGetAGeneratedOne)
{
    const auto backend = Backend(San);
    EXPECT_EQ(Create(*backend, L"eth0"), "2102525400fc0001") << "2101 is listed";
    EXPECT_EQ(Create(*backend, L"eth0"), "2103525400fc0001");
}

TEST_F(VirtualPorts, HaveAddressesThatNothingElseHas)
{
    const auto backend = Backend(San);
    for (int i = 0; i < 3; ++i)
        Create(*backend, L"eth0");
    const auto ports = Ports(*backend, L"eth0");
    ASSERT_EQ(ports.size(), 5u);
    EXPECT_EQ(ports[2].fcid, 0x010302u);
    EXPECT_EQ(ports[3].fcid, 0x010304u) << "a target has 0x010303";
    EXPECT_EQ(ports[4].fcid, 0x010305u);
}

TEST_F(VirtualPorts, AreRefusedWithTheReason)
{
    const auto backend = Backend(San);
    ASSERT_EQ(Create(*backend, L"eth0", L"21aa525400fc0001"), "21aa525400fc0001");
    const std::string before = State();
    const std::string form = " is no world wide port name: expected 16 hexadecimal digits, bare, behind 0x, or in "
                             "pairs with colons between, and not all of them 0";
    const struct
    {
        const wchar_t* hba;
        const wchar_t* name;
        ULONG code;
        std::string error;
    } cases[] = {
        {L"eth9", L"2102525400fc0001", ERROR_DEV_NOT_EXIST, ": there is no HBA with the device id \"eth9\""},
        {L"", L"2102525400fc0001", ERROR_DEV_NOT_EXIST, ": there is no HBA with the device id \"\""},
        {L"eth9", L"", ERROR_DEV_NOT_EXIST, ": there is no HBA with the device id \"eth9\""},
        {L"eth0", L"0000000000000000", ERROR_INVALID_NAME, ": \"0000000000000000\"" + form},
        {L"eth0", L"2102525400fc000", ERROR_INVALID_NAME, ": \"2102525400fc000\"" + form},
        {L"eth0", L"2102525400fc00011", ERROR_INVALID_NAME, ": \"2102525400fc00011\"" + form},
        {L"eth0", L"2102525400fc000g", ERROR_INVALID_NAME, ": \"2102525400fc000g\"" + form},
        {L"eth0", L"21-02-52-54-00-fc-00-01", ERROR_INVALID_NAME, ": \"21-02-52-54-00-fc-00-01\"" + form},
        {L"eth0", L" ", ERROR_INVALID_NAME, ": \" \"" + form},
        {L"eth0", L"a\nb", ERROR_INVALID_NAME, ": \"a?b\"" + form},
        {L"eth0", L"2000525400fc0001", ERROR_ALREADY_EXISTS,
         ": 2000525400fc0001 is already a physical port of \"eth0\""},
        {L"eth0", L"2001525400fc0001", ERROR_ALREADY_EXISTS,
         ": 2001525400fc0001 is already a physical port of \"eth1\""},
        {L"eth1", L"21:01:52:54:00:FC:00:01", ERROR_ALREADY_EXISTS,
         ": 2101525400fc0001 is already a virtual port of \"eth0\""},
        {L"eth1", L"2000525400fc2000", ERROR_ALREADY_EXISTS,
         ": 2000525400fc2000 is already a port of a target that \"eth0\" sees"},
        {L"eth0", L"21AA525400FC0001", ERROR_ALREADY_EXISTS,
         ": 21aa525400fc0001 is already a virtual port of \"eth0\""},
        {L"eth1", L"21aa525400fc0001", ERROR_ALREADY_EXISTS,
         ": 21aa525400fc0001 is already a virtual port of \"eth0\""},
    };
    for (const auto& [hba, name, code, error] : cases)
    {
        COrlString text = name;
        EXPECT_EQ(ErrorOf([&] { return backend->CreateVirtualPort(hba, text, m_warnings, m_status); }), error);
        EXPECT_EQ(m_code, code) << error;
        EXPECT_EQ(text, name) << "the caller's name stays";
    }
    EXPECT_TRUE(m_warnings.empty()) << "whoever catches the error says it";
    EXPECT_EQ(State(), before);
}

TEST_F(VirtualPorts, AreNoMoreThanAnHbaCanHave)
{
    const auto backend = Backend(R"({"generate": {"hbas": 2, "virtualPortsPerHba": 253}})");
    EXPECT_EQ(Create(*backend, L"sim0"), "21fd020000000000") << "the listed ones are 2100 to 21fc";
    EXPECT_EQ(Create(*backend, L"sim0").size(), 16u);
    EXPECT_EQ(Create(*backend, L"sim0"), ": \"sim0\" has 255 virtual ports; no more than 255 can be on one HBA");
    EXPECT_EQ(m_code, static_cast<ULONG>(ERROR_NO_MORE_ITEMS));
    EXPECT_EQ(Create(*backend, L"sim1").size(), 16u) << "another HBA has room";
    EXPECT_EQ(Delete(*backend, L"sim0", L"2100020000000000"), "");
    EXPECT_EQ(Create(*backend, L"sim0").size(), 16u);
}

TEST_F(VirtualPorts, OfAnHbaWithoutALinkCannotLogInYet)
{
    const auto backend = Backend(San);
    EXPECT_EQ(Create(*backend, L"eth2"), "2101525400fc0003");
    ASSERT_EQ(m_warnings.size(), 1u);
    EXPECT_EQ(m_warnings[0].ulKind, 2u) << "not the error kind: it was done";
    EXPECT_EQ(m_warnings[0].ulMessageId, 0u);
    EXPECT_EQ(m_warnings[0].strMessage, L"2101525400fc0003 is created, but cannot log in to a fabric: the link of "
                                        L"\"eth2\" is Linkdown");
    ASSERT_EQ(Ports(*backend, L"eth2").size(), 1u);
    EXPECT_EQ(Ports(*backend, L"eth2")[0].fcid, 0u);

    std::string up = San;
    up.replace(up.find("Linkdown"), 8, "Online");
    const auto later = Backend(up);
    EXPECT_EQ(Ports(*later, L"eth2").at(0).fcid, 0x030001u) << "it logs in when the link comes";
}

TEST_F(VirtualPorts, AreDeletedWithWhatIsSeenThroughThem)
{
    const auto backend = Backend(San);
    EXPECT_EQ(Targets(*backend, L"eth0"), 2u);
    EXPECT_EQ(Luns(*backend, L""), 3u);
    EXPECT_EQ(Delete(*backend, L"eth0", L"21:01:52:54:00:FC:00:01"), "");
    EXPECT_EQ(Names(*backend, L"eth0"), Texts{"2000525400fc0001"});
    EXPECT_EQ(Targets(*backend, L"eth0"), 1u);
    EXPECT_EQ(Targets(*backend, L""), 1u);
    EXPECT_EQ(Luns(*backend, L""), 2u);
    EXPECT_EQ(Luns(*backend, L"Eth0"), 2u);
    EXPECT_TRUE(m_warnings.empty());
}

TEST_F(VirtualPorts, ThatWereCreatedAndDeletedLeaveNothing)
{
    const auto backend = Backend(San);
    Create(*backend, L"eth0", L"21aa525400fc0001");
    EXPECT_EQ(Delete(*backend, L"eth0", L"21aa525400fc0001"), "");
    EXPECT_EQ(Names(*backend, L"eth0").size(), 2u);
    EXPECT_EQ(State(), "{\n\"version\": 1\n}\n");
    EXPECT_EQ(Create(*backend, L"eth1", L"21aa525400fc0001"), "21aa525400fc0001") << "the name is free";
}

TEST_F(VirtualPorts, ThatAreListedComeBackWhenTheyAreCreatedAgain)
{
    const auto backend = Backend(San);
    Delete(*backend, L"eth0", L"2101525400fc0001");
    EXPECT_EQ(Create(*backend, L"eth0", L"2101525400fc0001"), "2101525400fc0001");
    EXPECT_EQ(Ports(*backend, L"eth0").at(1).name, L"listed");
    EXPECT_EQ(Luns(*backend, L"eth0"), 3u);

    Delete(*backend, L"eth0", L"2101525400fc0001");
    EXPECT_EQ(Create(*backend, L"eth1", L"2101525400fc0001"), "2101525400fc0001");
    EXPECT_EQ(Create(*backend, L"eth0", L"2101525400fc0001"),
              ": 2101525400fc0001 is already a virtual port of \"eth1\"");
    EXPECT_EQ(Names(*backend, L"eth1"), Texts{"2101525400fc0001"});
}

TEST_F(VirtualPorts, ThatCannotBeDeletedSayWhy)
{
    const auto backend = Backend(San);
    Create(*backend, L"eth0", L"21aa525400fc0001");
    Delete(*backend, L"eth0", L"2101525400fc0001");
    const std::string before = State();
    const struct
    {
        const wchar_t* hba;
        const wchar_t* name;
        ULONG code;
        std::string error;
    } cases[] = {
        {L"eth9", L"21aa525400fc0001", ERROR_DEV_NOT_EXIST, ": there is no HBA with the device id \"eth9\""},
        {L"eth0", L"2000525400fc0001", ERROR_ACCESS_DENIED,
         ": 2000525400fc0001 is a physical port of \"eth0\"; only virtual ports can be deleted"},
        {L"eth1", L"2001525400fc0001", ERROR_ACCESS_DENIED,
         ": 2001525400fc0001 is a physical port of \"eth1\"; only virtual ports can be deleted"},
        {L"eth0", L"2102525400fc0001", ERROR_NOT_FOUND, ": \"eth0\" has no virtual port 2102525400fc0001"},
        {L"eth1", L"21aa525400fc0001", ERROR_NOT_FOUND, ": \"eth1\" has no virtual port 21aa525400fc0001"},
        {L"eth0", L"2101525400fc0001", ERROR_NOT_FOUND, ": \"eth0\" has no virtual port 2101525400fc0001"},
        {L"eth0", L"2000525400fc2000", ERROR_NOT_FOUND, ": \"eth0\" has no virtual port 2000525400fc2000"},
        {L"eth0", L"", ERROR_INVALID_NAME,
         ": \"\" is no world wide port name: expected 16 hexadecimal digits, bare, behind 0x, or in pairs with colons "
         "between, and not all of them 0"},
    };
    for (const auto& [hba, name, code, error] : cases)
    {
        EXPECT_EQ(Delete(*backend, hba, name), error);
        EXPECT_EQ(m_code, code) << error;
    }
    EXPECT_EQ(State(), before);
}

TEST_F(VirtualPorts, GetNamesThatAreNeverGivenTwice)
{
    const auto backend = Backend(San);
    const auto other = Backend();
    EXPECT_EQ(Generate(*backend, L"eth0"), "2102525400fc0001") << "2101 is listed";
    EXPECT_EQ(Generate(*other, L"eth1"), "2103525400fc0001") << "the same MAC address, the same names";
    EXPECT_EQ(Generate(*backend, L"eth2"), "2101525400fc0003");
    EXPECT_EQ(Create(*backend, L"eth0", L"2105525400fc0001"), "2105525400fc0001");
    EXPECT_EQ(Generate(*backend, L"ETH0"), "2104525400fc0001");
    EXPECT_EQ(Generate(*backend, L"eth0"), "2106525400fc0001") << "2105 is there";
    EXPECT_EQ(Names(*backend, L"eth0").size(), 3u) << "a name makes no port";
    EXPECT_EQ(Generate(*backend, L"eth9"), ": there is no HBA with the device id \"eth9\"");
}

TEST_F(VirtualPorts, GetAllNamesBeforeOneComesAgain)
{
    const auto backend = Backend(San);
    const auto inventory = Inventory::Read(L"s", San);
    const std::wstring file = L"s";
    const VirtualPortActions actions(file, *inventory, L"eth0");
    VirtualPortState state;
    std::set<std::uint64_t> names;
    for (int i = 0; i < 4095 - 2; ++i) // the ports listed here have 2001 and 2101 of them
        EXPECT_TRUE(names.insert(actions.Generate(state)).second);
    EXPECT_EQ(*names.begin(), 0x2002525400FC0001u) << "2000 and 2001 are physical ports";
    EXPECT_EQ(*names.rbegin(), 0x2FFF525400FC0001u);
    EXPECT_TRUE(names.contains(actions.Generate(state)));
}

TEST_F(VirtualPorts, GetNamesOfAnHbaThatHasNoneItself)
{
    const auto backend = Backend(R"({"hbas": [{"deviceId": "a"}, {"deviceId": "b"}]})");
    const std::string a = Generate(*backend, L"a");
    const std::string b = Generate(*backend, L"b");
    EXPECT_EQ(a.substr(0, 6), "210102") << "a locally administered address";
    EXPECT_EQ(b.substr(0, 6), "210102");
    EXPECT_NE(a, b);
    EXPECT_EQ(Create(*backend, L"a", std::wstring(a.begin(), a.end()).c_str()), a);
    EXPECT_EQ(Ports(*backend, L"a").at(0).fcid, 0u) << "no fabric, no address";
}

TEST_F(VirtualPorts, OutliveWhoCreatedThem)
{
    Create(*Backend(San), L"eth0", L"21aa525400fc0001");
    const auto later = Backend();
    EXPECT_EQ(Names(*later, L"eth0"), (Texts{"2000525400fc0001", "2101525400fc0001", "21aa525400fc0001"}));
    EXPECT_EQ(Delete(*later, L"eth0", L"21aa525400fc0001"), "");
    EXPECT_EQ(Names(*Backend(), L"eth0").size(), 2u);
}

TEST_F(VirtualPorts, StandBehindTheOthersOfTheirHbaAmongAll)
{
    const auto backend = Backend(R"({"hbas": [{"deviceId": "eth0"}, {"deviceId": "eth1"}], "generate": {"hbas": 3}})");
    Create(*backend, L"sim1", L"2000000000000003");
    Create(*backend, L"eth1", L"2000000000000002");
    Create(*backend, L"eth0", L"2000000000000001");
    EXPECT_EQ(Names(*backend), (Texts{"2000000000000001", "2000000000000002", "2000020000000000", "2000020000000001",
                                      "2000000000000003", "2000020000000002"}));
    EXPECT_EQ(Names(*backend, L"sim1"), (Texts{"2000020000000001", "2000000000000003"}));
    EXPECT_TRUE(Names(*backend, L"unknown").empty());
}

TEST_F(VirtualPorts, GoAndComeBackWithUninstall)
{
    const auto backend = Backend(San);
    EXPECT_TRUE(backend->Uninstall(m_status));
    EXPECT_EQ(Beside(), std::set<std::string>{"san.json"}) << "there was nothing to take back";
    WriteState(R"({"settings": {"a": 1}, "version": 1})");
    Create(*backend, L"eth0");
    Delete(*backend, L"eth0", L"2101525400fc0001");
    EXPECT_EQ(Names(*backend, L"eth0"), (Texts{"2000525400fc0001", "2102525400fc0001"}));
    EXPECT_TRUE(backend->Uninstall(m_status));
    EXPECT_EQ(Names(*backend, L"eth0"), (Texts{"2000525400fc0001", "2101525400fc0001"}));
    EXPECT_EQ(Luns(*backend, L"eth0"), 3u);
    EXPECT_EQ(State(), "{\n\"settings\": {\"a\": 1},\n\"version\": 1\n}\n");
}

TEST_F(VirtualPorts, OfAnHbaThatIsGoneAreKeptAndIgnored)
{
    const auto backend = Backend(San);
    Create(*backend, L"eth2", L"21aa525400fc0003");
    const auto smaller = Backend(R"({"hbas": [{"deviceId": "eth0"}]})");
    EXPECT_TRUE(Names(*smaller).empty());
    EXPECT_EQ(Create(*smaller, L"eth0", L"21aa525400fc0003"),
              ": 21aa525400fc0003 is already a virtual port of \"eth2\"");
    EXPECT_EQ(Create(*smaller, L"eth0", L"21aa525400fc0004"), "21aa525400fc0004");
    const auto again = Backend(San);
    EXPECT_EQ(Names(*again, L"eth2"), Texts{"21aa525400fc0003"});
}

TEST_F(VirtualPorts, GiveWayToPortsThatTheInventoryListsLater)
{
    const auto backend = Backend(R"({"hbas": [{"deviceId": "eth0"}]})");
    Create(*backend, L"eth0", L"21aa525400fc0001");
    const auto edited = Backend(
        R"({"hbas": [{"deviceId": "eth0", "ports": [{"worldWidePortName": "21aa525400fc0001", "name": "listed"}]}]})");
    ASSERT_EQ(Ports(*edited).size(), 1u);
    EXPECT_EQ(Ports(*edited)[0].name, L"listed");
    EXPECT_EQ(Delete(*edited, L"eth0", L"21aa525400fc0001"),
              ": 21aa525400fc0001 is a physical port of \"eth0\"; only virtual ports can be deleted");
}

TEST_F(VirtualPorts, OfADamagedStateAreAnErrorAndNothingIsWrittenOver)
{
    const auto backend = Backend(San);
    const std::string damaged = R"({"version": 1, "virtualPorts": {"hbas": [{"deviceId": 5}]}})";
    WriteState(damaged);
    const std::string error = ".state:1:55: /virtualPorts/hbas/0/deviceId: expected a text, found a number";
    std::vector<ORL_FCOE_PORT> ports;
    std::vector<ORL_FCOE_TARGET> targets;
    std::vector<ORL_FCOE_LUN> luns;
    EXPECT_EQ(ErrorOf([&] { return backend->EnumeratePorts(L"", ports, m_status); }), error);
    EXPECT_EQ(ErrorOf([&] { return backend->EnumerateTargets(L"eth0", targets, m_status); }), error);
    EXPECT_EQ(ErrorOf([&] { return backend->EnumerateLUNs(L"", luns, m_status); }), error);
    EXPECT_EQ(Create(*backend, L"eth0"), error);
    EXPECT_EQ(Delete(*backend, L"eth0", L"2101525400fc0001"), error);
    EXPECT_EQ(Generate(*backend, L"eth0"), error);
    EXPECT_EQ(ErrorOf([&] { return backend->Uninstall(m_status); }), error);
    EXPECT_EQ(State(), damaged);
    EXPECT_FALSE(backend->Status().ready);
    EXPECT_EQ(ToUtf8(backend->Status().text), ToUtf8(m_path.wstring()) + error);
    std::vector<ORL_FCOE_HBA> hbas;
    EXPECT_TRUE(backend->EnumerateHBAs(L"", hbas, m_status)) << "which nobody can change";
    EXPECT_EQ(hbas.size(), 3u);
}

TEST_F(VirtualPorts, ThatAreRefusedAreWarnedOfByTheAgent)
{
    FcoeAgent agent(Backend(San));
    COrlString name = L"2000525400fc0001";
    EXPECT_FALSE(agent.CreateVirtualPort(L"eth0", name, m_warnings, m_status));
    ASSERT_EQ(m_warnings.size(), 1u);
    EXPECT_EQ(m_warnings[0].ulKind, WarningMessageObj::KindError);
    EXPECT_EQ(ToUtf8(m_warnings[0].strMessage),
              ToUtf8(m_path.wstring()) + ": 2000525400fc0001 is already a physical port of \"eth0\"");
    EXPECT_EQ(m_status.ulErrCode, static_cast<ULONG>(ERROR_ALREADY_EXISTS));
    EXPECT_EQ(name, L"2000525400fc0001");

    m_warnings.clear();
    m_status = {};
    name.clear();
    EXPECT_TRUE(agent.CreateVirtualPort(L"eth0", name, m_warnings, m_status));
    EXPECT_EQ(name, L"2102525400fc0001");
    EXPECT_TRUE(agent.DeleteVirtualPort(L"eth0", name, m_warnings, m_status));
    EXPECT_TRUE(m_warnings.empty());
    EXPECT_EQ(m_status.ulErrCode, 0u);
}

TEST_F(VirtualPorts, MeetTheirFaultsBeforeAnythingElse)
{
    const auto backend = Backend(R"({"hbas": [{"deviceId": "eth0"}], "faults": [
        {"operation": "*", "effect": "fail", "code": 21, "text": "not ready"}]})");
    EXPECT_EQ(Create(*backend, L"unknown", L"no name"), "not ready");
    EXPECT_EQ(Delete(*backend, L"unknown", L"no name"), "not ready");
    EXPECT_EQ(Generate(*backend, L"unknown"), "not ready");
    EXPECT_EQ(ErrorOf([&] { return backend->Uninstall(m_status); }), "not ready");
    EXPECT_EQ(Beside(), std::set<std::string>{"san.json"});
}

TEST_F(VirtualPorts, AreFoundTakenByFormulaInALargeSan)
{
    const auto backend = Backend(
        R"({"hbas": [{"deviceId": "eth0", "fcid": "0x010000"}], "generate": {"hbas": 1000000, "seed": 7, "virtualPortsPerHba": 2}})");
    const struct
    {
        const wchar_t* name;
        const char* answer;
    } cases[] = {
        {L"20000207000f423f", ": 20000207000f423f is already a physical port of \"sim999999\""},
        {L"21010207000f423f", ": 21010207000f423f is already a virtual port of \"sim999999\""},
        {L"21020207000f423f", "21020207000f423f"},
        {L"20000207000f4240", "20000207000f4240"},
        {L"20010207000f423f", "20010207000f423f"},
        {L"2000525400000001", ": 2000525400000001 is already a port of a target that \"sim0\" sees"},
        {L"2000525400000002", "2000525400000002"},
    };
    const auto start = std::chrono::steady_clock::now();
    for (const auto& [name, answer] : cases)
        EXPECT_EQ(Create(*backend, L"eth0", name), answer);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2))
        << "walking the million even once for each takes longer";
    EXPECT_EQ(Ports(*backend, L"eth0").at(0).fcid, 0x010000u + 3000000u) << "all below are taken";
    EXPECT_EQ(Delete(*backend, L"sim999999", L"21010207000f423f"), "");
    EXPECT_EQ(Create(*backend, L"eth0", L"21010207000f423f"), "21010207000f423f");
    EXPECT_EQ(Names(*backend, L"sim999999"), (Texts{"20000207000f423f", "21000207000f423f"}));
}

TEST_F(VirtualPorts, StayWholeWhenMemoryRunsOut)
{
    const auto backend = Backend(San);
    const std::size_t there = Names(*backend, L"eth2").size();
    bool done = false;
    unsigned failed = 0;
    for (unsigned nth = 1; !done && nth < 5000; ++nth)
    {
        COrlString name;
        const COrlString hba = L"eth2"; // with a warning
        try
        {
            const AllocationFailure failure(nth);
            done = backend->CreateVirtualPort(hba, name, m_warnings, m_status);
        }
        catch (const std::bad_alloc&)
        {
            ++failed;
            EXPECT_TRUE(name.empty() && m_warnings.empty()) << nth;
        }
        EXPECT_EQ(Names(*backend, L"eth2").size(), there + (done ? 1 : 0)) << nth;
    }
    EXPECT_TRUE(done);
    EXPECT_EQ(m_warnings.size(), 1u);
    EXPECT_GT(failed, 50u) << "or the test shows nothing";
}

} // namespace orl::test
