// Many clients at once on one inventory: gets, enumerations, queries, associations, methods and deletions, from the
// service down to the agent and its state file.

#include "agentlibs/fcoelink/Backend.h"
#include "agentlibs/fcoelink/FcoeAgent.h"
#include "assoc/Zarn_FabricToPortAssoc.h"
#include "assoc/Zarn_HBAToFabricAssoc.h"
#include "assoc/Zarn_HBAToLunAssoc.h"
#include "classes/Zarn_FcoeFabric.h"
#include "classes/Zarn_FcoeHBA.h"
#include "classes/Zarn_FcoeLUN.h"
#include "classes/Zarn_FcoePort.h"
#include "classes/Zarn_FcoeStatistics.h"
#include "classes/Zarn_FcoeTarget.h"
#include "classes/Zarn_FcoeVLAN.h"
#include "com/OrlCom.h"
#include "framework/com/OrlInstProvider.h"
#include "host/Host.h"
#include "host/Locator.h"
#include "tests/support/TestFolder.h"

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

class AllManagers final : public ManagerSource
{
public:
    explicit AllManagers(COrlFcoeAgentIntf* agent)
    {
        Add(L"Zarn_FCOEHBA", new CZarn_FcoeHBA(agent));
        Add(L"Zarn_FCoEFabric", new CZarn_FcoeFabric(agent));
        Add(L"Zarn_FCoEPort", new CZarn_FcoePort(agent));
        Add(L"Zarn_FcoeTarget", new CZarn_FcoeTarget(agent));
        Add(L"Zarn_FCoeLUN", new CZarn_FcoeLUN(agent));
        Add(L"Zarn_FCoeVLAN", new CZarn_FcoeVLAN(agent));
        Add(L"Zarn_FCoEStatistics", new CZarn_FcoeStatistics(agent));
        Add(L"Zarn_FCoE_HBA_Fabric_Assoc", new CZarn_HBAToFabricAssocMgr(agent));
        Add(L"Zarn_FCoE_Fabric_Port_Assoc", new CZarn_FabricToPortAssocMgr(agent));
        Add(L"Zarn_FCoE_HBA_LUN_Assoc", new CZarn_HBAToLUNAssocMgr(agent));
    }
    const ManagerTable* Managers(HRESULT& answer, COrlString&) noexcept override
    {
        answer = WBEM_S_NO_ERROR;
        return &m_table;
    }

private:
    void Add(const wchar_t* name, CWomClassManagerRoot* manager) { m_table.AddClassManager(CComBSTR(name), manager); }

    ManagerTable m_table;
};

std::wstring Text(IWbemClassObject* object, const wchar_t* property)
{
    CComVariant value;
    if (object == nullptr || FAILED(object->Get(property, 0, &value, nullptr, nullptr)) || value.vt != VT_BSTR)
        return {};
    return value.bstrVal;
}

// One client. Its failures are the test's.
class Client
{
public:
    explicit Client(Host& host)
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        EXPECT_EQ(MakeObject<Locator>(host)->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr, nullptr, 0,
                                                           nullptr, nullptr, &m_service),
                  WBEM_S_NO_ERROR);
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
                texts.push_back(Text(object, property));
        }
        EXPECT_EQ(code, WBEM_S_FALSE) << ::testing::PrintToString(query);
        return texts;
    }
    std::wstring Get(const std::wstring& path, const wchar_t* property)
    {
        CComPtr<IWbemClassObject> object;
        EXPECT_EQ(m_service->GetObject(CComBSTR(path.c_str()), 0, nullptr, &object, nullptr), WBEM_S_NO_ERROR);
        return Text(object, property);
    }
    // The out-parameter of a method; with an in-parameter WorldWidePortName where there is one.
    std::wstring Call(const std::wstring& path, const wchar_t* method, const wchar_t* out,
                      const std::wstring& name = {})
    {
        CComPtr<IWbemClassObject> in;
        if (!name.empty())
        {
            CComPtr<IWbemClassObject> ofClass;
            CComPtr<IWbemClassObject> signature;
            EXPECT_EQ(m_service->GetObject(CComBSTR(L"Zarn_FCOEHBA"), 0, nullptr, &ofClass, nullptr), WBEM_S_NO_ERROR);
            EXPECT_EQ(ofClass->GetMethod(method, 0, &signature, nullptr), WBEM_S_NO_ERROR);
            EXPECT_EQ(signature->SpawnInstance(0, &in), WBEM_S_NO_ERROR);
            CComVariant value(name.c_str());
            EXPECT_EQ(in->Put(L"WorldWidePortName", 0, &value, 0), WBEM_S_NO_ERROR);
        }
        CComPtr<IWbemClassObject> result;
        EXPECT_EQ(m_service->ExecMethod(CComBSTR(path.c_str()), CComBSTR(method), 0, nullptr, in, &result, nullptr),
                  WBEM_S_NO_ERROR);
        return Text(result, out);
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
        agent = std::make_unique<FcoeAgent>(MakeInventoryBackend(config));
        managers = std::make_unique<AllManagers>(agent.get());
        host = std::make_unique<Host>([] { return Repository::FromFolder(ORL_SCHEMA); },
                                      [this](const std::wstring&, IUnknown** provider) -> HRESULT
                                      {
                                          const auto made = MakeObject<OrlInstProvider>(*managers);
                                          return made->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(provider));
                                      });
    }
    ~MixedLoad() override
    {
        host->Workers().Stop();
        host.reset();
    }

    TestFolder folder;
    std::unique_ptr<FcoeAgent> agent;
    std::unique_ptr<AllManagers> managers;
    std::unique_ptr<Host> host;
};

TEST_F(MixedLoad, EightClientsLoseNothingAndMeetNoFailure)
{
    std::mutex mutex;
    std::set<std::wstring> kept; // paths of ports that a client left behind
    std::set<std::wstring> seen; // names, each given out once
    const auto work = [&](int thread)
    {
        Client client(*host);
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

    Client client(*host);
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
