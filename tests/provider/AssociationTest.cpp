// The associations: what is sent for each record, and which failures leave a request.

#include "tests/provider/AssociationCases.h"

#include "com/OrlBstr.h"

#include <optional>

namespace orl::test
{
namespace
{

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

INSTANTIATE_TEST_SUITE_P(All, Association, ::testing::ValuesIn(AssociationCases()),
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

} // namespace
} // namespace orl::test
