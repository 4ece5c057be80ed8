// Many clients at once on one inventory: gets, enumerations, queries, associations, methods and deletions, from the
// service down to the agent and its state file.

#include "agentlibs/corelink/CoreAgent.h"
#include "agentlibs/fcoelink/Backend.h"
#include "agentlibs/fcoelink/FcoeAgent.h"
#include "tests/support/TestFolder.h"
#include "tests/whole/WholeService.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace orl::test
{
namespace
{

constexpr int ThreadCount = 8;
constexpr int Rounds = 12;

// One client. Its failures are the test's.
class Client
{
public:
    explicit Client(WholeService& service)
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        m_service = service.Connect();
    }
    ~Client()
    {
        m_service.Release();
        CoUninitialize();
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    std::vector<std::wstring> Query(const std::wstring& query, const wchar_t* property)
    {
        CComPtr<IEnumWbemClassObject> found;
        EXPECT_EQ(m_service->ExecQuery(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, &found), WBEM_S_NO_ERROR);
        std::vector<std::wstring> texts;
        HRESULT code = WBEM_S_NO_ERROR;
        while (code == WBEM_S_NO_ERROR)
        {
            CComPtr<IWbemClassObject> object;
            ULONG returned = 0;
            code = found->Next(WBEM_INFINITE, 1, &object, &returned);
            if (returned == 1)
                texts.push_back(TextIn(object, property));
        }
        EXPECT_EQ(code, WBEM_S_FALSE) << ::testing::PrintToString(query);
        return texts;
    }
    std::wstring Get(const std::wstring& path, const wchar_t* property)
    {
        CComPtr<IWbemClassObject> object;
        EXPECT_EQ(m_service->GetObject(CComBSTR(path.c_str()), 0, nullptr, &object, nullptr), WBEM_S_NO_ERROR);
        return TextIn(object, property);
    }
    // The out-parameter of a method; with an in-parameter WorldWidePortName where there is one.
    std::wstring Call(const std::wstring& path, const wchar_t* method, const wchar_t* out,
                      const std::wstring& name = {})
    {
        CComPtr<IWbemClassObject> in;
        if (!name.empty())
        {
            in = ParametersOf(*m_service, L"Zarn_FCOEHBA", method);
            CComVariant value(name.c_str());
            EXPECT_EQ(in->Put(L"WorldWidePortName", 0, &value, 0), WBEM_S_NO_ERROR);
        }
        CComPtr<IWbemClassObject> result;
        EXPECT_EQ(m_service->ExecMethod(CComBSTR(path.c_str()), CComBSTR(method), 0, nullptr, in, &result, nullptr),
                  WBEM_S_NO_ERROR);
        return TextIn(result, out);
    }
    HRESULT Delete(const std::wstring& path)
    {
        return m_service->DeleteInstance(CComBSTR(path.c_str()), 0, nullptr, nullptr);
    }

private:
    CComPtr<IWbemServices> m_service;
};

class MixedLoad : public ::testing::Test
{
protected:
    MixedLoad()
    {
        const std::filesystem::path inventory = folder.Path() / "san.json";
        std::ofstream(inventory) << R"({"generate": {"seed": 7, "hbas": 2, "targetsPerHba": 3, "lunsPerTarget": 5}})";
        BackendConfig config;
        config.backend = L"inventory";
        config.inventory = inventory.wstring();
        fcoe = std::make_unique<FcoeAgent>(MakeInventoryBackend(config));
        adapter = std::make_unique<CoreAgent>(MakeInventorySettings(config));
        service = std::make_unique<WholeService>(*fcoe, *adapter);
    }

    TestFolder folder;
    std::unique_ptr<FcoeAgent> fcoe;
    std::unique_ptr<CoreAgent> adapter;
    std::unique_ptr<WholeService> service;
};

TEST_F(MixedLoad, EightClientsLoseNothingAndMeetNoFailure)
{
    std::mutex mutex;
    std::set<std::wstring> kept; // paths of ports that a client left behind
    std::set<std::wstring> seen; // names, each given out once
    const auto work = [&](int thread)
    {
        Client client(*service);
        const std::wstring hba = L"sim" + std::to_wstring(thread % 2);
        const std::wstring path = L"Zarn_FCOEHBA.DeviceID=\"" + hba + L"\"";
        for (int round = 0; round < Rounds; ++round)
        {
            EXPECT_EQ(client.Get(path, L"DeviceID"), hba);
            const std::wstring name = client.Call(path, L"GenerateVirtualPortWWPN", L"WorldWidePortName");
            const std::wstring port = client.Call(path, L"CreateVirtualPort", L"PortPath", name);
            EXPECT_EQ(client.Get(port, L"WorldWidePortName"), name);
            EXPECT_EQ(client.Query(L"SELECT * FROM Zarn_FCoeLUN WHERE DeviceID = '" + hba + L"'", L"DeviceID").size(),
                      15U);
            EXPECT_GE(
                client
                    .Query(L"ASSOCIATORS OF {" + path + L"} WHERE AssocClass = Zarn_FCoE_HBA_Fabric_Assoc", L"DeviceID")
                    .size(),
                1U);
            EXPECT_GE(client.Query(L"SELECT * FROM Zarn_FCoEPort", L"WorldWidePortName").size(), 3U);
            if (round % 3 != 0)
            {
                EXPECT_EQ(client.Delete(port), WBEM_S_NO_ERROR);
            }
            const std::lock_guard<std::mutex> hold(mutex);
            EXPECT_TRUE(seen.insert(name).second) << "a name was given out twice";
            if (round % 3 == 0)
                kept.insert(name);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < ThreadCount; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();

    Client client(*service);
    std::set<std::wstring> virtualPorts;
    for (const std::wstring& name :
         client.Query(L"SELECT * FROM Zarn_FCoEPort WHERE PortTypeID = 2", L"WorldWidePortName"))
        virtualPorts.insert(name);
    EXPECT_EQ(virtualPorts, kept);
    EXPECT_EQ(kept.size(), std::size_t{ThreadCount} * (Rounds / 3));
    // What is gone stays gone.
    EXPECT_EQ(static_cast<ULONG>(client.Delete(L"Zarn_FCoEPort.DeviceID=\"sim0\",WorldWidePortName=\"2fff\"")),
              0x80041002U);
}

} // namespace
} // namespace orl::test
