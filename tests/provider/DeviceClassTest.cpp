// What all device classes have in common: what is sent for each record, and what happens when something fails.

#include "tests/provider/DeviceCases.h"

#include "com/OrlBstr.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

class DeviceClass : public ManagerTest, public ::testing::WithParamInterface<DeviceCase>
{
protected:
    DeviceClass() : manager(c.make(&agent)) { services->Add(cimClass); }

    void Fill(std::initializer_list<const wchar_t*> devices)
    {
        for (const wchar_t* device : devices)
            c.add(agent, device);
    }
    Outcome GetX() { return Get(*manager, c.Path().c_str()); }
    Outcome EnumerateAll() { return Enumerate(*manager); }

    static std::vector<std::string> SendFailures(const TraceCapture& trace)
    {
        std::vector<std::string> failures;
        for (const std::string& message : trace.Messages())
        {
            if (message.rfind("SendInstance failed for ", 0) == 0)
                failures.push_back(message);
        }
        return failures;
    }
    // Sends three records of which the second meets what the test has set up.
    void ExpectTheSecondOfThreeIsLeftOut()
    {
        Fill({L"A", L"B", L"C"});
        const TraceCapture trace;
        const Outcome outcome = EnumerateAll();
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.instances.size(), 2U);
        EXPECT_EQ(ValueOf(outcome.instances[0], L"DeviceID"), L"A");
        EXPECT_EQ(ValueOf(outcome.instances[1], L"DeviceID"), L"C");
        EXPECT_EQ(SendFailures(trace), std::vector<std::string>{"SendInstance failed for " + c.failureName});
    }
    // The scopes of the worker and of one instance at this tier.
    std::vector<std::string> InstanceScopes(int tier) const
    {
        const auto at = [](int n, const std::string& text) { return std::to_string(n) + " " + text; };
        std::vector<std::string> lines = {at(tier, "ENTRY:  " + c.manager + "::SendInstance")};
        for (const std::string& builder : c.builders)
        {
            lines.push_back(at(tier + 1, "ENTRY:  CZarn_Fcoe::" + builder));
            lines.push_back(at(tier + 1, "EXIT:  CZarn_Fcoe::" + builder));
        }
        lines.push_back(at(tier, "EXIT:  " + c.manager + "::SendInstance"));
        if (c.workerIsTraced)
        {
            lines.insert(lines.begin(), at(tier - 1, "ENTRY:  " + c.manager + "::QueryForAndSend"));
            lines.push_back(at(tier - 1, "EXIT:  " + c.manager + "::QueryForAndSend"));
        }
        return lines;
    }

    const DeviceCase& c = GetParam();
    FakeClassPtr cimClass = MakeFakeClass(c.cimClass);
    std::unique_ptr<CWomClassManagerRoot> manager;
};

INSTANTIATE_TEST_SUITE_P(All, DeviceClass, ::testing::ValuesIn(DeviceCases()),
                         [](const auto& testCase) { return testCase.param.name; });

std::vector<DeviceCase> Cases(bool (*wanted)(const DeviceCase&))
{
    std::vector<DeviceCase> cases = DeviceCases();
    std::erase_if(cases, [&](const DeviceCase& c) { return !wanted(c); });
    return cases;
}

class DeviceClassWithTwoKeys : public DeviceClass
{
};

INSTANTIATE_TEST_SUITE_P(All, DeviceClassWithTwoKeys,
                         ::testing::ValuesIn(Cases([](const DeviceCase& c) { return !c.key.empty(); })),
                         [](const auto& testCase) { return testCase.param.name; });

// A virtual port can be deleted.
class DeviceClassButPort : public DeviceClass
{
};

INSTANTIATE_TEST_SUITE_P(All, DeviceClassButPort,
                         ::testing::ValuesIn(Cases([](const DeviceCase& c) { return c.name != "Port"; })),
                         [](const auto& testCase) { return testCase.param.name; });

TEST_P(DeviceClass, NamesItsClassLetterForLetter)
{
    EXPECT_EQ(std::wstring(manager->GetCimClassName()), c.cimClass);
}

TEST_P(DeviceClass, GetSendsEveryPropertyInOrder)
{
    Fill({L"X"});
    const Outcome outcome = GetX();
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    EXPECT_EQ(outcome.instances[0], c.sent);
}

TEST_P(DeviceClass, EnumerationSendsEveryRecordInTheAgentsOrder)
{
    Fill({L"B", L"X", L"A"});
    const Outcome outcome = EnumerateAll();
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 3U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"DeviceID"), L"B");
    EXPECT_EQ(outcome.instances[1], c.sent);
    EXPECT_EQ(ValueOf(outcome.instances[2], L"DeviceID"), L"A");
}

TEST_P(DeviceClass, AgentIsAskedOnceForTheDeviceOfThePathOrForAll)
{
    GetX();
    EnumerateAll();
    EXPECT_EQ(agent.calls, (std::vector<std::wstring>{c.operation + L"(X)", c.operation + L"()"}));
}

TEST_P(DeviceClass, StatusWordOfTheRequestReachesTheAgent)
{
    status = 0x1234;
    EnumerateAll();
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x1234U);
    EXPECT_EQ(agent.statusSeen.ulReserved, 0U);
}

TEST_P(DeviceClass, AgentThatRefusesMakesASuccessWithoutInstances)
{
    Fill({L"X"});
    agent.answer = false;
    for (const Outcome& outcome : {GetX(), EnumerateAll()})
    {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(outcome.instances.empty());
    }
}

TEST_P(DeviceClass, NothingThatMatchesMakesASuccessWithoutInstances)
{
    const Outcome outcome = GetX();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
}

TEST_P(DeviceClass, PathWithoutDeviceIdIsRefusedBeforeTheAgentIsAsked)
{
    const std::wstring path = c.cimClass + L".A=\"1\",B=\"2\"";
    ExpectRefusal([&] { Get(*manager, path.c_str()); }, {0x8004090F, path, 0x80041002, L"Src\\Zarn_FCOE", 260});
    EXPECT_TRUE(agent.calls.empty());
    EXPECT_TRUE(services->Lookups().empty());
}

TEST_P(DeviceClassWithTwoKeys, PathWithoutTheSecondKeyIsRefusedBeforeTheAgentIsAsked)
{
    const std::wstring path = c.cimClass + L".DeviceID=\"X\",Other=\"2\"";
    ExpectRefusal([&] { Get(*manager, path.c_str()); }, {0x8004090F, path, 0x80041002, L"Src\\Zarn_FCOE", c.keyLine});
    EXPECT_TRUE(agent.calls.empty());
    EXPECT_TRUE(services->Lookups().empty());
}

TEST_P(DeviceClass, ClassThatTheNamespaceLacksIsRefusedBeforeTheAgentIsAsked)
{
    services.Attach(new FakeWbemServices());
    EXPECT_THROW(GetX(), CWomProviderException);
    EXPECT_THROW(EnumerateAll(), CWomProviderException);
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(DeviceClass, ClassDefinitionIsLoadedOnceForAllInstances)
{
    Fill({L"A", L"B", L"C"});
    EXPECT_EQ(EnumerateAll().instances.size(), 3U);
    EXPECT_EQ(services->Lookups(), std::vector<std::wstring>(c.enumerationLoadsClass ? 2 : 1, c.cimClass));
}

TEST_P(DeviceClass, SuppressedPropertiesLeaveWhatEveryInstanceCarries)
{
    Fill({L"A", L"B"});
    suppressProperties = 0x80000000;
    const Outcome outcome = EnumerateAll();
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(outcome.instances[0], c.always);
    EXPECT_EQ(outcome.instances[1], c.always);
}

TEST_P(DeviceClass, PropertyThatIsRefusedIsLeftOutAndTheInstanceGoesOut)
{
    cimClass->putFails[L"DeviceID"] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    Fill({L"X"});
    const Outcome outcome = EnumerateAll();
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 1U);
    std::vector<FakePut> rest = c.sent;
    std::erase_if(rest, [](const FakePut& put) { return put.name == L"DeviceID"; });
    EXPECT_EQ(outcome.instances[0], rest);
}

TEST_P(DeviceClass, RecordThatCannotBeSentIsTracedAndTheOthersAreSent)
{
    cimClass->spawn = [](ULONG n) -> HRESULT
    {
        if (n == 2)
            throw std::runtime_error("of no kind that is known");
        return WBEM_S_NO_ERROR;
    };
    ExpectTheSecondOfThreeIsLeftOut();
}

TEST_P(DeviceClass, SinkThatRefusesOneInstanceStillGetsTheOthers)
{
    sink->indicate = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    Fill({L"A", L"B", L"C"});
    const TraceCapture trace;
    const Outcome outcome = EnumerateAll();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(sink->IndicateCalls(), 3U);
    EXPECT_EQ(SendFailures(trace).size(), 1U);
}

// Zarn_FCOEHBA alone traces a refusal of the framework in the framework's words.
TEST_P(DeviceClassWithTwoKeys, RefusalOfTheFrameworkIsTracedUnderTheRecordsName)
{
    cimClass->spawn = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    ExpectTheSecondOfThreeIsLeftOut();
}

TEST_P(DeviceClass, ExceptionOfTheAgentLeavesTheRequest)
{
    agent.inside = [] { throw std::runtime_error("the agent's own"); };
    EXPECT_THROW(GetX(), std::runtime_error);
    EXPECT_THROW(EnumerateAll(), std::runtime_error);
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(DeviceClass, LackOfMemoryForTheClassNameLeavesTheRequest)
{
    Fill({L"X"});
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(c.Path().c_str()), WBEM_S_NO_ERROR);
    const CComPtr<IWbemObjectSink> client(sink.p);
    const std::function<HRESULT(CWomContext&)> requests[] = {
        [&](CWomContext& context) { return manager->GetObjectAsync(path, context, client); },
        [&](CWomContext& context) { return manager->CreateInstanceEnumAsync(context, client); }};
    for (const auto& request : requests)
    {
        CWomContext context(services);
        OrlFailBstrAllocation(1);
        try
        {
            request(context);
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const CAtlException& failure)
        {
            EXPECT_EQ(failure.m_hr, E_OUTOFMEMORY);
        }
        OrlFailBstrAllocation(0);
    }
    EXPECT_TRUE(services->Lookups().empty());
    EXPECT_TRUE(agent.calls.empty());
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_P(DeviceClass, TracesTheScopesOfAGet)
{
    Fill({L"X"});
    std::vector<std::string> expected = {"1 ENTRY:  " + c.manager + "::GetObjectAsync",
                                         "2 ENTRY:  CZarn_Fcoe::GetDeviceIdFromPath",
                                         "2 EXIT:  CZarn_Fcoe::GetDeviceIdFromPath"};
    if (!c.key.empty())
    {
        expected.push_back("2 ENTRY:  CZarn_Fcoe::" + c.keyReader);
        expected.push_back("2 EXIT:  CZarn_Fcoe::" + c.keyReader);
    }
    for (const std::string& line : InstanceScopes(c.workerIsTraced ? 3 : 2))
        expected.push_back(line);
    expected.push_back("1 EXIT:  " + c.manager + "::GetObjectAsync");

    const TraceCapture trace;
    GetX();
    EXPECT_EQ(trace.TieredMessages(), expected);
}

TEST_P(DeviceClass, TracesTheScopesOfAnEnumeration)
{
    Fill({L"X"});
    std::vector<std::string> expected = InstanceScopes(c.workerIsTraced ? 3 : 2);
    expected.insert(expected.begin(), "1 ENTRY:  " + c.manager + "::CreateInstanceEnumAsync");
    expected.push_back("1 EXIT:  " + c.manager + "::CreateInstanceEnumAsync");

    const TraceCapture trace;
    EnumerateAll();
    EXPECT_EQ(trace.TieredMessages(), expected);
}

TEST_P(DeviceClass, QueryIsAnsweredByTheFrameworkThroughAnEnumeration)
{
    Fill({L"X", L"Y"});
    const std::wstring query = L"SELECT * FROM " + c.cimClass + L" WHERE DeviceID = \"X\"";
    const Outcome outcome = Query(*manager, query.c_str());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(agent.calls, std::vector<std::wstring>{c.operation + L"()"});
}

TEST_P(DeviceClass, CreatingIsLeftToTheFrameworkWhichIsNotCapable)
{
    CComBSTR path;
    const TraceCapture trace;
    const Outcome outcome = Run(
        [&](CWomContext& context)
        {
            CWomClassObject instance(context);
            return manager->CreateInstanceAsync(instance, context, path, CComPtr<IWbemObjectSink>(sink.p));
        });
    EXPECT_EQ(outcome.status, static_cast<HRESULT>(WBEM_E_PROVIDER_NOT_CAPABLE));
    EXPECT_EQ(path.m_str, nullptr);
    EXPECT_TRUE(trace.Messages().empty());
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(DeviceClass, UpdateIsDenied)
{
    const TraceCapture trace;
    EXPECT_EQ(static_cast<ULONG>(Update(*manager).status), 0x80041003U);
    EXPECT_EQ(trace.TieredMessages(), (std::vector<std::string>{"1 ENTRY:  CZarn_Fcoe::UpdateInstanceAsync",
                                                                "1 EXIT:  CZarn_Fcoe::UpdateInstanceAsync"}));
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(DeviceClassButPort, DeletingIsDeniedWithoutATrace)
{
    const TraceCapture trace;
    EXPECT_EQ(static_cast<ULONG>(Delete(*manager, c.Path().c_str()).status), 0x80041003U);
    EXPECT_TRUE(trace.Messages().empty());
    EXPECT_TRUE(agent.calls.empty());
}

TEST_P(DeviceClass, MethodThatTheClassLacksIsTracedAndNotImplemented)
{
    const FakeClassPtr out = MakeFakeClass(L"__PARAMETERS");
    const TraceCapture trace;
    const Outcome outcome = Call(*manager, c.Path().c_str(), L"Anything", out);
    EXPECT_EQ(static_cast<ULONG>(outcome.status), 0x80041055U);
    EXPECT_TRUE(outcome.instances[0].empty());
    EXPECT_EQ(trace.TieredMessages(), std::vector<std::string>{"0 " + c.manager + "::ExecMethodAsync"});
    EXPECT_TRUE(agent.calls.empty());
}

} // namespace
} // namespace orl::test
