// The agent libraries as the provider and the client's diagnosis load them.

#include "agent/OrlAdapterAgent.h"
#include "agent/OrlFcoeAgentIntf.h"
#include "agentlibs/AgentStatus.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"
#include "winport/portable/Utf8.h"

#include <gtest/gtest.h>

#include <fstream>

namespace orl::test
{

namespace
{

// Libraries stay loaded, as the provider leaves them: an agent lives until the process ends.
HMODULE Load(const wchar_t* name)
{
    const std::wstring folder = PathText(NativePath(FromUtf8(ORL_BIN_DIR)));
    const HMODULE module = LoadLibraryW((folder + L"\\" + name + L".DLL").c_str());
    EXPECT_NE(module, nullptr) << "error " << GetLastError();
    return module;
}

template <typename Function>
Function Find(HMODULE module, const char* name)
{
    const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    EXPECT_NE(function, nullptr) << name;
    return function;
}

} // namespace

// One test, because the library settles with its first call what the process's registry asked for.
TEST(AgentLibraries, FcoelinkServesTheInventoryThatTheRegistryNames)
{
    const TestFolder folder;
    const std::wstring path = (folder / "san.json").wstring();
    TestRegistry registry;
    const std::wstring key = std::wstring(AgentsKey) + L"\\Fcoelink";
    registry.SetText(key, L"Backend", L"inventory");
    registry.SetText(key, L"Inventory", path);

    const HMODULE module = Load(L"Fcoelink");
    const auto getAgent = Find<GetFcoeAgentFunction>(module, "GetFcoeAgent");
    const auto getStatus = Find<OrlAgentStatusFunction>(module, "OrlAgentStatus");
    COrlFcoeAgentIntf* const agent = getAgent();
    ASSERT_NE(agent, nullptr) << "a back end that is not ready is no reason to have no agent";
    EXPECT_EQ(getAgent(), agent);

    CResult status;
    std::vector<ORL_FCOE_HBA> hbas;
    EXPECT_FALSE(agent->EnumerateHBAs(L"", hbas, status));
    EXPECT_EQ(status.ulErrCode, static_cast<ULONG>(ERROR_FILE_NOT_FOUND));
    wchar_t text[1024];
    EXPECT_EQ(getStatus(text, 1024), 1u);
    EXPECT_EQ(text, L"back end: inventory\nsource: " + path + L"\nstate: error, " + path + L": does not exist");

    std::ofstream(folder / "san.json") << R"({"hbas": [{"deviceId": "eth0", "name": "the only one"}]})";
    EXPECT_TRUE(agent->EnumerateHBAs(L"ETH0", hbas, status));
    ASSERT_EQ(hbas.size(), 1u);
    EXPECT_EQ(hbas[0].name, L"the only one");
    EXPECT_EQ(getStatus(text, 1024), 0u);
    EXPECT_EQ(text, L"back end: inventory\nsource: " + path + L"\nstate: ready, 1 HBA");

    wchar_t small[9];
    EXPECT_EQ(getStatus(small, 9), 0u);
    EXPECT_STREQ(small, L"back end");
    wchar_t none = L'x';
    EXPECT_EQ(getStatus(&none, 0), 0u);
    EXPECT_EQ(none, L'x');
    EXPECT_EQ(getStatus(nullptr, 1024), 0u);

    std::ofstream(folder / "san.json") << R"({"faults": [{"operation": "EnumeratePorts", "effect": "throw"}]})";
    std::vector<ORL_FCOE_PORT> ports;
    EXPECT_THROW(agent->EnumeratePorts(L"", ports, status), std::runtime_error);
}

// One test, for the same reason.
TEST(AgentLibraries, CorelinkServesTheInventoryThatTheRegistryNames)
{
    const TestFolder folder;
    const std::wstring path = (folder / "san.json").wstring();
    TestRegistry registry;
    const std::wstring key = std::wstring(AgentsKey) + L"\\Corelink";
    registry.SetText(key, L"Backend", L"inventory");
    registry.SetText(key, L"Inventory", path);

    const HMODULE module = Load(L"Corelink");
    const auto getAgent = Find<GetCoreAgentFunction>(module, "GetCoreAgent");
    const auto getStatus = Find<OrlAgentStatusFunction>(module, "OrlAgentStatus");
    OrlAdapterAgent* const agent = getAgent();
    ASSERT_NE(agent, nullptr) << "a back end that is not ready is no reason to have no agent";
    EXPECT_EQ(getAgent(), agent);

    CResult status;
    ORL_SETTING* setting = nullptr;
    EXPECT_EQ(agent->GetSetting(L"eth0", L"Depth", setting, status).ulErrCode,
              static_cast<ULONG>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(setting, nullptr);
    wchar_t text[1024];
    EXPECT_EQ(getStatus(text, 1024), 1u);
    EXPECT_EQ(text, L"back end: inventory\nsource: " + path + L"\nstate: error, " + path + L": does not exist");

    std::ofstream(folder / "san.json") << R"({"hbas": [{"deviceId": "eth0", "settings": [
        {"kind": "integer", "name": "Depth", "min": 0, "max": 9, "default": 4}]}]})";
    EXPECT_EQ(agent->GetSetting(L"eth0", L"Depth", setting, status).ulErrCode, 0u);
    ASSERT_NE(setting, nullptr);
    const std::unique_ptr<ORL_SETTING> owned(setting);
    EXPECT_EQ(dynamic_cast<ORL_SETTING_INT&>(*setting).Current, 4);
    EXPECT_EQ(agent->GetSetting(L"eth0", L"Mtu", setting, status).ulErrCode, static_cast<ULONG>(ERROR_NOT_FOUND));
    EXPECT_EQ(setting, nullptr);
    EXPECT_EQ(getStatus(text, 1024), 0u);
    EXPECT_EQ(text, L"back end: inventory\nsource: " + path + L"\nstate: ready, 1 setting of 1 HBA");
}

} // namespace orl::test
