// A process that uses the provider again and again, as a provider host does over months.

#include "tests/com/conformance/InstalledProduct.h"
#include "tests/com/conformance/LoadedServer.h"
#include "Common/Src/ModuleTrace.h"
#include "tests/support/FakeWbemServices.h"
#include "tests/support/ProcessCounters.h"
#include "tests/support/RecordingSink.h"

#include <gtest/gtest.h>

ORL_MODULE_TRACE_OFF;

namespace orl::test
{
namespace
{

class QuietInitSink final : public ComObject<IWbemProviderInitSink>
{
public:
    HRESULT STDMETHODCALLTYPE SetStatus(LONG status, LONG) override
    {
        initialized = status == static_cast<LONG>(WBEM_S_INITIALIZED);
        return WBEM_S_NO_ERROR;
    }
    bool initialized = false;
};

class Rounds : public ::testing::Test
{
protected:
    Rounds() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    ~Rounds() override { CoUninitialize(); }

    // Nothing has grown. What a heap keeps ready for the next allocation moves; one allocation that every round leaves
    // behind is 16 bytes or more on either platform.
    static void ExpectFlat(const ProcessCounters& before, const ProcessCounters& after, std::size_t rounds)
    {
        EXPECT_EQ(after.handles, before.handles);
        EXPECT_EQ(after.threads, before.threads);
        EXPECT_LT(after.heapBytes, before.heapBytes + 8 * rounds);
    }
};

constexpr std::size_t WarmUp = 100;

// Before anything has been initialized in this process: what an initialization loads stays, and keeps the framework.
TEST_F(Rounds, ServerThatWasNotInitializedIsUnloadedWholly)
{
    constexpr std::size_t Count = 200;
    ProcessCounters before{};
    for (std::size_t round = 0; round < WarmUp + Count; ++round)
    {
        if (round == WarmUp)
            before = CountProcess();
        {
            const LoadedServer server(L"Orl2InstUtility");
            ASSERT_TRUE(server.IsLoaded());
            ASSERT_NE(server.Make<IWbemServices>(ProviderClass).p, nullptr);
            ASSERT_EQ(server.CanUnloadNow(), S_OK);
        }
        ASSERT_EQ(GetModuleHandleW(BuiltLibrary(L"Orl2InstUtility").c_str()), nullptr);
    }
    before.heapBytes += Count * HeapLeftByUnload;
    ExpectFlat(before, CountProcess(), Count);
}

// Load, initialize, enumerate, shut down, unload.
void UseOnce(IWbemServices* service)
{
    const LoadedServer server(L"Orl2InstUtility");
    ASSERT_TRUE(server.IsLoaded());
    {
        const CComPtr<IWbemServices> provider = server.Make<IWbemServices>(ProviderClass);
        ASSERT_NE(provider.p, nullptr);
        const CComPtr<QuietInitSink> told = MakeObject<QuietInitSink>();
        CComQIPtr<IWbemProviderInit>(provider)->Initialize(nullptr, 0, nullptr, nullptr, service, nullptr, told);
        ASSERT_TRUE(told->initialized);
        for (const wchar_t* name : {L"Zarn_FCOEHBA", L"Zarn_FCoeLUN"})
        {
            const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
            provider->CreateInstanceEnumAsync(CComBSTR(name), 0, nullptr, sink);
            ASSERT_EQ(sink->Final().result, WBEM_S_NO_ERROR);
            ASSERT_GT(sink->Taken(), 0U);
        }
        ASSERT_EQ(CComQIPtr<IWbemShutdown>(provider)->Shutdown(0, 0, nullptr), WBEM_S_NO_ERROR);
    }
    ASSERT_EQ(server.CanUnloadNow(), S_OK);
}

TEST_F(Rounds, AThousandLeaveNothingBehind)
{
    constexpr std::size_t Count = 1000;
    const InstalledProduct product;
    const CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
    services->keepsLookups = false;
    services->Add(MakeFakeClass(L"Zarn_FCOEHBA"));
    services->Add(MakeFakeClass(L"Zarn_FCoeLUN"));
    ProcessCounters before{};
    for (std::size_t round = 0; round < WarmUp + Count; ++round)
    {
        if (round == WarmUp)
            before = CountProcess();
        ASSERT_NO_FATAL_FAILURE(UseOnce(services)) << "round " << round;
    }
    ExpectFlat(before, CountProcess(), Count);
    EXPECT_EQ(References(services), 1U);
}

} // namespace
} // namespace orl::test
