// RegisterCimImplementors: which managers are handed over, and what happens when an agent is missing.

#include "tests/provider/Fixture.h"
#include "tests/support/ScriptedAdapterAgent.h"
#include "tests/support/TestRegistry.h"

#include "provider/Agents.h"
#include "provider/RegisterCimImplementors.h"

#include <filesystem>
#include <memory>
#include <set>

namespace orl::test
{
namespace
{

class RecordingRegistry final : public ImplementorRegistry
{
public:
    std::vector<std::wstring> names;
    std::vector<std::unique_ptr<CWomClassManagerRoot>> managers;
    HRESULT answer = WBEM_S_NO_ERROR;

    HRESULT AddClassManager(CComBSTR className, CWomClassManagerRoot* manager) override
    {
        names.emplace_back(className.m_str);
        managers.emplace_back(manager);
        return answer;
    }
};

class Registration : public ::testing::Test
{
protected:
    Registration()
    {
        g_fcoeAgent = nullptr;
        g_adapterAgent = nullptr;
    }

    // `folder` is one of the folders of fake agent libraries, see CMakeLists.txt; "none" does not exist.
    void InstallAgents(const char* fcoe, const char* adapter)
    {
        const std::filesystem::path agents = std::filesystem::absolute(ORL_FAKE_AGENTS);
        const std::wstring key = AgentsKey;
        registry.SetText(key + L"\\Fcoelink", L"InstalledDir", (agents / fcoe).wstring());
        registry.SetText(key + L"\\Corelink", L"InstalledDir", (agents / adapter).wstring());
    }

    CResult Register()
    {
        CResult result{17, 18};
        RegisterCimImplementors(nullptr, &implementors, &result);
        return result;
    }

    TestRegistry registry;
    RecordingRegistry implementors;
};

constexpr char InitializeFailed[] = "ORL2InstFcoe::RegisterCimImplementors Initialize() Failed!";

TEST_F(Registration, HandsOverTheManagersInTheirOrder)
{
    InstallAgents("good", "good");
    const CResult result = Register();
    EXPECT_EQ(result.ulErrCode, 0U);
    EXPECT_EQ(result.ulReserved, 0U);
    EXPECT_EQ(implementors.names,
              (std::vector<std::wstring>{
                  L"Zarn_FCOEHBA", L"Zarn_FCoEFabric", L"Zarn_FCoEPort", L"Zarn_FcoeTarget", L"Zarn_FCoeLUN",
                  L"Zarn_FCoeVLAN", L"Zarn_FCoEStatistics", L"Zarn_FCoeSetting", L"Zarn_FCOESettingEnum",
                  L"Zarn_FCOESettingInt", L"Zarn_FCoE_Adapter_HBA_Assoc", L"Zarn_FCoE_HBA_Setting_Assoc",
                  L"Zarn_FCoE_HBA_Fabric_Assoc", L"Zarn_FCoE_Fabric_Port_Assoc", L"Zarn_FCoE_Port_Target_Assoc",
                  L"Zarn_FCoE_HBA_LUN_Assoc", L"Zarn_FCoE_HBA_VLAN_Assoc", L"Zarn_FCoE_HBA_Statistics_Assoc"}));
    for (std::size_t i = 0; i < implementors.managers.size(); ++i)
    {
        // One manager is registered for a class and sends instances of another.
        const std::wstring& name = implementors.names[i];
        EXPECT_EQ(implementors.managers[i]->GetCimClassName(),
                  name == L"Zarn_FCoE_Port_Target_Assoc" ? L"Zarn_FCoE_HBA_Fabric_Assoc" : name);
    }
    EXPECT_NE(g_fcoeAgent, nullptr);
    EXPECT_NE(g_adapterAgent, nullptr);
}

TEST_F(Registration, DoesNotLookAtWhatTheRegistryAnswers)
{
    InstallAgents("good", "good");
    implementors.answer = WBEM_E_ALREADY_EXISTS;
    const CResult result = Register();
    EXPECT_EQ(result.ulErrCode, 0U);
    EXPECT_EQ(result.ulReserved, 0U);
    EXPECT_EQ(implementors.names.size(), 18U);
}

TEST_F(Registration, ASecondCallHandsOverASecondSetOfManagers)
{
    InstallAgents("good", "good");
    Register();
    const std::vector<std::wstring> once = implementors.names;
    EXPECT_EQ(Register().ulErrCode, 0U);
    ASSERT_EQ(implementors.names.size(), 36U);
    EXPECT_TRUE(std::equal(once.begin(), once.end(), implementors.names.begin() + 18));
    std::set<const CWomClassManagerRoot*> different;
    for (const auto& manager : implementors.managers)
        different.insert(manager.get());
    EXPECT_EQ(different.size(), 36U);
}

TEST_F(Registration, TracesItsScopeAndTheAdapterAgentOnly)
{
    InstallAgents("good", "good");
    const TraceCapture trace;
    Register();
    const std::vector<std::string> messages = trace.Messages();
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages.front(), "ENTRY:  RegisterCimImplementors");
    EXPECT_EQ(messages.back(), "EXIT:  RegisterCimImplementors");
    EXPECT_THAT(messages, ::testing::Contains("loadAdapterAgent").Times(1));
    EXPECT_THAT(messages, ::testing::Not(::testing::Contains(InitializeFailed)));
}

TEST_F(Registration, AMissingAgentIsTracedAndNothingIsRegistered)
{
    const struct
    {
        const char* fcoe;
        const char* adapter;
        const char* message;
        bool fcoeAgentStays;
    } cases[] = {
        {"none", "good", "LoadLibrary {Fcoelink.dll} Failed!", false},
        {"other", "good", "GetProcAddress {GetFcoeAgent} Failed!", false},
        {"null", "good", "GetFcoeAgent Failed! Returned NULL", false},
        {"good", "none", "loadAdapterAgent : Load Library Failed ORL_CORE_AGENT_NAME", true},
        {"good", "other", "loadAdapterAgent:: GetProcAddress Failed!", true},
        {"good", "null", "loadAdapterAgent:: getAdapterAgent Failed!", true},
    };
    for (const auto& row : cases)
    {
        SCOPED_TRACE(row.message);
        g_fcoeAgent = nullptr;
        g_adapterAgent = nullptr;
        InstallAgents(row.fcoe, row.adapter);
        const TraceCapture trace;
        const CResult result = Register();
        EXPECT_EQ(result.ulErrCode, 17U) << "the result is left as it was";
        EXPECT_EQ(result.ulReserved, 18U);
        EXPECT_TRUE(implementors.names.empty());
        EXPECT_EQ(g_fcoeAgent != nullptr, row.fcoeAgentStays);
        EXPECT_EQ(g_adapterAgent, nullptr);

        const std::vector<std::string> messages = trace.Messages();
        const auto message = std::find(messages.begin(), messages.end(), row.message);
        const auto failed = std::find(messages.begin(), messages.end(), InitializeFailed);
        EXPECT_NE(message, messages.end());
        EXPECT_NE(failed, messages.end());
        EXPECT_LT(message, failed);
        // The adapter agent is tried only when the FCoE agent is in place.
        EXPECT_EQ(std::count(messages.begin(), messages.end(), "loadAdapterAgent"), row.fcoeAgentStays ? 1 : 0);
    }
}

TEST_F(Registration, LoadersAnswerWithTheirOwnSecondField)
{
    InstallAgents("good", "good");
    const CResult fcoe = loadFcoeAgent();
    EXPECT_EQ(fcoe.ulErrCode, 0U);
    EXPECT_EQ(fcoe.ulReserved, 0xFFFFFFFFU);
    const CResult adapter = loadAdapterAgent();
    EXPECT_EQ(adapter.ulErrCode, 0U);
    EXPECT_EQ(adapter.ulReserved, 0U);
    for (const char* broken : {"none", "other", "null"})
    {
        SCOPED_TRACE(broken);
        InstallAgents(broken, broken);
        EXPECT_EQ(loadFcoeAgent().ulErrCode, 0xFFFFFFFFU);
        EXPECT_EQ(loadAdapterAgent().ulErrCode, 0xFFFFFFFFU);
    }
    // A factory's null is stored as well.
    EXPECT_EQ(g_fcoeAgent, nullptr);
    EXPECT_EQ(g_adapterAgent, nullptr);
}

TEST_F(Registration, AgentOfAnEarlierCallDoesNotStandInForOneThatFails)
{
    const std::pair<const char*, const char*> cases[] = {
        {"none", "good"}, {"other", "good"}, {"good", "none"}, {"good", "other"}};
    for (const auto& [fcoe, adapter] : cases)
    {
        SCOPED_TRACE(std::string(fcoe) + ", " + adapter);
        InstallAgents("good", "good");
        ASSERT_EQ(Register().ulErrCode, 0U);
        implementors.names.clear();
        InstallAgents(fcoe, adapter);
        EXPECT_EQ(Register().ulErrCode, 17U) << "the result is left as it was";
        EXPECT_TRUE(implementors.names.empty());
        EXPECT_NE(g_fcoeAgent, nullptr);
        EXPECT_NE(g_adapterAgent, nullptr);
    }
}

TEST_F(Registration, AClassNameThatCannotBeAllocatedIsThrownAndWhatIsRegisteredStays)
{
    InstallAgents("good", "good");
    Register();
    const std::size_t all = implementors.names.size();
    for (std::size_t n = 1; n <= all; ++n)
    {
        RecordingRegistry partial;
        CResult result{17, 18};
        OrlFailBstrAllocation(static_cast<ULONG>(n));
        try
        {
            RegisterCimImplementors(nullptr, &partial, &result);
            ADD_FAILURE() << "nothing was thrown for name " << n;
        }
        catch (const CAtlException& failure)
        {
            EXPECT_EQ(failure.m_hr, E_OUTOFMEMORY);
        }
        OrlFailBstrAllocation(0);
        EXPECT_EQ(partial.names.size(), n - 1);
        EXPECT_EQ(result.ulErrCode, 17U);
    }
}

class RegisteredManagers : public ManagerTest
{
};

TEST_F(RegisteredManagers, AskTheAgentsThatTheyAreGiven)
{
    const struct
    {
        const wchar_t* fcoe;
        const wchar_t* adapter;
    } asked[] = {{L"EnumerateHBAs()", L""},
                 {L"EnumerateFabrics()", L""},
                 {L"EnumeratePorts()", L""},
                 {L"EnumerateTargets()", L""},
                 {L"EnumerateLUNs()", L""},
                 {L"EnumerateVLANs()", L""},
                 {L"EnumerateStatistics()", L""},
                 {L"EnumerateHBAs()", L"EnumerateSettings(X)"},
                 {L"EnumerateHBAs()", L"EnumerateSettings(X)"},
                 {L"EnumerateHBAs()", L"EnumerateSettings(X)"},
                 {L"EnumerateHBAs()", L""},
                 {L"EnumerateHBAs()", L"EnumerateSettings(X)"},
                 {L"EnumerateFabrics()", L""},
                 {L"EnumeratePorts()", L""},
                 {L"EnumerateTargets()", L""},
                 {L"EnumerateLUNs()", L""},
                 {L"EnumerateVLANs()", L""},
                 {L"EnumerateStatistics()", L""}};
    agent.hbas.resize(1);
    agent.hbas[0].deviceId = L"X";
    ScriptedAdapterAgent adapterAgent;
    RecordingRegistry implementors;
    AddClassManagers(implementors, &agent, &adapterAgent);
    ASSERT_EQ(implementors.managers.size(), std::size(asked));
    for (std::size_t i = 0; i < std::size(asked); ++i)
    {
        SCOPED_TRACE(Narrow(implementors.names[i]));
        services->Add(MakeFakeClass(implementors.names[i]));
        agent.calls.clear();
        adapterAgent.calls.clear();
        Enumerate(*implementors.managers[i]);
        EXPECT_EQ(agent.calls, std::vector<std::wstring>{asked[i].fcoe});
        EXPECT_EQ(adapterAgent.calls.empty() ? std::wstring() : adapterAgent.calls.front(), asked[i].adapter);
    }
}

} // namespace
} // namespace orl::test
