// CZarn_FcoeHBA: what is sent for each adapter, and what happens when one cannot be sent.

#include "tests/provider/Fixture.h"

#include "classes/Zarn_FcoeHBA.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

ORL_FCOE_HBA Hba(const wchar_t* deviceId)
{
    ORL_FCOE_HBA hba;
    hba.hbaName = COrlString((L"host of " + std::wstring(deviceId)).c_str());
    hba.deviceId = deviceId;
    hba.name = L"fcoe v0.1 over eth0.1002";
    hba.worldWidePortName = L"2000525400fc0001";
    hba.worldWideNodeName = L"1000525400fc0001";
    hba.fcid = 0x010300;
    hba.busInformation = L"0000:00:03.0";
    hba.linkSpeed = L"1 Gbit";
    hba.linkStatus = L"Online";
    hba.instancePath = L"virtual\\net\\host0";
    hba.model = L"EN-10G2P";
    return hba;
}

class HbaManager : public ManagerTest
{
protected:
    HbaManager() { services->Add(hbaClass); }

    FakeClassPtr hbaClass = MakeFakeClass(L"Zarn_FCOEHBA");
    CZarn_FcoeHBA manager{&agent};
};

TEST_F(HbaManager, NamesItsClass)
{
    EXPECT_EQ(std::wstring(manager.GetCimClassName()), L"Zarn_FCOEHBA");
}

TEST_F(HbaManager, SendsEveryPropertyAsTextInOrder)
{
    agent.hbas = {Hba(L"eth0.1002")};
    const Outcome outcome = Get(manager, L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"");
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(Shown(outcome.instances[0]),
              (std::vector<std::wstring>{
                  L"DeviceID=eth0.1002", L"Name=fcoe v0.1 over eth0.1002", L"HBAName=host of eth0.1002",
                  L"FCID=0x10300", L"BusInformation=0000:00:03.0", L"LinkSpeed=1 Gbit", L"LinkStatus=Online",
                  L"Model=EN-10G2P", L"WorldWidePortName=2000525400fc0001", L"WorldWideNodeName=1000525400fc0001",
                  L"HBAID=host0", L"Adapter=Zarn_PhysicalEthernetAdapter.DeviceID=\"eth0.1002\""}));
    for (const FakePut& put : outcome.instances[0])
        EXPECT_EQ(put.type, VT_BSTR) << Narrow(put.name);
}

TEST_F(HbaManager, GetAsksTheAgentForTheDeviceOfThePathAndEnumerationForAll)
{
    Get(manager, L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"");
    Enumerate(manager);
    EXPECT_EQ(agent.calls, (std::vector<std::wstring>{L"EnumerateHBAs(eth0.1002)", L"EnumerateHBAs()"}));
}

TEST_F(HbaManager, StatusWordOfTheRequestReachesTheAgent)
{
    status = 0x1234;
    Enumerate(manager);
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x1234U);
    EXPECT_EQ(agent.statusSeen.ulReserved, 0U);
}

TEST_F(HbaManager, FcidIsUpperCaseHexadecimalWithoutLeadingZeros)
{
    const struct
    {
        ULONG fcid;
        const wchar_t* text;
    } cases[] = {{0x1A2B3C, L"0x1A2B3C"}, {0, L"0x0"}, {0xFFFFFFFF, L"0xFFFFFFFF"}, {0xa, L"0xA"}};
    for (const auto& row : cases)
    {
        agent.hbas = {Hba(L"X")};
        agent.hbas[0].fcid = row.fcid;
        const Outcome outcome = Enumerate(manager);
        ASSERT_EQ(outcome.instances.size(), 1U);
        EXPECT_EQ(ValueOf(outcome.instances[0], L"FCID"), row.text);
    }
}

TEST_F(HbaManager, HbaIdIsWhatFollowsTheLastBackslash)
{
    const struct
    {
        const wchar_t* instancePath;
        const wchar_t* id;
    } cases[] = {{L"PCI\\VEN\\3&1", L"3&1"}, {L"host0", L"host0"}, {L"PCI\\VEN\\", L""}, {L"", L""}, {L"a/b", L"a/b"}};
    for (const auto& row : cases)
    {
        ORL_FCOE_HBA hba;
        hba.instancePath = row.instancePath;
        EXPECT_EQ(std::wstring(HbaIdOf(hba)), row.id) << Narrow(row.instancePath);
    }
}

TEST_F(HbaManager, AgentThatRefusesMakesASuccessWithoutInstances)
{
    agent.hbas = {Hba(L"X")};
    agent.answer = false;
    const Outcome outcome = Enumerate(manager);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
}

TEST_F(HbaManager, UnknownDeviceMakesASuccessWithoutInstances)
{
    const Outcome outcome = Get(manager, L"Zarn_FCOEHBA.DeviceID=\"nothing\"");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
}

TEST_F(HbaManager, PathWithoutDeviceIdIsRefusedBeforeTheAgentIsAsked)
{
    ExpectRefusal([this] { Get(manager, L"Zarn_FCOEHBA.A=\"1\",B=\"2\""); },
                  {0x8004090F, L"Zarn_FCOEHBA.A=\"1\",B=\"2\"", 0x80041002, L"Src\\Zarn_FCOE", 260});
    EXPECT_TRUE(agent.calls.empty());
    EXPECT_TRUE(services->Lookups().empty());
}

TEST_F(HbaManager, ClassThatTheNamespaceLacksIsRefusedBeforeTheAgentIsAsked)
{
    services.Attach(new FakeWbemServices());
    EXPECT_THROW(Enumerate(manager), CWomProviderException);
    EXPECT_TRUE(agent.calls.empty());
}

TEST_F(HbaManager, ClassDefinitionIsLoadedOnceForAllInstances)
{
    agent.hbas = {Hba(L"A"), Hba(L"B"), Hba(L"C")};
    EXPECT_EQ(Enumerate(manager).instances.size(), 3U);
    EXPECT_EQ(services->Lookups(), std::vector<std::wstring>{L"Zarn_FCOEHBA"});
}

TEST_F(HbaManager, SuppressedPropertiesMakeEmptyInstances)
{
    agent.hbas = {Hba(L"A"), Hba(L"B")};
    suppressProperties = 1;
    const Outcome outcome = Enumerate(manager);
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_TRUE(outcome.instances[0].empty());
    EXPECT_TRUE(outcome.instances[1].empty());
}

TEST_F(HbaManager, PropertyThatIsRefusedIsLeftOutAndTheInstanceGoesOut)
{
    hbaClass->putFails[L"LinkSpeed"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    agent.hbas = {Hba(L"A")};
    const Outcome outcome = Enumerate(manager);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"LinkStatus"), L"Online");
    EXPECT_EQ(sink->Fake(0)->Value(L"LinkSpeed"), L"<none>");
}

TEST_F(HbaManager, InstanceThatCannotBeMadeIsTracedInTheFrameworksWordsAndTheOthersAreSent)
{
    hbaClass->spawn = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    agent.hbas = {Hba(L"A"), Hba(L"B"), Hba(L"C")};
    const TraceCapture trace;
    const Outcome outcome = Enumerate(manager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"DeviceID"), L"A");
    EXPECT_EQ(ValueOf(outcome.instances[1], L"DeviceID"), L"C");

    std::vector<std::string> failures;
    for (const std::string& message : trace.Messages())
    {
        if (message.rfind("SendInstance failed for ", 0) == 0)
            failures.push_back(message);
    }
    ASSERT_EQ(failures.size(), 1U);
    // The exception's own line, not the record's name.
    EXPECT_NE(failures[0].find("0x80041001"), std::string::npos) << failures[0];
    EXPECT_EQ(failures[0].find("host of B"), std::string::npos) << failures[0];
}

TEST_F(HbaManager, SinkThatRefusesOneInstanceStillGetsTheOthers)
{
    sink->indicate = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    agent.hbas = {Hba(L"A"), Hba(L"B"), Hba(L"C")};
    EXPECT_EQ(Enumerate(manager).instances.size(), 2U);
    EXPECT_EQ(sink->IndicateCalls(), 3U);
}

TEST_F(HbaManager, AnyOtherFailureIsTracedWithTheAdaptersName)
{
    agent.hbas = {Hba(L"A")};
    const TraceCapture trace;
    // The puts of one instance take a number of allocations; the first of them fails.
    hbaClass->spawn = [](ULONG) -> HRESULT { throw std::runtime_error("of no kind that is known"); };
    const Outcome outcome = Enumerate(manager);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
    EXPECT_THAT(trace.Messages(), ::testing::Contains("SendInstance failed for host of A"));
}

TEST_F(HbaManager, ExceptionOfTheAgentLeavesTheRequest)
{
    agent.inside = [] { throw std::runtime_error("the agent's own"); };
    EXPECT_THROW(Enumerate(manager), std::runtime_error);
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_F(HbaManager, TracesTheScopesOfAGet)
{
    agent.hbas = {Hba(L"X")};
    const TraceCapture trace;
    Get(manager, L"Zarn_FCOEHBA.DeviceID=\"X\"");
    EXPECT_EQ(trace.TieredMessages(),
              (std::vector<std::string>{
                  "1 ENTRY:  CZarn_FcoeHBA::GetObjectAsync", "2 ENTRY:  CZarn_Fcoe::GetDeviceIdFromPath",
                  "2 EXIT:  CZarn_Fcoe::GetDeviceIdFromPath", "2 ENTRY:  CZarn_FcoeHBA::QueryForAndSend",
                  "3 ENTRY:  CZarn_FcoeHBA::SendInstance", "4 ENTRY:  CZarn_Fcoe::MakeDevicePathFromDeviceID",
                  "4 EXIT:  CZarn_Fcoe::MakeDevicePathFromDeviceID", "3 EXIT:  CZarn_FcoeHBA::SendInstance",
                  "2 EXIT:  CZarn_FcoeHBA::QueryForAndSend", "1 EXIT:  CZarn_FcoeHBA::GetObjectAsync"}));
}

TEST_F(HbaManager, TracesTheScopesOfAnEnumeration)
{
    const TraceCapture trace;
    Enumerate(manager);
    EXPECT_EQ(trace.TieredMessages(), (std::vector<std::string>{"1 ENTRY:  CZarn_FcoeHBA::CreateInstanceEnumAsync",
                                                                "2 ENTRY:  CZarn_FcoeHBA::QueryForAndSend",
                                                                "2 EXIT:  CZarn_FcoeHBA::QueryForAndSend",
                                                                "1 EXIT:  CZarn_FcoeHBA::CreateInstanceEnumAsync"}));
}

} // namespace
} // namespace orl::test
