// What a path or a query narrows in the associations, and what they must not look at.

#include "tests/provider/AssociationCases.h"

#include "assoc/Zarn_AdapterToHBAAssoc.h"
#include "assoc/Zarn_FabricToPortAssoc.h"
#include "assoc/Zarn_HBAToLunAssoc.h"
#include "assoc/Zarn_HBAToStatisticsAssoc.h"

namespace orl::test
{
namespace
{

class AssociationFilter : public AssociationManager
{
protected:
    struct Narrowed
    {
        const wchar_t* dependent;
        std::size_t sent;
    };

    // How many instances a get sends for each dependent.
    void ExpectSent(CWomClassManagerRoot& manager, const AssociationCase& c, const std::vector<Narrowed>& rows)
    {
        for (const Narrowed& row : rows)
            EXPECT_EQ(Get(manager, PathOfLink(c, c.antecedent, row.dependent).c_str()).instances.size(), row.sent)
                << Narrow(row.dependent);
    }
};

class AssociationQuery : public AssociationManager, public ::testing::WithParamInterface<AssociationCase>
{
};

INSTANTIATE_TEST_SUITE_P(All, AssociationQuery, ::testing::ValuesIn(AssociationCases()),
                         [](const auto& testCase) { return testCase.param.name; });

TEST_P(AssociationQuery, IsNarrowedByTheTwoThatDoSoAndAnswersEverythingElsewhere)
{
    const AssociationCase& c = GetParam();
    const auto manager = c.make(&agent);
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

TEST_F(AssociationFilter, QueryReadsTheAdapterOfTheAntecedentAndNothingElse)
{
    for (const char* narrowing : {"AdapterToHBA", "FabricToPort"})
    {
        const AssociationCase& c = AssociationOf(narrowing);
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

template <typename Manager>
class EnumeratesOtherwise final : public Manager
{
public:
    using Manager::Manager;
    HRESULT CreateInstanceEnumAsync(CWomContext&, CComPtr<IWbemObjectSink>) override { return 2; }
};

// A manager built on one of these may enumerate in its own way.
TEST_F(AssociationFilter, QueryThatNarrowsNothingIsTheManagersOwnEnumeration)
{
    EnumeratesOtherwise<CZarn_AdapterToHBAAssocMgr> adapters(&agent);
    EnumeratesOtherwise<CZarn_FabricToPortAssocMgr> fabrics(&agent);
    for (CWomClassManagerRoot* manager :
         {static_cast<CWomClassManagerRoot*>(&adapters), static_cast<CWomClassManagerRoot*>(&fabrics)})
    {
        const std::wstring select = L"SELECT * FROM " + std::wstring(manager->GetCimClassName());
        agent.calls.clear();
        EXPECT_EQ(Query(*manager, L"SELECT FROM nothing").status, 2);
        EXPECT_EQ(Query(*manager, (select + L" WHERE Dependent = 'x'").c_str()).status, 2);
        EXPECT_TRUE(agent.calls.empty());
        EXPECT_EQ(Query(*manager, (select + L" WHERE Antecedent = 'A.DeviceID=\"X\"'").c_str()).status, 0);
        EXPECT_EQ(agent.calls.size(), 1U);
    }
}

// Two of the classes have a filter of their own, which reads the Dependent.
TEST_F(AssociationFilter, DependentOnlyHasToBeThereForThoseThatDoNotFilterByIt)
{
    std::size_t count = 0;
    for (const AssociationCase& c : AssociationCases())
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

TEST_F(AssociationFilter, LunOfTheDependentNarrowsAGetUnlessItIsZeroOrText)
{
    for (const ULONG id : {1U, 5U, 5U})
    {
        agent.luns.push_back(SampleLun(L"X"));
        agent.luns.back().lunId = id;
    }
    CZarn_HBAToLUNAssocMgr manager(&agent);
    const AssociationCase& c = AssociationOf("HBAToLUN");
    ExpectSent(manager, c,
               {{L"Zarn_FCoeLUN.DeviceID=\"X\",ID=5", 2},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=1", 1},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=2", 0},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=0", 3},
                {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"5\"", 3}});
    EXPECT_EQ(Enumerate(manager).instances.size(), 3U);

    const wchar_t* without = L"Zarn_FCoeLUN.DeviceID=\"X\"";
    ExpectRefusal([&] { Get(manager, PathOfLink(c, c.antecedent, without).c_str()); },
                  {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 321});
}

TEST_F(AssociationFilter, CounterOfTheDependentNarrowsAGetWithoutRegardToCase)
{
    for (const wchar_t* name : {L"tx_frames", L"rx_frames"})
    {
        agent.statistics.push_back(SampleStatistic(L"X"));
        agent.statistics.back().statistic = name;
    }
    CZarn_HbaToStatsAssocMgr manager(&agent);
    const AssociationCase& c = AssociationOf("HbaToStats");
    ExpectSent(manager, c,
               {{L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"RX_Frames\"", 1},
                {L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"none\"", 0},
                {L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"\"", 2},
                {L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=5", 2}});
    EXPECT_EQ(Enumerate(manager).instances.size(), 2U);

    const wchar_t* without = L"Zarn_FCoEStatistics.DeviceID=\"X\"";
    ExpectRefusal([&] { Get(manager, PathOfLink(c, c.antecedent, without).c_str()); },
                  {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 288});
}

TEST_F(AssociationFilter, FabricOfTheAntecedentMustBeNamedAndNarrowsNothing)
{
    agent.ports = {SamplePort(L"X"), SamplePort(L"X")};
    agent.ports[1].fabricNodeWWN = L"20000000fc00000b";
    CZarn_FabricToPortAssocMgr manager(&agent);
    const AssociationCase& c = AssociationOf("FabricToPort");
    EXPECT_EQ(Get(manager, PathOfLink(c, c.antecedent, c.dependent).c_str()).instances.size(), 2U);
    agent.calls.clear();
    const wchar_t* without = L"Zarn_FCoEFabric.DeviceID=\"X\"";
    ExpectRefusal([&] { Get(manager, PathOfLink(c, without, c.dependent).c_str()); },
                  {0x8004090F, without, 0x80041002, L"Src\\Zarn_FCOE", 288});
    EXPECT_TRUE(agent.calls.empty());
}

TEST_F(AssociationFilter, AdapterSideCarriesTheSystemKeysUnlessTheyAreUnwanted)
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
