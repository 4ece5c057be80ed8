// IEnumWbemClassObject: streaming, timeouts, going back and going in two.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"
#include "host/Enumerator.h"
#include "host/ResultStream.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace orl::test
{
namespace
{

using Texts = std::vector<std::wstring>;

class HostEnumerator : public HostTest
{
protected:
    ~HostEnumerator() override { Own().Workers().Stop(); }

    static constexpr LONG kForwardOnly = WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY;

    CComPtr<IEnumWbemClassObject> Start(LONG flags = kForwardOnly)
    {
        CComPtr<IEnumWbemClassObject> found;
        EXPECT_EQ(WBEM_S_NO_ERROR,
                  Service().CreateInstanceEnum(CComBSTR(L"Test_Lamp"), flags | WBEM_FLAG_SHALLOW, nullptr, &found))
            << TakeTold();
        return found;
    }
    // Lamps 0, 1, 2, ...; `sent` counts those that were taken from the provider.
    void ServeMany(int count)
    {
        Provider().enumerate = [this, count](const std::wstring&, IWbemObjectSink* sink)
        {
            HRESULT code = WBEM_S_NO_ERROR;
            for (int i = 0; i < count && SUCCEEDED(code); ++i)
            {
                CComPtr<IWbemClassObject> lamp = Lamp(std::to_wstring(i), i);
                code = sink->Indicate(1, &lamp.p);
                if (SUCCEEDED(code))
                    ++m_sent;
            }
            m_lastAnswer = code;
            return sink->SetStatus(0, code, nullptr, nullptr);
        };
    }
    // The name of the next object; the code in brackets when there is none.
    std::wstring Next(IEnumWbemClassObject* found, LONG timeout = 10000)
    {
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        const HRESULT code = found->Next(timeout, 1, &object, &returned);
        return returned ? Show(object, L"Name") : L"<" + HexText(code) + L">";
    }
    int Runs() const
    {
        int runs = 0;
        for (const std::wstring& call : m_provider().Calls())
            runs += call.starts_with(L"CreateInstanceEnum");
        return runs;
    }
    template <class Condition>
    static bool Eventually(const Condition& condition)
    {
        for (int i = 0; i < 2000 && !condition(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return condition();
    }

    std::atomic<int> m_sent{0};
    std::atomic<HRESULT> m_lastAnswer{WBEM_S_NO_ERROR};

private:
    ScriptedProvider& m_provider() const { return const_cast<HostEnumerator*>(this)->Provider(); }
};

TEST_F(HostEnumerator, NextYieldsBatchesAndThenTheEnd)
{
    ServeMany(5);
    const CComPtr<IEnumWbemClassObject> found = Start();
    IWbemClassObject* objects[3] = {};
    ULONG returned = 0;
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Next(WBEM_INFINITE, 3, objects, &returned));
    EXPECT_EQ(3u, returned);
    for (IWbemClassObject* object : objects)
        object->Release();
    ASSERT_EQ(WBEM_S_FALSE, found->Next(WBEM_INFINITE, 3, objects, &returned));
    ASSERT_EQ(2u, returned);
    EXPECT_EQ(L"4", Show(objects[1], L"Name"));
    EXPECT_EQ(nullptr, objects[2]);
    objects[0]->Release();
    objects[1]->Release();
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(WBEM_S_FALSE, found->Next(WBEM_INFINITE, 3, objects, &returned));
        EXPECT_EQ(0u, returned);
    }
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, found->Next(0, 1, nullptr, &returned));
}

TEST_F(HostEnumerator, TheFirstObjectComesWhileTheProviderIsStillAtWork)
{
    Gate gate;
    Provider().enumerate = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> lamp = Lamp(L"first", 1);
        sink->Indicate(1, &lamp.p);
        gate.Pass();
        lamp = Lamp(L"second", 2);
        sink->Indicate(1, &lamp.p);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    const CComPtr<IEnumWbemClassObject> found = Start();
    EXPECT_EQ(L"first", Next(found));
    EXPECT_EQ(L"<0x00040004>", Next(found, 0));
    EXPECT_EQ(L"<0x00040004>", Next(found, 20));
    gate.Open();
    EXPECT_EQ(L"second", Next(found));
    EXPECT_EQ(L"<0x00000001>", Next(found));
}

TEST_F(HostEnumerator, ATimeoutHandsOverWhatCameInTime)
{
    Gate gate;
    Provider().enumerate = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> lamp = Lamp(L"first", 1);
        sink->Indicate(1, &lamp.p);
        gate.Pass();
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    const CComPtr<IEnumWbemClassObject> found = Start();
    IWbemClassObject* objects[2] = {};
    ULONG returned = 0;
    EXPECT_EQ(WBEM_S_TIMEDOUT, found->Next(200, 2, objects, &returned));
    ASSERT_EQ(1u, returned);
    EXPECT_EQ(L"first", Show(objects[0], L"Name"));
    objects[0]->Release();
    EXPECT_EQ(WBEM_S_TIMEDOUT, found->Skip(10, 1));
    gate.Open();
    EXPECT_EQ(L"<0x00000001>", Next(found));
}

TEST_F(HostEnumerator, AHungProviderDoesNotHangAClientWithATimeout)
{
    Gate gate;
    Provider().enumerate = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        gate.Pass();
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    {
        const CComPtr<IEnumWbemClassObject> found = Start();
        const auto before = std::chrono::steady_clock::now();
        EXPECT_EQ(L"<0x00040004>", Next(found, 50));
        EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));
    } // and lets the enumerator go
    gate.Open();
    Own().Workers().Stop();
}

TEST_F(HostEnumerator, AProviderThatIsAheadWaitsForItsClient)
{
    ServeMany(20000);
    const CComPtr<IEnumWbemClassObject> found = Start();
    EXPECT_EQ(L"0", Next(found));
    const int bound = static_cast<int>(2 * ResultStream::kCapacity) + 2;
    EXPECT_TRUE(Eventually([&] { return m_sent >= static_cast<int>(ResultStream::kCapacity); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_LE(m_sent, bound);
    EXPECT_EQ(19999u, Drain(found, L"Name").size());
    EXPECT_EQ(1, Runs());
}

TEST_F(HostEnumerator, LettingGoCancelsTheProvider)
{
    ServeMany(20000);
    CComPtr<IEnumWbemClassObject> found = Start();
    EXPECT_EQ(L"0", Next(found));
    found = nullptr;
    EXPECT_TRUE(Eventually([&] { return m_lastAnswer == WBEM_E_CALL_CANCELLED; }));
    EXPECT_LT(m_sent, 20000);
}

TEST_F(HostEnumerator, ASmallResultIsKeptForResetAndClone)
{
    ServeMany(3);
    const CComPtr<IEnumWbemClassObject> found = Start();
    EXPECT_EQ((Texts{L"0", L"1", L"2"}), Drain(found, L"Name"));
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Reset());
    EXPECT_EQ(L"0", Next(found));
    CComPtr<IEnumWbemClassObject> copy;
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Clone(&copy));
    EXPECT_EQ((Texts{L"1", L"2"}), Drain(copy, L"Name"));
    EXPECT_EQ((Texts{L"1", L"2"}), Drain(found, L"Name"));
    EXPECT_EQ(1, Runs());
}

TEST_F(HostEnumerator, AnObjectThatComesAgainIsAsItWas)
{
    ServeMany(2);
    const CComPtr<IEnumWbemClassObject> found = Start();
    CComPtr<IWbemClassObject> object;
    ULONG returned = 0;
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Next(WBEM_INFINITE, 1, &object, &returned));
    CComVariant other(L"changed");
    ASSERT_EQ(WBEM_S_NO_ERROR, object->Put(L"Name", 0, &other, 0));
    found->Reset();
    EXPECT_EQ(L"0", Next(found));
    EXPECT_EQ(L"changed", Show(object, L"Name"));
}

TEST_F(HostEnumerator, ALargeResultIsAskedForAgain)
{
    const int count = static_cast<int>(Enumerator::kKept) + 300;
    ServeMany(count);
    const CComPtr<IEnumWbemClassObject> found = Start();
    EXPECT_EQ(static_cast<std::size_t>(count), Drain(found, L"Name").size());
    EXPECT_EQ(1, Runs());
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Reset());
    EXPECT_EQ(L"0", Next(found));
    EXPECT_EQ(L"1", Next(found));
    EXPECT_EQ(2, Runs());
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Skip(WBEM_INFINITE, 400));
    CComPtr<IEnumWbemClassObject> copy;
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Clone(&copy));
    EXPECT_EQ(L"402", Next(copy));
    EXPECT_EQ(3, Runs());
    EXPECT_EQ(L"402", Next(found));
    EXPECT_EQ(3, Runs());
    EXPECT_EQ(static_cast<std::size_t>(count - 403), Drain(copy, L"Name").size());
}

TEST_F(HostEnumerator, ACloneTakenEarlySeesAllThatFollows)
{
    ServeMany(600);
    const CComPtr<IEnumWbemClassObject> found = Start();
    CComPtr<IEnumWbemClassObject> fresh;
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Clone(&fresh));
    EXPECT_EQ(L"0", Next(found));
    EXPECT_EQ(L"1", Next(found));
    CComPtr<IEnumWbemClassObject> later;
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Clone(&later));
    EXPECT_EQ(598u, Drain(found, L"Name").size());
    EXPECT_EQ(600u, Drain(fresh, L"Name").size());
    EXPECT_EQ(L"2", Next(later));
    EXPECT_EQ(597u, Drain(later, L"Name").size());
}

TEST_F(HostEnumerator, SkippingPastTheEndEnds)
{
    ServeMany(5);
    // As script clients count: one at a time until it fails.
    const CComPtr<IEnumWbemClassObject> found = Start();
    int count = 0;
    while (count < 100 && found->Skip(WBEM_INFINITE, 1) == WBEM_S_NO_ERROR)
        ++count;
    EXPECT_EQ(5, count);
    ASSERT_EQ(WBEM_S_NO_ERROR, found->Reset());
    EXPECT_EQ(WBEM_S_NO_ERROR, found->Skip(WBEM_INFINITE, 4));
    EXPECT_EQ(L"4", Next(found));
    found->Reset();
    EXPECT_EQ(WBEM_S_FALSE, found->Skip(WBEM_INFINITE, 6));
    EXPECT_EQ(L"<0x00000001>", Next(found));
    found->Reset();
    EXPECT_EQ(WBEM_S_FALSE, found->Skip(WBEM_INFINITE, 0xffffffff));
    EXPECT_EQ(WBEM_S_NO_ERROR, found->Skip(WBEM_INFINITE, 0));
}

TEST_F(HostEnumerator, AFailureComesAfterTheObjectsBeforeIt)
{
    Provider().enumerate = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        for (const wchar_t* name : {L"a", L"b"})
        {
            CComPtr<IWbemClassObject> lamp = Lamp(name, 1);
            sink->Indicate(1, &lamp.p);
        }
        return sink->SetStatus(0, WBEM_E_ACCESS_DENIED, nullptr, nullptr);
    };
    const CComPtr<IEnumWbemClassObject> found = Start(0);
    IWbemClassObject* objects[10] = {};
    ULONG returned = 0;
    EXPECT_EQ(WBEM_S_NO_ERROR, found->Next(WBEM_INFINITE, 10, objects, &returned));
    ASSERT_EQ(2u, returned);
    objects[0]->Release();
    objects[1]->Release();
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(found->Next(WBEM_INFINITE, 10, objects, &returned)));
        EXPECT_EQ(0u, returned);
        EXPECT_EQ((Told{L"0x80041003", L"the provider LampProvider answered 0x80041003", L"CreateInstanceEnum",
                        L"Test_Lamp", L"LampProvider"}),
                  TakeTold());
    }
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(found->Skip(WBEM_INFINITE, 1)));
}

TEST_F(HostEnumerator, ASynchronousEnumerationStreamsToo)
{
    ServeMany(5000);
    const CComPtr<IEnumWbemClassObject> found = Start(0);
    EXPECT_EQ(5000u, Drain(found, L"Name").size());
}

TEST_F(HostEnumerator, NextAsyncBringsTheNextObjectsToASink)
{
    ServeMany(5);
    const CComPtr<IEnumWbemClassObject> found = Start();
    EXPECT_EQ(L"0", Next(found));
    const CComPtr<Collector> sink = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR, found->NextAsync(2, sink));
    EXPECT_EQ(WBEM_S_NO_ERROR, sink->Await().code);
    ASSERT_EQ(2u, sink->Count());
    EXPECT_EQ(L"2", Show(sink->Objects()[1], L"Name"));
    const CComPtr<Collector> rest = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR, found->NextAsync(10, rest));
    EXPECT_EQ(WBEM_S_FALSE, rest->Await().code);
    EXPECT_EQ(2u, rest->Count());
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, found->NextAsync(1, nullptr));
}

} // namespace
} // namespace orl::test
