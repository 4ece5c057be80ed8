// The associations: what is sent for each record, what a path or a query narrows, and which failures leave a request.

#include "tests/provider/DeviceCases.h"

#include "assoc/Zarn_AdapterToHBAAssoc.h"
#include "assoc/Zarn_FabricToPortAssoc.h"
#include "assoc/Zarn_HBAToFabricAssoc.h"
#include "assoc/Zarn_HBAToLunAssoc.h"
#include "assoc/Zarn_HBAToStatisticsAssoc.h"
#include "assoc/Zarn_HBAToVLANAssoc.h"
#include "assoc/Zarn_PortToTargetAssoc.h"
#include "com/OrlBstr.h"

#include <optional>
#include <stdexcept>

namespace orl::test
{
namespace
{

struct AssociationCase
{
    std::string name;
    std::wstring cimClass; // of its instances
    std::string manager;
    std::wstring operation;
    std::unique_ptr<CWomClassManagerRoot> (*make)(COrlFcoeAgentIntf* agent);
    void (*add)(ScriptedAgent& agent, const wchar_t* deviceId);
    // The paths of the record of adapter X, and their builders.
    std::wstring antecedent;
    std::wstring dependent;
    std::string antecedentBuilder;
    std::string dependentBuilder;
    // What else a get reads from the two paths.
    std::string extraReader;
    std::wstring agentText;
    std::wstring sourceName;
    int pathLine;
    int agentLine;
};

const std::vector<AssociationCase>& Cases()
{
    static const std::wstring hba = L"Zarn_FCOEHBA.DeviceID=\"X\"";
    static const std::wstring fabric = L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"20000000fc00000a\"";
    static const std::vector<AssociationCase> cases = {
        {"AdapterToHBA", L"Zarn_FCoE_Adapter_HBA_Assoc", "CZarn_AdapterToHBAAssocMgr", L"EnumerateHBAs",
         &Make<CZarn_AdapterToHBAAssocMgr>, &Add<&ScriptedAgent::hbas, &SampleHba>,
         L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\"", hba, "MakeDevicePathFromDeviceID", "MakeHBAPathFromDeviceID",
         "", L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_AdapterToHBAAssoc", 66, 189},
        {"FabricToPort", L"Zarn_FCoE_Fabric_Port_Assoc", "CZarn_FabricToPortAssocMgr", L"EnumeratePorts",
         &Make<CZarn_FabricToPortAssocMgr>, &Add<&ScriptedAgent::ports, &SamplePort>, fabric,
         L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2101525400fc0001\"", "MakeFabricPathFromDeviceIDWWN",
         "MakePortPathFromWWN", "GetKeyFromPath", L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_FabricToPortAssoc",
         69, 194},
        {"HBAToFabric", L"Zarn_FCoE_HBA_Fabric_Assoc", "CZarn_HBAToFabricAssocMgr", L"EnumerateFabrics",
         &Make<CZarn_HBAToFabricAssocMgr>, &Add<&ScriptedAgent::fabrics, &SampleFabric>, hba, fabric,
         "MakeHBAPathFromDeviceID", "MakeFabricPathFromDeviceIDWWN", "", L"OrlAdapterAgent::EnumerateAdapters",
         L"Src\\Zarn_HBAToFabricAssoc", 69, 148},
        {"HBAToLUN", L"Zarn_FCoE_HBA_LUN_Assoc", "CZarn_HBAToLUNAssocMgr", L"EnumerateLUNs",
         &Make<CZarn_HBAToLUNAssocMgr>, &Add<&ScriptedAgent::luns, &SampleLun>, hba,
         L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"5\"", "MakeHBAPathFromDeviceID", "MakeLUNPathFromID", "GetIntKeyFromPath",
         L"OrlAdapterAgent::EnumerateLUNs", L"Src\\Zarn_HBAToLunAssoc", 69, 152},
        {"HbaToStats", L"Zarn_FCoE_HBA_Statistics_Assoc", "CZarn_HbaToStatsAssocMgr", L"EnumerateStatistics",
         &Make<CZarn_HbaToStatsAssocMgr>, &Add<&ScriptedAgent::statistics, &SampleStatistic>, hba,
         L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"tx_frames\"", "MakeHBAPathFromDeviceID", "MakeStatisticPath",
         "GetKeyFromPath", L"OrlAdapterAgent::EnumerateStatistics", L"Src\\Zarn_HBAToStatisticsAssoc", 69, 155},
        {"HBAToVLAN", L"Zarn_FCoE_HBA_VLAN_Assoc", "CZarn_HBAToVLANAssocMgr", L"EnumerateVLANs",
         &Make<CZarn_HBAToVLANAssocMgr>, &Add<&ScriptedAgent::vlans, &SampleVlan>, hba,
         L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"1002\"", "MakeHBAPathFromDeviceID", "MakeVLANPathFromID", "",
         L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_HBAToVLANAssoc", 69, 149},
        // The target's own names: its port's in the port path, its node's in the target path. And another class.
        {"PortToTarget", L"Zarn_FCoE_HBA_Fabric_Assoc", "CZarn_PortToTargetAssocMgr", L"EnumerateTargets",
         &Make<CZarn_PortToTargetAssocMgr>, &Add<&ScriptedAgent::targets, &SampleTarget>,
         L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2000525400fc2000\"",
         L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWidePortName=\"1000525400fc2000\"", "MakePortPathFromWWN",
         "MakeTargetPathFromWWPN", "", L"OrlAdapterAgent::EnumerateAdapters", L"Src\\Zarn_PortToTargetAssoc", 69, 149},
    };
    return cases;
}

// As the value of a key stands in a path.
std::wstring InPath(const std::wstring& text)
{
    std::wstring quoted = L"\"";
    for (const wchar_t c : text)
        quoted += (c == L'"' || c == L'\\' ? L"\\" : L"") + std::wstring(1, c);
    return quoted + L"\"";
}

std::wstring PathOfLink(const AssociationCase& c, const std::wstring& antecedent, const std::wstring& dependent)
{
    return c.cimClass + L".Antecedent=" + InPath(antecedent) + L",Dependent=" + InPath(dependent);
}

class AssociationManager : public ManagerTest
{
protected:
    AssociationManager()
    {
        for (const AssociationCase& c : Cases())
            services->Add(MakeFakeClass(c.cimClass));
    }
};

class Association : public AssociationManager, public ::testing::WithParamInterface<AssociationCase>
{
protected:
    Association() : manager(c.make(&agent)) {}

    Outcome GetLink(const std::wstring& antecedent, const std::wstring& dependent)
    {
        return Get(*manager, PathOfLink(c, antecedent, dependent).c_str());
    }
    std::vector<FakePut> Sent() const
    {
        return {{L"Antecedent", c.antecedent, VT_BSTR}, {L"Dependent", c.dependent, VT_BSTR}};
    }
    std::vector<std::string> InstanceScopes() const
    {
        const std::string first = "CZarn_Fcoe::" + c.antecedentBuilder;
        const std::string second = "CZarn_Fcoe::" + c.dependentBuilder;
        return {"2 ENTRY:  " + c.manager + "::SendInstance",
                "3 ENTRY:  " + first,
                "3 EXIT:  " + first,
                "3 ENTRY:  " + second,
                "3 EXIT:  " + second,
                "2 EXIT:  " + c.manager + "::SendInstance"};
    }
    std::vector<std::string> Within(const char* operation, std::vector<std::string> lines) const
    {
        lines.insert(lines.begin(), "1 ENTRY:  " + c.manager + "::" + operation);
        lines.push_back("1 EXIT:  " + c.manager + "::" + operation);
        return lines;
    }

    const AssociationCase& c = GetParam();
    std::unique_ptr<CWomClassManagerRoot> manager;
};

INSTANTIATE_TEST_SUITE_P(All, Association, ::testing::ValuesIn(Cases()),
                         [](const auto& testCase) { return testCase.param.name; });

TEST_P(Association, EnumerationSendsTwoPathsForEachRecordInTheAgentsOrder)
{
    EXPECT_EQ(std::wstring(manager->GetCimClassName()), c.cimClass);
    for (const wchar_t* device : {L"B", L"X", L"A"})
        c.add(agent, device);
    status = 0x66;
    const Outcome outcome = Enumerate(*manager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 3U);
    EXPECT_EQ(outcome.instances[1], Sent());
    EXPECT_NE(ValueOf(outcome.instances[0], L"Antecedent").find(L".DeviceID=\"B\""), std::wstring::npos);
    EXPECT_NE(ValueOf(outcome.instances[2], L"Dependent").find(L".DeviceID=\"A\""), std::wstring::npos);
    EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + L"()"});
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x66U);
    EXPECT_EQ(services->Lookups(), std::vector<std::wstring>{c.cimClass});
    EXPECT_EQ(sink->Fake(1)->Value(L"__CLASS"), L"<none>");
    EXPECT_EQ(sink->Fake(1)->Definition()->name, c.cimClass);
}

TEST_P(Association, NoRecordMakesASuccessWithoutInstances)
{
    const Outcome outcome = Enumerate(*manager);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
}

TEST_P(Association, PropertiesAreSentAlsoWhenOthersSuppressThem)
{
    c.add(agent, L"X");
    suppressProperties = 1;
    EXPECT_EQ(Enumerate(*manager).instances.at(0), Sent());
}

TEST_P(Association, GetAsksForTheAdapterOfTheAntecedent)
{
    c.add(agent, L"X");
    const Outcome outcome = GetLink(c.antecedent, c.dependent);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(outcome.instances[0], Sent());
    EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + L"(X)"});
}

TEST_P(Association, GetDoesNotCompareTheAdapterOfTheDependent)
{
    c.add(agent, L"X");
    std::wstring other = c.dependent;
    other.replace(other.find(L"\"X\""), 3, L"\"Y\"");
    EXPECT_EQ(GetLink(c.antecedent, other).instances.size(), 1U);
    EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + L"(X)"});
}

// The agent filters by adapter, and what it hands out is sent.
TEST_P(Association, GetSendsRecordsOfOtherAdaptersThatTheAgentHandsOut)
{
    c.add(agent, L"A");
    c.add(agent, L"X");
    const Outcome outcome = GetLink(c.antecedent, c.dependent);
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_NE(ValueOf(outcome.instances[0], L"Antecedent").find(L".DeviceID=\"A\""), std::wstring::npos);
    EXPECT_EQ(outcome.instances[1], Sent());
}

TEST_P(Association, ClassThatTheNamespaceLacksIsRefusedBeforeTheAgentIsAsked)
{
    c.add(agent, L"X");
    services.Attach(new FakeWbemServices());
    EXPECT_THROW(Enumerate(*manager), CWomProviderException);
    EXPECT_THROW(GetLink(c.antecedent, c.dependent), CWomProviderException);
    EXPECT_TRUE(agent.calls.empty());
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(Association, PathWithoutBothKeysIsRefusedBeforeTheAgentIsAsked)
{
    const std::wstring paths[] = {c.cimClass + L".Antecedent=" + InPath(c.antecedent),
                                  c.cimClass + L".Dependent=" + InPath(c.dependent),
                                  c.cimClass + L".Antecedent=" + InPath(c.antecedent) + L",Other=\"1\"",
                                  c.cimClass + L"=" + InPath(c.antecedent)};
    for (const std::wstring& path : paths)
        ExpectRefusal([&] { Get(*manager, path.c_str()); }, {0x8004090F, path, 0x80041002, c.sourceName, c.pathLine});
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(Association, AntecedentWithoutDeviceIdIsRefusedBeforeTheAgentIsAsked)
{
    for (const wchar_t* antecedent : {L"Zarn_FCOEHBA.A=\"1\",B=\"2\"", L"no path at all", L""})
        ExpectRefusal([&] { GetLink(antecedent, c.dependent); },
                      {0x8004090F, antecedent, 0x80041002, L"Src\\Zarn_FCOE", 260});
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(Association, RefusalOfTheAgentLeavesTheRequestUnderTheAssociationsOwnText)
{
    c.add(agent, L"X");
    agent.answer = false;
    const ExpectedRefusal refusal{0x8004091A, c.agentText, 0x80041002, c.sourceName, c.agentLine};
    ExpectRefusal([&] { Enumerate(*manager); }, refusal);
    ExpectRefusal([&] { GetLink(c.antecedent, c.dependent); }, refusal);
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(Association, FailureOfOneInstanceEndsTheRequestAndLeavesTheOthersDelivered)
{
    for (const wchar_t* device : {L"A", L"B", L"C"})
        c.add(agent, device);
    sink->indicate = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    const TraceCapture trace;
    EXPECT_THROW(Enumerate(*manager), CWomProviderException);
    EXPECT_EQ(sink->Objects().size(), 1U);
    EXPECT_EQ(sink->IndicateCalls(), 2U);
    for (const std::string& message : trace.Messages())
        EXPECT_EQ(message.find("failed"), std::string::npos) << message;
}

TEST_P(Association, LackOfMemoryLeavesTheRequest)
{
    c.add(agent, L"X");
    agent.answer = false;
    std::optional<HRESULT> code;
    // The class name, then the text of the agent's refusal.
    for (const ULONG n : {1U, 2U})
    {
        OrlFailBstrAllocation(n);
        try
        {
            Enumerate(*manager);
        }
        catch (const CAtlException& failure)
        {
            code = failure.m_hr;
        }
        OrlFailBstrAllocation(0);
        EXPECT_EQ(code, E_OUTOFMEMORY) << n;
        code.reset();
    }
}

TEST_P(Association, TracesItsLifeAndItsRequests)
{
    const TraceCapture life;
    c.make(&agent).reset();
    EXPECT_EQ(life.TieredMessages(), (std::vector<std::string>{"1 ENTRY:  " + c.manager + "::" + c.manager,
                                                               "1 EXIT:  " + c.manager + "::" + c.manager,
                                                               "1 ENTRY:  " + c.manager + "::~" + c.manager,
                                                               "1 EXIT:  " + c.manager + "::~" + c.manager}));
    c.add(agent, L"X");
    const TraceCapture enumeration;
    Enumerate(*manager);
    EXPECT_EQ(enumeration.TieredMessages(), Within("CreateInstanceEnumAsync", InstanceScopes()));

    std::vector<std::string> lines = InstanceScopes();
    std::vector<std::string> readers = {"GetDeviceIdFromPath"};
    if (!c.extraReader.empty())
        readers.push_back(c.extraReader);
    for (auto reader = readers.rbegin(); reader != readers.rend(); ++reader)
        lines.insert(lines.begin(), {"2 ENTRY:  CZarn_Fcoe::" + *reader, "2 EXIT:  CZarn_Fcoe::" + *reader});
    const TraceCapture get;
    GetLink(c.antecedent, c.dependent);
    EXPECT_EQ(get.TieredMessages(), Within("GetObjectAsync", lines));
}

TEST_P(Association, ChangesAreRefusedAndMethodsUnknown)
{
    EXPECT_EQ(static_cast<ULONG>(Update(*manager).status), 0x80041003U);
    EXPECT_EQ(static_cast<ULONG>(Delete(*manager, PathOfLink(c, c.antecedent, c.dependent).c_str()).status),
              0x80041003U);
    EXPECT_EQ(
        Call(*manager, PathOfLink(c, c.antecedent, c.dependent).c_str(), L"Any", MakeFakeClass(L"__PARAMETERS")).status,
        static_cast<HRESULT>(WBEM_E_PROVIDER_NOT_CAPABLE));
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(Association, QueryIsNarrowedByTheTwoThatDoSoAndAnswersEverythingElsewhere)
{
    const bool narrows = c.name == "AdapterToHBA" || c.name == "FabricToPort";
    const std::wstring select = L"SELECT * FROM " + c.cimClass;
    const struct
    {
        std::wstring query;
        bool namesAdapter;
        const char* trace;
    } rows[] = {
        {select + L" WHERE Antecedent = " + InPath(c.antecedent), true, nullptr},
        {select + L" WHERE Dependent = 'x' AND Antecedent = " + InPath(c.antecedent), true, nullptr},
        {select, false, "Must have ParentId for query to work type"},
        {select + L" WHERE Dependent = " + InPath(c.dependent), false, "Must have ParentId for query to work type"},
        {select + L" WHERE Antecedent = 'x' OR Dependent = 'y'", false, "Must have ParentId for query to work type"},
        {L"SELECT FROM nothing", false, "Bad WQL - sending everything"},
    };
    c.add(agent, L"X");
    for (const auto& row : rows)
    {
        SCOPED_TRACE(Narrow(row.query));
        agent.calls.clear();
        const TraceCapture trace;
        EXPECT_EQ(Query(*manager, row.query.c_str()).instances.size(), 1U);
        EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + (narrows && row.namesAdapter ? L"(X)" : L"()")});

        const std::string enumeration = "ENTRY:  " + c.manager + "::CreateInstanceEnumAsync";
        std::vector<std::string> begin = {"1 " + enumeration};
        if (narrows)
            begin = {"1 ENTRY:  " + c.manager + "::ExecQueryAsync",
                     row.namesAdapter ? "2 ENTRY:  CZarn_Fcoe::GetDeviceIdFromPath" : std::string("1 ") + row.trace};
        if (narrows && !row.namesAdapter)
            begin.push_back("2 " + enumeration);
        std::vector<std::string> traced = trace.TieredMessages();
        ASSERT_GE(traced.size(), begin.size());
        traced.resize(begin.size());
        EXPECT_EQ(traced, begin);
    }
}

TEST_F(AssociationManager, QueryReadsTheAdapterOfTheAntecedentAndNothingElse)
{
    for (const std::size_t narrowing : {0U, 1U})
    {
        const AssociationCase& c = Cases()[narrowing];
        SCOPED_TRACE(c.name);
        c.add(agent, L"X");
        const auto manager = c.make(&agent);
        const auto query = [&](const std::wstring& antecedent)
        {
            const std::wstring text = L"SELECT * FROM " + c.cimClass + L" WHERE Antecedent = " + InPath(antecedent);
            return Query(*manager, text.c_str());
        };
        agent.calls.clear();
        EXPECT_EQ(query(L"Any.DeviceID=\"X\"").instances.size(), 1U) << "a fabric's name is not asked for";
        EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + L"(X)"});

        agent.calls.clear();
        for (const wchar_t* without : {L"Any.A=\"1\",B=\"2\"", L"no path at all", L""})
            ExpectRefusal([&] { query(without); }, {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 260});
        EXPECT_TRUE(agent.calls.empty());

        agent.answer = false;
        ExpectRefusal([&] { query(c.antecedent); }, {0x8004091A, c.agentText, 0x80041002, c.sourceName, c.agentLine});
        agent.answer = true;
    }
    EXPECT_EQ(sink->Taken(), 2U);
}

// Two of the classes have a filter of their own, which reads the Dependent.
TEST_F(AssociationManager, DependentOnlyHasToBeThereForThoseThatDoNotFilterByIt)
{
    std::size_t count = 0;
    for (const AssociationCase& c : Cases())
    {
        if (c.name == "HBAToLUN" || c.name == "HbaToStats")
            continue;
        ++count;
        c.add(agent, L"X");
        c.add(agent, L"X");
        const auto manager = c.make(&agent);
        for (const wchar_t* dependent :
             {L"Any.DeviceID=\"X\",WorldWideNodeName=\"no\",WorldWidePortName=\"such\",VlanID=\"4095\"", L"Any.A=\"1\"",
              L"no path at all", L""})
        {
            SCOPED_TRACE(c.name + ", " + Narrow(dependent));
            agent.calls.clear();
            const Outcome outcome = Get(*manager, PathOfLink(c, c.antecedent, dependent).c_str());
            EXPECT_EQ(outcome.status, 0);
            EXPECT_EQ(outcome.instances.size(), 2U);
            EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + L"(X)"});
        }
    }
    EXPECT_EQ(count, 5U);
}

TEST_F(AssociationManager, LunOfTheDependentNarrowsAGetUnlessItIsZeroOrText)
{
    for (const ULONG id : {1U, 5U, 5U})
    {
        agent.luns.push_back(SampleLun(L"X"));
        agent.luns.back().lunId = id;
    }
    CZarn_HBAToLUNAssocMgr manager(&agent);
    const AssociationCase& c = Cases()[3];
    const struct
    {
        const wchar_t* dependent;
        std::size_t sent;
    } rows[] = {{L"Zarn_FCoeLUN.DeviceID=\"X\",ID=5", 2},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=1", 1},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=2", 0},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=0", 3},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"5\"", 3}};
    for (const auto& row : rows)
        EXPECT_EQ(Get(manager, PathOfLink(c, c.antecedent, row.dependent).c_str()).instances.size(), row.sent)
            << Narrow(row.dependent);
    EXPECT_EQ(Enumerate(manager).instances.size(), 3U);

    const wchar_t* without = L"Zarn_FCoeLUN.DeviceID=\"X\"";
    ExpectRefusal([&] { Get(manager, PathOfLink(c, c.antecedent, without).c_str()); },
                  {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 321});
}

TEST_F(AssociationManager, CounterOfTheDependentNarrowsAGetWithoutRegardToCase)
{
    for (const wchar_t* name : {L"tx_frames", L"rx_frames"})
    {
        agent.statistics.push_back(SampleStatistic(L"X"));
        agent.statistics.back().statistic = name;
    }
    CZarn_HbaToStatsAssocMgr manager(&agent);
    const AssociationCase& c = Cases()[4];
    const struct
    {
        const wchar_t* dependent;
        std::size_t sent;
    } rows[] = {{L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"RX_Frames\"", 1},
                {L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"none\"", 0},
                {L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"\"", 2},
                {L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=5", 2}};
    for (const auto& row : rows)
        EXPECT_EQ(Get(manager, PathOfLink(c, c.antecedent, row.dependent).c_str()).instances.size(), row.sent)
            << Narrow(row.dependent);
    EXPECT_EQ(Enumerate(manager).instances.size(), 2U);

    const wchar_t* without = L"Zarn_FCoEStatistics.DeviceID=\"X\"";
    ExpectRefusal([&] { Get(manager, PathOfLink(c, c.antecedent, without).c_str()); },
                  {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 288});
}

TEST_F(AssociationManager, FabricOfTheAntecedentMustBeNamedAndNarrowsNothing)
{
    agent.ports = {SamplePort(L"X"), SamplePort(L"X")};
    agent.ports[1].fabricNodeWWN = L"20000000fc00000b";
    CZarn_FabricToPortAssocMgr manager(&agent);
    const AssociationCase& c = Cases()[1];
    EXPECT_EQ(Get(manager, PathOfLink(c, c.antecedent, c.dependent).c_str()).instances.size(), 2U);
    agent.calls.clear();
    const wchar_t* without = L"Zarn_FCoEFabric.DeviceID=\"X\"";
    ExpectRefusal([&] { Get(manager, PathOfLink(c, without, c.dependent).c_str()); },
                  {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 288});
    EXPECT_TRUE(agent.calls.empty());
}

TEST_F(AssociationManager, AdapterSideCarriesTheSystemKeysUnlessTheyAreUnwanted)
{
    agent.hbas = {SampleHba(L"X")};
    omitSystemKeys = 0;
    CZarn_AdapterToHBAAssocMgr manager(&agent);
    const std::wstring adapter = ValueOf(Enumerate(manager).instances.at(0), L"Antecedent");
    EXPECT_EQ(adapter.rfind(L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\",CreationClassName=", 0), 0U)
        << Narrow(adapter);
}

} // namespace
} // namespace orl::test
