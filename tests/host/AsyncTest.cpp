// Calls with a client's sink: objects, one status, cancellation.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

#include <atomic>

namespace orl::test
{
namespace
{

class HostAsync : public HostTest
{
protected:
    ~HostAsync() override { Own().Workers().Stop(); }

    HRESULT Enumerate(LONG flags = 0)
    {
        return Service().CreateInstanceEnumAsync(CComBSTR(L"Test_Lamp"), flags | WBEM_FLAG_SHALLOW, nullptr, m_sink);
    }
    // Sends lamps until it is refused.
    void ServeWithoutEnd()
    {
        Provider().enumerate = [this](const std::wstring&, IWbemObjectSink* sink)
        {
            CComPtr<IWbemClassObject> lamp = Lamp(L"again", 1);
            HRESULT code = WBEM_S_NO_ERROR;
            while (SUCCEEDED(code))
                code = sink->Indicate(1, &lamp.p);
            m_refusal = code;
            return sink->SetStatus(0, code, nullptr, nullptr);
        };
    }

    const CComPtr<Collector> m_sink = MakeObject<Collector>();
    std::atomic<HRESULT> m_refusal{WBEM_S_NO_ERROR};
};

TEST_F(HostAsync, ObjectsThenOneStatus)
{
    ServeLamps({L"a", L"b", L"c"});
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    const Collector::Status status = m_sink->Await();
    EXPECT_EQ(WBEM_S_NO_ERROR, status.code);
    EXPECT_EQ(nullptr, status.object.p);
    ASSERT_EQ(3u, m_sink->Count());
    EXPECT_EQ(L"c", Show(m_sink->Objects()[2], L"Name"));
    EXPECT_EQ(1u, m_sink->Statuses());
}

TEST_F(HostAsync, EveryFailureComesWithTheStatus)
{
    ASSERT_EQ(WBEM_S_NO_ERROR,
              Service().ExecQueryAsync(CComBSTR(L"WQL"), CComBSTR(L"SELECT Volts FROM Test_Lamp"), 0, nullptr, m_sink));
    const Collector::Status query = m_sink->Await();
    EXPECT_EQ(HexText(WBEM_E_INVALID_QUERY), HexText(query.code));
    EXPECT_EQ((Told{L"0x80041017", L"the class Test_Lamp has no property Volts", L"ExecQuery",
                    L"SELECT Volts FROM Test_Lamp", L""}),
              ToldBy(query.object));

    const CComPtr<Collector> get = MakeObject<Collector>();
    ServeLamps({});
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().GetObjectAsync(CComBSTR(L"Test_Lamp.Name=\"x\""), 0, nullptr, get));
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(get->Await().code));
    EXPECT_EQ((Told{L"0x80041002", L"there is no Test_Lamp.Name=\"x\"", L"GetObject", L"Test_Lamp.Name=\"x\"",
                    L"LampProvider"}),
              ToldBy(get->Await().object));
    EXPECT_EQ(0u, get->Count());
}

TEST_F(HostAsync, GetAndClassesComeToTheSinkToo)
{
    ServeLamps({L"desk"});
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().GetObjectAsync(CComBSTR(L"Test_Lamp.Name=\"desk\""), 0, nullptr, m_sink));
    EXPECT_EQ(WBEM_S_NO_ERROR, m_sink->Await().code);
    ASSERT_EQ(1u, m_sink->Count());
    EXPECT_EQ(L"desk", Show(m_sink->Objects()[0], L"Name"));
    const CComPtr<Collector> classes = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().CreateClassEnumAsync(CComBSTR(L"Test_Lamp"), 0, nullptr, classes));
    EXPECT_EQ(WBEM_S_NO_ERROR, classes->Await().code);
    EXPECT_EQ(1u, classes->Count());
}

TEST_F(HostAsync, ObjectsOfOneIndicateArriveTogether)
{
    Provider().enumerate = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> lamp = Lamp(L"same", 1);
        const std::vector<IWbemClassObject*> many(200, lamp);
        sink->Indicate(200, const_cast<IWbemClassObject**>(many.data()));
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    EXPECT_EQ(WBEM_S_NO_ERROR, m_sink->Await().code);
    EXPECT_EQ(200u, m_sink->Count());
}

TEST_F(HostAsync, AClientThatRefusesAnObjectHasCancelled)
{
    ServeWithoutEnd();
    m_sink->onObject = [](std::size_t count) { return count < 3 ? S_OK : E_ABORT; };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_sink->Await().code));
    Own().Workers().Stop();
    EXPECT_EQ(3u, m_sink->Count());
    EXPECT_EQ(1u, m_sink->Statuses());
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_refusal));
}

TEST_F(HostAsync, CancelEndsACallFromOutside)
{
    ServeWithoutEnd();
    Gate first;
    m_sink->onObject = [&](std::size_t count)
    {
        if (count == 10)
            first.Open();
        return S_OK;
    };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    first.Pass();
    EXPECT_EQ(WBEM_S_NO_ERROR, Service().CancelAsyncCall(m_sink));
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_sink->Await().code));
    EXPECT_EQ(L"the client cancelled the call", ToldBy(m_sink->Await().object).description);
    Own().Workers().Stop();
    const std::size_t count = m_sink->Count();
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_refusal));
    EXPECT_EQ(count, m_sink->Count());
    EXPECT_EQ(1u, m_sink->Statuses());
    EXPECT_EQ(WBEM_E_NOT_FOUND, Service().CancelAsyncCall(m_sink));
    EXPECT_EQ(L"no call with this sink is under way", TakeTold().description);
}

TEST_F(HostAsync, AClientMayCancelWithinItsOwnSink)
{
    ServeWithoutEnd();
    m_sink->onObject = [&](std::size_t count) { return count == 5 ? Service().CancelAsyncCall(m_sink) : S_OK; };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_sink->Await().code));
    Own().Workers().Stop();
    EXPECT_EQ(5u, m_sink->Count());
    EXPECT_EQ(1u, m_sink->Statuses());
}

TEST_F(HostAsync, AHungProviderIsToldAndDoesNotHoldUpTheStatus)
{
    Gate asked;
    Gate told;
    Provider().enumerate = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        asked.Open();
        told.Pass(); // hangs until it is told
        return sink->SetStatus(0, WBEM_E_FAILED, nullptr, nullptr);
    };
    Provider().cancel = [&](IWbemObjectSink*) { told.Open(); };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    asked.Pass();
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().CancelAsyncCall(m_sink));
    EXPECT_TRUE(m_sink->HasStatus());
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_sink->Await().code));
    Own().Workers().Stop();
    EXPECT_EQ(1u, m_sink->Statuses());
}

TEST_F(HostAsync, AProviderThatWaitsElsewhereIsCancelledToo)
{
    // Keeps the sink and answers never: only the cancellation ends this call.
    CComPtr<IWbemObjectSink> kept;
    Gate asked;
    Provider().enumerate = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        kept = sink;
        asked.Open();
        return HRESULT{WBEM_S_NO_ERROR};
    };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    asked.Pass();
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().CancelAsyncCall(m_sink));
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_sink->Await().code));
    Own().Workers().Stop();
    // A late answer reaches nobody.
    CComPtr<IWbemClassObject> lamp = Lamp(L"late", 1);
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(kept->Indicate(1, &lamp.p)));
    kept->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    kept = nullptr;
    EXPECT_EQ(0u, m_sink->Count());
    EXPECT_EQ(1u, m_sink->Statuses());
}

TEST_F(HostAsync, ACallWithoutASinkIsRefused)
{
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, Service().CreateInstanceEnumAsync(CComBSTR(L"Test_Lamp"), 0, nullptr, nullptr));
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, Service().CancelAsyncCall(nullptr));
}

TEST_F(HostAsync, AClientThatThrowsIsSurvived)
{
    ServeWithoutEnd();
    m_sink->onObject = [](std::size_t) -> HRESULT { throw 5; };
    ASSERT_EQ(WBEM_S_NO_ERROR, Enumerate());
    EXPECT_EQ(HexText(WBEM_E_CALL_CANCELLED), HexText(m_sink->Await().code));
}

TEST_F(HostAsync, ManyThreadsEnumerateAtOnce)
{
    ServeLamps({L"a", L"b", L"c", L"d"});
    Service();
    std::vector<std::thread> clients;
    std::atomic<int> total{0};
    for (int i = 0; i < 8; ++i)
    {
        clients.emplace_back(
            [&]
            {
                for (int round = 0; round < 25; ++round)
                {
                    const CComPtr<Collector> sink = MakeObject<Collector>();
                    Service().CreateInstanceEnumAsync(CComBSTR(L"Test_Lamp"), 0, nullptr, sink);
                    CComPtr<IEnumWbemClassObject> found;
                    Service().ExecQuery(CComBSTR(L"WQL"), CComBSTR(L"SELECT Name FROM Test_Lamp WHERE Watts > 10"),
                                        WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &found);
                    total += static_cast<int>(Drain(found, L"Name").size());
                    sink->Await();
                    total += static_cast<int>(sink->Count());
                }
            });
    }
    for (std::thread& client : clients)
        client.join();
    EXPECT_EQ(8 * 25 * (4 + 3), total);
    EXPECT_EQ(1, m_loads);
}

} // namespace
} // namespace orl::test
