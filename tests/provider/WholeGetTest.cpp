// One get from the framework's COM face through the HBA's manager to the agent and back, with memory that runs out at
// every moment of it, and many of them at once.

#include "tests/provider/Fixture.h"

#include "classes/Zarn_FcoeHBA.h"
#include "framework/com/OrlInstProvider.h"

#include <thread>

namespace orl::test
{
namespace
{

class OneManager final : public ManagerSource
{
public:
    explicit OneManager(COrlFcoeAgentIntf* agent)
    {
        m_table.AddClassManager(CComBSTR(L"Zarn_FCOEHBA"), new CZarn_FcoeHBA(agent));
    }
    const ManagerTable* Managers(HRESULT& answer, COrlString&) noexcept override
    {
        answer = WBEM_S_NO_ERROR;
        return &m_table;
    }

private:
    ManagerTable m_table;
};

class IgnoringInitSink final : public ComObject<IWbemProviderInitSink>
{
public:
    HRESULT STDMETHODCALLTYPE SetStatus(LONG, LONG) override { return WBEM_S_NO_ERROR; }
};

class WholeGet : public ::testing::Test
{
protected:
    WholeGet() : managers(&agent)
    {
        ORL_FCOE_HBA hba;
        hba.deviceId = L"eth0.1002";
        hba.hbaName = L"host0";
        hba.instancePath = L"virtual\\host0";
        agent.hbas = {hba};
        services.Attach(new FakeWbemServices());
        services->Add(MakeFakeClass(L"Zarn_FCOEHBA"));
        services->Add(FakeExtendedStatus());
        provider.Attach(new OrlInstProvider(managers));
        Initialize();
    }

    // A new connection: its cache of class definitions is empty.
    void Initialize()
    {
        CComPtr<IgnoringInitSink> told;
        told.Attach(new IgnoringInitSink());
        ASSERT_EQ(provider->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, told), WBEM_S_NO_ERROR);
    }

    CComPtr<RecordingSink> Get(const CComBSTR& path)
    {
        CComPtr<RecordingSink> sink;
        sink.Attach(new RecordingSink());
        EXPECT_EQ(provider->GetObjectAsync(path, 0, nullptr, sink), WBEM_S_NO_ERROR);
        return sink;
    }

    ScriptedAgent agent;
    OneManager managers;
    CComPtr<FakeWbemServices> services;
    CComPtr<OrlInstProvider> provider;
};

TEST_F(WholeGet, EndsWithTheStatusOfMemoryWhereverItRunsOut)
{
    const CComBSTR path(L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"");
    const ULONG objects = ModuleReferences();
    ULONG failures = 0;
    for (ULONG n = 1;; ++n)
    {
        SCOPED_TRACE(n);
        ASSERT_LT(n, 1000U) << "no run succeeded";
        const ULONG before = OrlBstrAllocations();
        OrlFailBstrAllocation(n);
        CComPtr<RecordingSink> sink = Get(path);
        const bool failed = OrlBstrAllocations() - before >= n;
        OrlFailBstrAllocation(0);

        ASSERT_EQ(sink->Statuses().size(), 1U);
        EXPECT_EQ(sink->References(), 1U);
        const HRESULT status = sink->Final().result;
        if (!failed)
        {
            EXPECT_EQ(status, WBEM_S_NO_ERROR);
            EXPECT_EQ(sink->Taken(), 1U);
            break;
        }
        ++failures;
        EXPECT_TRUE(status == E_OUTOFMEMORY || status == static_cast<HRESULT>(WBEM_E_OUT_OF_MEMORY))
            << std::hex << static_cast<ULONG>(status);
        EXPECT_EQ(sink->Taken(), 0U);
        sink.Release();
        Initialize();
        EXPECT_EQ(ModuleReferences(), objects) << "objects are left behind";
    }
    // The path and its key, the class's name, and twelve properties with the path of one of them.
    EXPECT_GE(failures, 16U);
}

TEST_F(WholeGet, OfAnAdapterThatTheAgentDoesNotKnowIsNotFound)
{
    agent.hbas.clear();
    CComPtr<RecordingSink> sink = Get(CComBSTR(L"Zarn_FCOEHBA.DeviceID=\"none\""));
    EXPECT_EQ(static_cast<ULONG>(sink->Final().result), 0x80041002U);
    EXPECT_EQ(sink->Taken(), 0U);
}

TEST_F(WholeGet, EightThreadsGetEnumerateAndTraceAtOnce)
{
    const TraceCapture trace;
    const CComBSTR path(L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"");
    const CComBSTR name(L"Zarn_FCOEHBA");
    constexpr int rounds = 25;
    std::atomic<int> delivered{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
    {
        threads.emplace_back(
            [&, gets = i % 2 == 0]
            {
                for (int round = 0; round < rounds; ++round)
                {
                    CComPtr<RecordingSink> sink;
                    sink.Attach(new RecordingSink());
                    if (gets)
                        provider->GetObjectAsync(path, 0, nullptr, sink);
                    else
                        provider->CreateInstanceEnumAsync(name, 0, nullptr, sink);
                    delivered += static_cast<int>(sink->Taken());
                }
            });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(delivered, 8 * rounds);
    // Every scope left its two lines, whole.
    std::size_t entries = 0;
    std::size_t exits = 0;
    for (const std::string& message : trace.Messages())
    {
        entries += message == "ENTRY:  CZarn_FcoeHBA::SendInstance";
        exits += message == "EXIT:  CZarn_FcoeHBA::SendInstance";
    }
    EXPECT_EQ(entries, 8U * rounds);
    EXPECT_EQ(exits, 8U * rounds);
}

} // namespace
} // namespace orl::test
