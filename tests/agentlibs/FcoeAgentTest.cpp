// Where a back end's exceptions end.

#include "agentlibs/fcoelink/FcoeAgent.h"
#include "tests/common/FailingNew.h"
#include "tests/support/TraceCapture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <new>
#include <thread>

namespace orl::test
{

namespace
{

using testing::EndsWith;
using testing::StartsWith;

// Does the same in every operation.
class ThrowingBackend final : public FcoeBackend
{
public:
    explicit ThrowingBackend(std::function<bool()> act) : m_act(std::move(act)) {}

    BackendStatus Status() override { return {true, L"source", L"text"}; }
    bool EnumerateHBAs(const COrlString&, std::vector<ORL_FCOE_HBA>&, CResult&) override { return m_act(); }
    bool EnumerateFabrics(const COrlString&, std::vector<ORL_FCOE_FABRIC>&, CResult&) override { return m_act(); }
    bool EnumeratePorts(const COrlString&, std::vector<ORL_FCOE_PORT>&, CResult&) override { return m_act(); }
    bool EnumerateTargets(const COrlString&, std::vector<ORL_FCOE_TARGET>&, CResult&) override { return m_act(); }
    bool EnumerateVLANs(const COrlString&, std::vector<ORL_FCOE_VLAN>&, CResult&) override { return m_act(); }
    bool EnumerateLUNs(const COrlString&, std::vector<ORL_FCOE_LUN>&, CResult&) override { return m_act(); }
    bool EnumerateStatistics(const COrlString&, std::vector<ORL_FCOE_STATISTIC>&, CResult&) override { return m_act(); }
    bool Uninstall(CResult&) override { return m_act(); }
    bool CreateVirtualPort(const COrlString&, COrlString&, std::vector<WarningMessageObj>&, CResult&) override
    {
        return m_act();
    }
    bool DeleteVirtualPort(const COrlString&, const COrlString&, std::vector<WarningMessageObj>&, CResult&) override
    {
        return m_act();
    }
    bool GenerateVirtualPortWWPN(const COrlString&, COrlString&, std::vector<WarningMessageObj>&, CResult&) override
    {
        return m_act();
    }
    bool RefreshTargets(const COrlString&, CResult&) override { return m_act(); }

private:
    const std::function<bool()> m_act;
};

FcoeAgent AgentThat(std::function<bool()> act)
{
    return FcoeAgent(std::make_unique<ThrowingBackend>(std::move(act)));
}

struct Answer
{
    bool done = false;
    CResult status{77, 88};
    std::vector<WarningMessageObj> warnings;
};

// Calls each of the twelve operations in the order of their table.
std::vector<Answer> AnswersOf(FcoeAgent& agent)
{
    std::vector<Answer> answers(12);
    std::vector<ORL_FCOE_HBA> hbas;
    std::vector<ORL_FCOE_FABRIC> fabrics;
    std::vector<ORL_FCOE_PORT> ports;
    std::vector<ORL_FCOE_TARGET> targets;
    std::vector<ORL_FCOE_VLAN> vlans;
    std::vector<ORL_FCOE_LUN> luns;
    std::vector<ORL_FCOE_STATISTIC> statistics;
    COrlString name;
    answers[0].done = agent.EnumerateHBAs(L"", hbas, answers[0].status);
    answers[1].done = agent.EnumerateFabrics(L"", fabrics, answers[1].status);
    answers[2].done = agent.EnumeratePorts(L"", ports, answers[2].status);
    answers[3].done = agent.EnumerateTargets(L"", targets, answers[3].status);
    answers[4].done = agent.EnumerateVLANs(L"", vlans, answers[4].status);
    answers[5].done = agent.EnumerateLUNs(L"", luns, answers[5].status);
    answers[6].done = agent.EnumerateStatistics(L"", statistics, answers[6].status);
    answers[7].done = agent.Uninstall(answers[7].status);
    answers[8].done = agent.CreateVirtualPort(L"", name, answers[8].warnings, answers[8].status);
    answers[9].done = agent.DeleteVirtualPort(L"", name, answers[9].warnings, answers[9].status);
    answers[10].done = agent.GenerateVirtualPortWWPN(L"", name, answers[10].warnings, answers[10].status);
    answers[11].done = agent.RefreshTargets(L"", answers[11].status);
    return answers;
}

void ExpectFailures(const std::vector<Answer>& answers, ULONG code, const wchar_t* text)
{
    for (std::size_t i = 0; i < answers.size(); ++i)
    {
        EXPECT_FALSE(answers[i].done) << i;
        EXPECT_EQ(answers[i].status.ulErrCode, code) << i;
        EXPECT_EQ(answers[i].status.ulReserved, 88u) << i;
        const bool hasWarnings = i >= 8 && i <= 10;
        ASSERT_EQ(answers[i].warnings.size(), hasWarnings ? 1u : 0u) << i;
        if (!hasWarnings)
            continue;
        EXPECT_EQ(answers[i].warnings[0].ulKind, WarningMessageObj::KindError) << i;
        EXPECT_EQ(answers[i].warnings[0].ulMessageId, 0u) << i;
        EXPECT_EQ(answers[i].warnings[0].strMessage, text) << i;
    }
}

} // namespace

TEST(FcoeAgent, HandsOnWhatTheBackEndAnswers)
{
    for (const bool answer : {true, false})
    {
        FcoeAgent agent = AgentThat([=] { return answer; });
        for (const Answer& got : AnswersOf(agent))
        {
            EXPECT_EQ(got.done, answer);
            EXPECT_EQ(got.status.ulErrCode, 77u) << "the status record is the request's";
            EXPECT_TRUE(got.warnings.empty());
        }
    }
}

TEST(FcoeAgent, AnswersFalseWithCodeAndWarningForWhatABackEndCannotDo)
{
    FcoeAgent agent = AgentThat([]() -> bool { throw BackendError(21, L"the device is not ready"); });
    ExpectFailures(AnswersOf(agent), 21, L"the device is not ready");
}

TEST(FcoeAgent, AnswersFalseWhenMemoryRunsOut)
{
    FcoeAgent agent = AgentThat([]() -> bool { throw std::bad_alloc(); });
    ExpectFailures(AnswersOf(agent), 8, L"out of memory");
}

TEST(FcoeAgent, AnswersFalseForAnExceptionThatNobodyForesaw)
{
    FcoeAgent agent = AgentThat([]() -> bool { throw std::runtime_error("unforeseen"); });
    ExpectFailures(AnswersOf(agent), 1359, L"unforeseen");
}

TEST(FcoeAgent, LetsPassAnExceptionThatAFaultAskedFor)
{
    FcoeAgent agent = AgentThat([]() -> bool { throw FaultException("asked for"); });
    CResult status{77, 88};
    std::vector<ORL_FCOE_HBA> hbas;
    std::vector<WarningMessageObj> warnings;
    EXPECT_THROW(agent.EnumerateHBAs(L"", hbas, status), std::runtime_error);
    EXPECT_THROW(agent.RefreshTargets(L"", status), FaultException);
    EXPECT_THROW(agent.DeleteVirtualPort(L"", L"", warnings, status), FaultException);
    EXPECT_EQ(status.ulErrCode, 77u);
    EXPECT_TRUE(warnings.empty());
}

// The provider reads of a failure in the warnings alone.
TEST(FcoeAgent, NeverAnswersAFailedActionWithoutAWarning)
{
    FcoeAgent agent =
        AgentThat([]() -> bool { throw BackendError(21, L"a text that is too long for a short string"); });
    const COrlString hba = L"an adapter whose name is too long for a short string";
    unsigned thrown = 0;
    bool isTold = false;
    for (unsigned nth = 1; !isTold && nth < 100; ++nth)
    {
        CResult status;
        COrlString name;
        std::vector<WarningMessageObj> warnings;
        try
        {
            const AllocationFailure failure(nth);
            EXPECT_FALSE(agent.CreateVirtualPort(hba, name, warnings, status));
            isTold = true;
        }
        catch (const std::bad_alloc&)
        {
            ++thrown;
        }
        EXPECT_EQ(warnings.size(), isTold ? 1u : 0u) << nth;
    }
    EXPECT_TRUE(isTold);
    EXPECT_GT(thrown, 0u) << "or the test shows nothing";
}

TEST(FcoeAgent, TracesEachOperationAndItsFailure)
{
    FcoeAgent agent = AgentThat([]() -> bool { throw BackendError(21, L"san.json:1:2: unknown key"); });
    const TraceCapture trace;
    CResult status;
    std::vector<ORL_FCOE_HBA> hbas;
    agent.EnumerateHBAs(L"", hbas, status);
    const std::vector<std::string> messages = trace.Messages();
    ASSERT_EQ(messages.size(), 3u);
    EXPECT_EQ(messages[0], "ENTRY:  FcoeAgent::EnumerateHBAs");
    EXPECT_THAT(messages[1], StartsWith("Src\\FcoeAgent ("));
    EXPECT_THAT(messages[1], EndsWith("): FcoeAgent::EnumerateHBAs failed with 21: san.json:1:2: unknown key"));
    EXPECT_EQ(messages[2], "EXIT:  FcoeAgent::EnumerateHBAs, bReturn=false");
}

TEST(FcoeAgent, NamesEachOperationInTheTrace)
{
    FcoeAgent agent = AgentThat([] { return true; });
    const TraceCapture trace;
    AnswersOf(agent);
    std::vector<std::string> exits;
    for (const std::string& message : trace.Messages())
        if (message.starts_with("EXIT"))
            exits.push_back(message);
    const char* const names[] = {
        "EnumerateHBAs",     "EnumerateFabrics",  "EnumeratePorts",          "EnumerateTargets",
        "EnumerateVLANs",    "EnumerateLUNs",     "EnumerateStatistics",     "Uninstall",
        "CreateVirtualPort", "DeleteVirtualPort", "GenerateVirtualPortWWPN", "RefreshTargets"};
    ASSERT_EQ(exits.size(), std::size(names));
    for (std::size_t i = 0; i < exits.size(); ++i)
        EXPECT_EQ(exits[i], std::string("EXIT:  FcoeAgent::") + names[i] + ", bReturn=true");
}

TEST(FcoeAgent, ManyThreadsMayBeInItAndTraceAtOnce)
{
    constexpr int threadCount = 8;
    constexpr int calls = 100;
    std::atomic<int> entered = 0;
    FcoeAgent agent = AgentThat(
        [&]
        {
            if (++entered % 10 == 0)
                throw BackendError(21, L"every tenth call");
            return true;
        });
    const TraceCapture trace;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(
            [&]
            {
                for (int call = 0; call < calls; ++call)
                {
                    CResult status;
                    std::vector<ORL_FCOE_HBA> hbas;
                    agent.EnumerateHBAs(L"eth0", hbas, status);
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    const std::vector<std::string> messages = trace.Messages();
    const auto count = [&](const char* end)
    {
        return std::count_if(messages.begin(), messages.end(),
                             [&](const std::string& message) { return message.ends_with(end); });
    };
    EXPECT_EQ(count("ENTRY:  FcoeAgent::EnumerateHBAs"), threadCount * calls);
    EXPECT_EQ(count("EnumerateHBAs failed with 21: every tenth call"), threadCount * calls / 10);
    EXPECT_EQ(count("EXIT:  FcoeAgent::EnumerateHBAs, bReturn=true"), threadCount * calls * 9 / 10);
    EXPECT_EQ(count("EXIT:  FcoeAgent::EnumerateHBAs, bReturn=false"), threadCount * calls / 10);
}

namespace
{

std::wstring WhyNot(const BackendConfig& config)
{
    const auto backend = MakeBackend(config);
    const BackendStatus status = backend->Status();
    EXPECT_FALSE(status.ready);
    FcoeAgent agent(MakeBackend(config));
    ExpectFailures(AnswersOf(agent), ERROR_INVALID_DATA, status.text.c_str());
    return status.text;
}

const std::wstring Key = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\KESTA\\Network_Services\\ORL2\\Agents\\Fcoelink";

} // namespace

TEST(FcoeAgent, SaysThatNoBackEndIsNamed)
{
    EXPECT_EQ(WhyNot({{}, L"/lab.json", L"/"}),
              L"the registry value Backend of " + Key + L" is missing: it names the back end, inventory or sysfs");
}

TEST(FcoeAgent, SaysThatTheNamedBackEndIsUnknown)
{
    EXPECT_EQ(WhyNot({L"invntory", L"/lab.json", L"/"}),
              L"the registry value Backend of " + Key + L" is \"invntory\": it names the back end, inventory or sysfs");
}

TEST(FcoeAgent, SaysThatTheInventoryIsNotNamed)
{
    EXPECT_EQ(WhyNot({L"inventory", {}, L"/"}),
              L"the registry value Inventory of " + Key + L" is missing: it names the inventory's JSON file");
}

TEST(FcoeAgent, FindsTheBackEndWhateverTheCaseOfItsName)
{
    const BackendStatus status = MakeBackend({L"INVENTORY", L"/no/such/lab.json", {}})->Status();
    EXPECT_EQ(status.source, L"/no/such/lab.json");
    EXPECT_EQ(status.text, L"/no/such/lab.json: does not exist");
}

} // namespace orl::test
