// An agent that does not come back: whoever waits for it can stop waiting, and everybody else is served.

#include "tests/support/Collector.h"
#include "tests/support/ScriptedAdapterAgent.h"
#include "tests/support/ScriptedAgent.h"
#include "tests/whole/WholeService.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <ostream>
#include <thread>

namespace orl::test
{
namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr LONG Patience = 50; // milliseconds that a client waits in these tests
constexpr auto ForEver = 20s; // whoever is kept so long is stuck; far beyond what a slow machine needs
constexpr LONG Streaming = WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY;
const wchar_t* const kHba = L"Zarn_FCOEHBA.DeviceID=\"eth0\"";
const wchar_t* const kPort = L"Zarn_FCoEPort.DeviceID=\"eth0\",WorldWidePortName=\"2000525400fc0001\"";

// What a semisynchronous call leaves its client with: one or the other.
struct Pending
{
    CComPtr<IEnumWbemClassObject> objects;
    CComPtr<IWbemCallResult> result;

    HRESULT Wait(LONG milliseconds) const
    {
        if (!objects)
        {
            LONG status = 0;
            const HRESULT waited = result->GetCallStatus(milliseconds, &status);
            return waited == WBEM_S_NO_ERROR ? status : waited;
        }
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        return objects->Next(milliseconds, 1, &object, &returned);
    }
};

CComPtr<IWbemClassObject> SettingToPut(IWbemServices& services)
{
    CComPtr<IWbemClassObject> setting = SpawnOf(services, L"Zarn_FCOESettingInt");
    const std::pair<const wchar_t*, const wchar_t*> values[] = {
        {L"ParentType", L"NIC"}, {L"ParentId", L"eth0"}, {L"Caption", L"Mode"}, {L"CurrentValue", L"5"}};
    for (const auto& [name, text] : values)
    {
        CComVariant value(text);
        EXPECT_EQ(setting->Put(name, 0, &value, 0), WBEM_S_NO_ERROR);
    }
    return setting;
}

// One operation of a client, in the two ways that do not bind its thread.
struct Operation
{
    const char* name;
    HRESULT (*begin)(IWbemServices& services, Pending& pending);
    HRESULT (*send)(IWbemServices& services, IWbemObjectSink* sink);
};

std::ostream& operator<<(std::ostream& stream, const Operation& operation)
{
    return stream << operation.name;
}

template <const wchar_t* const* Query>
constexpr Operation QueryFor(const char* name)
{
    return {name,
            [](IWbemServices& services, Pending& pending)
            { return services.ExecQuery(CComBSTR(L"WQL"), CComBSTR(*Query), Streaming, nullptr, &pending.objects); },
            [](IWbemServices& services, IWbemObjectSink* sink)
            { return services.ExecQueryAsync(CComBSTR(L"WQL"), CComBSTR(*Query), 0, nullptr, sink); }};
}

const wchar_t* const kSelect = L"SELECT DeviceID FROM Zarn_FCOEHBA WHERE LinkStatus = 'Online'";
const wchar_t* const kAssociators = L"ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID=\"eth0\"}";
const wchar_t* const kReferences = L"REFERENCES OF {Zarn_FCOEHBA.DeviceID=\"eth0\"}";

const Operation kOperations[] = {
    {"Get",
     [](IWbemServices& services, Pending& pending)
     { return services.GetObject(CComBSTR(kHba), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, &pending.result); },
     [](IWbemServices& services, IWbemObjectSink* sink)
     { return services.GetObjectAsync(CComBSTR(kHba), 0, nullptr, sink); }},
    {"Enumeration",
     [](IWbemServices& services, Pending& pending)
     { return services.CreateInstanceEnum(CComBSTR(L"Zarn_FCoELUN"), Streaming, nullptr, &pending.objects); },
     [](IWbemServices& services, IWbemObjectSink* sink)
     { return services.CreateInstanceEnumAsync(CComBSTR(L"Zarn_FCoELUN"), 0, nullptr, sink); }},
    QueryFor<&kSelect>("Query"),
    QueryFor<&kAssociators>("Associators"),
    QueryFor<&kReferences>("References"),
    {"Method",
     [](IWbemServices& services, Pending& pending)
     {
         return services.ExecMethod(CComBSTR(kHba), CComBSTR(L"GenerateVirtualPortWWPN"), WBEM_FLAG_RETURN_IMMEDIATELY,
                                    nullptr, nullptr, nullptr, &pending.result);
     },
     [](IWbemServices& services, IWbemObjectSink* sink) {
         return services.ExecMethodAsync(CComBSTR(kHba), CComBSTR(L"GenerateVirtualPortWWPN"), 0, nullptr, nullptr,
                                         sink);
     }},
    {"Delete",
     [](IWbemServices& services, Pending& pending)
     { return services.DeleteInstance(CComBSTR(kPort), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &pending.result); },
     [](IWbemServices& services, IWbemObjectSink* sink)
     { return services.DeleteInstanceAsync(CComBSTR(kPort), 0, nullptr, sink); }},
    {"Put",
     [](IWbemServices& services, Pending& pending)
     { return services.PutInstance(SettingToPut(services), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &pending.result); },
     [](IWbemServices& services, IWbemObjectSink* sink)
     { return services.PutInstanceAsync(SettingToPut(services), 0, nullptr, sink); }},
};

class HungAgent : public ::testing::TestWithParam<Operation>
{
protected:
    HungAgent()
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        ORL_FCOE_HBA hba;
        hba.deviceId = L"eth0";
        hba.linkStatus = L"Online";
        m_fcoe.hbas.push_back(hba);
        m_fcoe.inside = m_adapter.inside = [this] { Hang(); };
        m_services = m_service.Connect();
    }
    ~HungAgent() override
    {
        m_woken.Open();
        m_services.Release();
        m_service.Own().Workers().Stop();
        m_service.Own().Providers().ReleaseAll();
        EXPECT_EQ(References(), m_references) << "something of a call is left behind";
        CoUninitialize();
    }

    // The next call of an agent hangs until Wake, and no other.
    void HangNext() { m_hangs = true; }
    void AwaitHang() { m_entered.Pass(); }
    void Wake() { m_woken.Open(); }

    void ExpectOthersAreServed()
    {
        CComPtr<IWbemClassObject> object;
        EXPECT_EQ(m_services->GetObject(CComBSTR(kHba), 0, nullptr, &object, nullptr), WBEM_S_NO_ERROR);
        EXPECT_EQ(TextIn(object, L"DeviceID"), L"eth0");
        CComPtr<IEnumWbemClassObject> objects;
        EXPECT_EQ(m_services->CreateInstanceEnum(CComBSTR(L"Zarn_FCOEHBA"), 0, nullptr, &objects), WBEM_S_NO_ERROR);
        object.Release();
        ULONG returned = 0;
        EXPECT_EQ(objects->Next(WBEM_INFINITE, 1, &object, &returned), WBEM_S_NO_ERROR);
        EXPECT_EQ(returned, 1U);
    }

    const ULONG m_references = References();
    ScriptedAgent m_fcoe;
    ScriptedAdapterAgent m_adapter;
    Gate m_entered;
    Gate m_woken;
    std::atomic<bool> m_hangs{false};
    WholeService m_service{m_fcoe, m_adapter};
    CComPtr<IWbemServices> m_services;

private:
    // Without what the thread's last error still holds.
    static ULONG References()
    {
        SetErrorInfo(0, nullptr);
        return ModuleReferences();
    }
    void Hang()
    {
        if (!m_hangs.exchange(false))
            return;
        m_entered.Open();
        m_woken.Pass();
    }
};

TEST_P(HungAgent, IsNotWaitedForBeyondTheTimeout)
{
    HangNext();
    Pending pending;
    const Clock::time_point start = Clock::now();
    ASSERT_EQ(GetParam().begin(*m_services, pending), WBEM_S_NO_ERROR);
    EXPECT_EQ(pending.Wait(Patience), WBEM_S_TIMEDOUT);
    AwaitHang();
    ExpectOthersAreServed();
    EXPECT_EQ(pending.Wait(0), WBEM_S_TIMEDOUT) << "the others have not ended it";
    // Letting it go does not wait either.
    pending = {};
    EXPECT_LT(Clock::now() - start, ForEver);
    ExpectOthersAreServed();
}

TEST_P(HungAgent, EndsItsCallWhenTheClientComesBackInTime)
{
    HangNext();
    Pending pending;
    ASSERT_EQ(GetParam().begin(*m_services, pending), WBEM_S_NO_ERROR);
    EXPECT_EQ(pending.Wait(Patience), WBEM_S_TIMEDOUT);
    AwaitHang();
    Wake();
    EXPECT_NE(pending.Wait(WBEM_INFINITE), WBEM_S_TIMEDOUT);
}

TEST_P(HungAgent, DoesNotHoldUpACancellation)
{
    const CComPtr<Collector> sink = MakeObject<Collector>();
    HangNext();
    const Clock::time_point start = Clock::now();
    ASSERT_EQ(GetParam().send(*m_services, sink), WBEM_S_NO_ERROR);
    AwaitHang();
    EXPECT_FALSE(sink->HasStatus());
    ASSERT_EQ(m_services->CancelAsyncCall(sink), WBEM_S_NO_ERROR);
    EXPECT_TRUE(sink->HasStatus()) << "the client has its answer when CancelAsyncCall returns";
    EXPECT_EQ(sink->Await().code, WBEM_E_CALL_CANCELLED);
    EXPECT_LT(Clock::now() - start, ForEver);
    ExpectOthersAreServed();
    const std::size_t objects = sink->Count();
    Wake();
    m_service.Own().Workers().Stop();
    EXPECT_EQ(sink->Statuses(), 1U) << "what the agent answers at last reaches nobody";
    EXPECT_EQ(sink->Count(), objects);
}

INSTANTIATE_TEST_SUITE_P(WholeService, HungAgent, ::testing::ValuesIn(kOperations),
                         [](const auto& instance) { return instance.param.name; });

using OneEnumerator = HungAgent;

// Two threads share an enumerator: one waits without end, the other one knows a limit.
TEST_F(OneEnumerator, KeepsATimeoutWhileAnotherThreadWaitsInIt)
{
    HangNext();
    CComPtr<IEnumWbemClassObject> objects;
    ASSERT_EQ(m_services->CreateInstanceEnum(CComBSTR(L"Zarn_FCOEHBA"), Streaming, nullptr, &objects), WBEM_S_NO_ERROR);
    ULONG waiterGot = 0;
    std::thread waiter(
        [&]
        {
            CComPtr<IWbemClassObject> object;
            EXPECT_EQ(objects->Next(WBEM_INFINITE, 1, &object, &waiterGot), WBEM_S_NO_ERROR);
        });
    AwaitHang(); // the request runs, so the waiter is in Next
    const Clock::time_point start = Clock::now();
    CComPtr<IWbemClassObject> object;
    ULONG returned = 7;
    EXPECT_EQ(objects->Next(Patience, 1, &object, &returned), WBEM_S_TIMEDOUT);
    EXPECT_EQ(returned, 0U);
    EXPECT_EQ(objects->Skip(Patience, 1), WBEM_S_TIMEDOUT);
    EXPECT_LT(Clock::now() - start, ForEver);
    Wake();
    waiter.join();
    EXPECT_EQ(waiterGot, 1U);
    EXPECT_EQ(objects->Next(WBEM_INFINITE, 1, &object, &returned), WBEM_S_FALSE);
}

} // namespace
} // namespace orl::test
