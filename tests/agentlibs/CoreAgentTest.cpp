// The adapter agent around any back end: what it asks, in which order, and where exceptions end.

#include "agentlibs/corelink/CoreAgent.h"

#include "SettingTests.h"
#include "agentlibs/settings/SettingMessages.h"
#include "tests/support/TraceCapture.h"

#include <gmock/gmock.h>

#include <functional>
#include <new>

namespace orl::test
{

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

SettingDescription Number(const wchar_t* name, LONG current)
{
    SettingDescription setting;
    setting.name = name;
    setting.caption = std::wstring(name) + L" (caption)";
    setting.max = 100;
    setting.step = 5;
    setting.defaultValue = 50;
    setting.current = current;
    return setting;
}

// Two settings, "Depth" and "Fixed", and a record of what was asked of it.
class FakeBackend final : public SettingBackend
{
public:
    std::vector<std::string> calls;
    std::function<void()> inCheck = [] {};
    std::function<void()> inWrite = [] {};
    std::function<void()> inOpen = [] {};
    bool advises = false;

    BackendStatus Status() override { return {true, L"source", L"text"}; }
    std::unique_ptr<SettingAdapter> Open(Operation operation, const COrlString& adapterId) override
    {
        calls.push_back("open " + ToUtf8(adapterId) + " for " +
                        std::string(OperationNames()[static_cast<std::size_t>(operation)]));
        inOpen();
        return std::make_unique<Adapter>(*this);
    }

private:
    class Adapter final : public SettingAdapter
    {
    public:
        explicit Adapter(FakeBackend& backend) : m_backend(backend) {}

        COrlString Name() const override { return L"the adapter"; }
        std::vector<SettingDescription> Settings() const override
        {
            std::vector<SettingDescription> settings = {Number(L"Depth", 10), Number(L"Fixed", 10)};
            settings[1].writable = false;
            return settings;
        }
        void Check(const SettingDescription& setting, LONG value, std::vector<WarningMessageObj>& advice) const override
        {
            m_backend.calls.push_back("check " + ToUtf8(setting.name) + " " + std::to_string(value));
            if (m_backend.advises)
                advice.push_back({2, 9, L"mind"});
            m_backend.inCheck();
        }
        void Write(const SettingDescription& setting, LONG value) override
        {
            m_backend.calls.push_back("write " + ToUtf8(setting.name) + " " + std::to_string(value));
            m_backend.inWrite();
        }

    private:
        FakeBackend& m_backend;
    };
};

class CoreAgentTest : public SettingFixture
{
protected:
    FakeBackend& m_backend = *new FakeBackend; // the agent's
    CoreAgent m_agent{std::unique_ptr<SettingBackend>(&m_backend)};
};

} // namespace

TEST_F(CoreAgentTest, HandsOutTheSettingsOfAnAdapter)
{
    COrlPointerArray<ORL_SETTING*> settings;
    const CResult result = m_agent.EnumerateSettings(L"eth0", settings, m_status);
    EXPECT_EQ(result.ulErrCode, 0u);
    EXPECT_EQ(result.ulReserved, 0u);
    ASSERT_EQ(settings.size(), 2u);
    EXPECT_EQ(settings[0]->Name, L"Depth");
    EXPECT_EQ(settings[1]->Name, L"Fixed");
    EXPECT_EQ(m_status.ulErrCode, 77u);
    EXPECT_EQ(m_status.ulReserved, 88u);
    EXPECT_THAT(m_backend.calls, ElementsAre("open eth0 for EnumerateSettings"));
}

TEST_F(CoreAgentTest, FindsASettingByNameOrCaptionWhateverTheCase)
{
    for (const wchar_t* name : {L"Depth", L"DEPTH", L"depth (Caption)"})
    {
        const auto setting = Get(m_agent, L"eth0", name);
        ASSERT_NE(setting, nullptr) << ToUtf8(name);
        EXPECT_EQ(setting->Name, L"Depth");
    }
    EXPECT_EQ(Get(m_agent, L"eth0", L"Dept"), nullptr);
    EXPECT_EQ(m_code, 1168u);
    EXPECT_EQ(Get(m_agent, L"eth0", L""), nullptr);
    EXPECT_EQ(m_status.ulErrCode, 77u);
}

TEST_F(CoreAgentTest, NamesTheAdapterAndLeavesTheRestOfTheRecordAlone)
{
    ORL_ADAPTER adapter;
    adapter.reservedText1 = L"as it was";
    EXPECT_EQ(m_agent.GetAdapter(L"eth0", adapter, m_status, false).ulErrCode, 0u);
    EXPECT_EQ(adapter.Name, L"the adapter");
    EXPECT_EQ(adapter.reservedText1, L"as it was");
    EXPECT_TRUE(adapter.Capabilities.empty());
    EXPECT_THAT(m_backend.calls, ElementsAre("open eth0 for GetAdapter"));
}

TEST_F(CoreAgentTest, ChecksAValueAndThenWritesIt)
{
    EXPECT_EQ(Set(m_agent, L"eth0", L"depth", 20), 0u);
    EXPECT_THAT(m_backend.calls, ElementsAre("open eth0 for SetSetting", "check Depth 20", "write Depth 20"));
    m_backend.calls.clear();
    EXPECT_EQ(Reset(m_agent, L"eth0", L"Depth"), 0u);
    EXPECT_THAT(m_backend.calls, ElementsAre("open eth0 for SetSettingToDefault", "check Depth 50", "write Depth 50"));
    m_backend.calls.clear();
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 25), "0");
    EXPECT_THAT(m_backend.calls, ElementsAre("open eth0 for ValidateSettingModification", "check Depth 25"))
        << "who only asks changes nothing";
    m_backend.calls.clear();
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 25, L"", true), "0");
    EXPECT_THAT(m_backend.calls,
                ElementsAre("open eth0 for ValidateSettingModification", "check Depth 25", "write Depth 25"));
}

TEST_F(CoreAgentTest, WritesNothingThatTheSettingCannotHave)
{
    const struct
    {
        const wchar_t* name;
        LONG number;
        const wchar_t* text;
        ULONG code;
        const char* answer;
    } cases[] = {
        {L"Depth", 101, L"", 87, "0; error 3002: Depth cannot be set to 101: the value must lie between 0 and 100."},
        {L"Depth", -5, L"", 87, "0; error 3002: Depth cannot be set to -5: the value must lie between 0 and 100."},
        {L"Depth", 7, L"", 87, "0; error 3003: Depth cannot be set to 7: the value must be 0 plus a multiple of 5."},
        {L"Depth", 10, L"ten", 87,
         "0; error 3010: Depth cannot be set to \"ten\": expected a whole number, in decimal or behind 0x."},
        {L"Depth", 10, L"%s", 87,
         "0; error 3010: Depth cannot be set to \"%s\": expected a whole number, in decimal or behind 0x."},
        {L"Fixed", 10, L"", 5, "0; error 3009: Fixed of eth0 is read-only."},
    };
    for (const auto& wrong : cases)
    {
        EXPECT_EQ(Set(m_agent, L"eth0", wrong.name, wrong.number, wrong.text), wrong.code) << wrong.answer;
        EXPECT_EQ(Ask(m_agent, L"eth0", wrong.name, wrong.number, wrong.text), wrong.answer);
        EXPECT_EQ(Ask(m_agent, L"eth0", wrong.name, wrong.number, wrong.text, true), wrong.answer);
    }
    EXPECT_EQ(Reset(m_agent, L"eth0", L"Fixed"), 5u);
    for (const std::string& call : m_backend.calls)
        EXPECT_THAT(call, StartsWith("open "));
}

TEST_F(CoreAgentTest, TellsAdviceBesideTheSuccess)
{
    m_backend.advises = true;
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 25), "0; advice 9: mind");
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 25, L"", true), "0; advice 9: mind");
    const TraceCapture trace;
    EXPECT_EQ(Set(m_agent, L"eth0", L"Depth", 20), 0u);
    EXPECT_THAT(trace.Messages(), testing::Contains("mind")) << "where there is no list for it";
}

TEST_F(CoreAgentTest, KeepsTheWarningsThatAreThereAlready)
{
    m_backend.advises = true;
    std::vector<WarningMessageObj> warnings = {{2, 1, L"older"}};
    ORL_SETTING_VAL_INT value = ValueOf(20);
    m_agent.ValidateSettingModification(L"eth0", L"Depth", &value, warnings, m_status, 0);
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_EQ(warnings[0].strMessage, L"older");
    value.Value = 1000;
    m_agent.ValidateSettingModification(L"eth0", L"Depth", &value, warnings, m_status, 0);
    ASSERT_EQ(warnings.size(), 3u);
    EXPECT_EQ(warnings[2].ulKind, WarningMessageObj::KindError);
}

TEST_F(CoreAgentTest, TellsTheUserOfARefusedWriteAndOtherCallersItsCode)
{
    m_backend.advises = true;
    m_backend.inWrite = [] {
        throw SettingRefusal(170, SettingMessage::KernelRefused, {L"Depth", L"eth0", L"it is busy"});
    };
    EXPECT_EQ(Set(m_agent, L"eth0", L"Depth", 20), 170u);
    EXPECT_EQ(Reset(m_agent, L"eth0", L"Depth"), 170u);
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 20), "0; advice 9: mind");
    EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 20, L"", true),
              "0; error 3007: The kernel refused to set Depth of eth0: it is busy.");
}

TEST_F(CoreAgentTest, AnswersTheCodeOfWhatABackEndCannotDo)
{
    const struct
    {
        std::function<void()> act;
        ULONG code;
        const char* text;
    } cases[] = {
        {[] { throw BackendError(21, L"the device is not ready"); }, 21, "the device is not ready"},
        {[] { throw std::bad_alloc(); }, 8, "out of memory"},
        {[] { throw std::runtime_error("unforeseen"); }, 1359, "unforeseen"},
    };
    for (const auto& failure : cases)
    {
        m_backend.inOpen = failure.act;
        EXPECT_TRUE(Lines(m_agent, L"eth0").empty());
        EXPECT_EQ(m_code, failure.code);
        EXPECT_EQ(Get(m_agent, L"eth0", L"Depth"), nullptr);
        EXPECT_EQ(m_code, failure.code);
        EXPECT_EQ(Set(m_agent, L"eth0", L"Depth", 20), failure.code);
        EXPECT_EQ(Reset(m_agent, L"eth0", L"Depth"), failure.code);
        EXPECT_EQ(Ask(m_agent, L"eth0", L"Depth", 20, L"", true),
                  std::to_string(failure.code) + "; error 0: " + failure.text);
        ORL_ADAPTER adapter;
        EXPECT_EQ(m_agent.GetAdapter(L"eth0", adapter, m_status, false).ulErrCode, failure.code);
        EXPECT_EQ(adapter.Name, L"");
        EXPECT_EQ(m_status.ulErrCode, 77u);
    }
}

TEST_F(CoreAgentTest, RefusesAChangeWithoutAValue)
{
    std::vector<WarningMessageObj> warnings;
    EXPECT_EQ(m_agent.SetSetting(L"eth0", L"Depth", nullptr, m_status).ulErrCode, 87u);
    EXPECT_EQ(m_agent.ValidateSettingModification(L"eth0", L"Depth", nullptr, warnings, m_status, 1).ulErrCode, 87u);
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].strMessage, L"no value was given");
}

TEST_F(CoreAgentTest, LetsPassAnExceptionThatAFaultAskedFor)
{
    m_backend.inOpen = [] { throw FaultException("asked for"); };
    EXPECT_THROW(Set(m_agent, L"eth0", L"Depth", 20), FaultException);
    EXPECT_THROW(Ask(m_agent, L"eth0", L"Depth", 20), FaultException);
    ORL_SETTING* setting = nullptr;
    EXPECT_THROW(m_agent.GetSetting(L"eth0", L"Depth", setting, m_status), FaultException);
}

TEST_F(CoreAgentTest, TracesEachOperationItsFailureAndItsRefusal)
{
    const auto exitsOf = [](const TraceCapture& trace)
    {
        std::vector<std::string> exits;
        for (const std::string& message : trace.Messages())
            if (message.starts_with("EXIT"))
                exits.push_back(message);
        return exits;
    };
    const TraceCapture all;
    Lines(m_agent, L"eth0");
    Get(m_agent, L"eth0", L"Depth");
    Set(m_agent, L"eth0", L"Depth", 20);
    Reset(m_agent, L"eth0", L"Depth");
    ORL_ADAPTER adapter;
    m_agent.GetAdapter(L"eth0", adapter, m_status, false);
    Ask(m_agent, L"eth0", L"Depth", 20);
    std::vector<std::string> expected;
    for (const char* name : {"EnumerateSettings", "GetSetting", "SetSetting", "SetSettingToDefault", "GetAdapter",
                             "ValidateSettingModification"})
        expected.push_back(std::string("EXIT:  CoreAgent::") + name + ", result=0");
    const std::vector<std::string> exits = exitsOf(all);
    ASSERT_EQ(exits.size(), expected.size());
    for (std::size_t i = 0; i < exits.size(); ++i)
        EXPECT_THAT(exits[i], StartsWith(expected[i].substr(0, expected[i].find(','))));

    m_backend.inOpen = [] { throw BackendError(21, L"not ready"); };
    const TraceCapture failed;
    Set(m_agent, L"eth0", L"Depth", 20);
    const std::vector<std::string> messages = failed.Messages();
    ASSERT_EQ(messages.size(), 3u);
    EXPECT_EQ(messages[0], "ENTRY:  CoreAgent::SetSetting");
    EXPECT_THAT(messages[1], StartsWith("Src\\CoreAgent ("));
    EXPECT_THAT(messages[1], EndsWith("): CoreAgent::SetSetting failed with 21: not ready"));

    m_backend.inOpen = [] {};
    const TraceCapture refused;
    Ask(m_agent, L"eth0", L"Fixed", 20);
    EXPECT_THAT(refused.Messages(),
                testing::Contains("CoreAgent::ValidateSettingModification refused: Fixed of eth0 is "
                                  "read-only."));
}

TEST_F(CoreAgentTest, RefusesWhatItsTableReserves)
{
    OrlAdapterAgent& seen = m_agent;
    EXPECT_EQ(seen.Reserved4().ulErrCode, OrlAdapterAgent::NotSupported);
    EXPECT_EQ(seen.Reserved51().ulErrCode, OrlAdapterAgent::NotSupported);
    EXPECT_TRUE(m_backend.calls.empty());
}

TEST_F(CoreAgentTest, SaysWhatIsWrongWithItsConfiguration)
{
    const std::wstring key = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\KESTA\\Network_Services\\ORL2\\Agents\\Corelink";
    const struct
    {
        BackendConfig config;
        std::wstring text;
    } cases[] = {
        {{}, L"the registry value Backend of " + key + L" is missing: it names the back end, inventory or sysfs"},
        {{L"disk", {}, {}},
         L"the registry value Backend of " + key + L" is \"disk\": it names the back end, inventory or sysfs"},
        {{L"INVENTORY", {}, {}},
         L"the registry value Inventory of " + key + L" is missing: it names the inventory's JSON file"},
    };
    for (const auto& wrong : cases)
    {
        CoreAgent agent(MakeSettingBackend(wrong.config));
        EXPECT_FALSE(agent.Status().ready);
        EXPECT_EQ(agent.Status().text, wrong.text);
        EXPECT_EQ(Ask(agent, L"eth0", L"Depth", 1), "13; error 0: " + ToUtf8(wrong.text));
        EXPECT_TRUE(Lines(agent, L"eth0").empty());
        EXPECT_EQ(m_code, 13u);
    }
}

} // namespace orl::test
