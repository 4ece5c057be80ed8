// Whole requests from the framework's COM face through the device managers to the agent and back, with memory that runs
// out at every moment of one, and many of all kinds at once.

#include "tests/provider/DeviceCases.h"

#include "framework/com/OrlInstProvider.h"

#include <thread>

namespace orl::test
{
namespace
{

class DeviceManagers final : public ManagerSource
{
public:
    explicit DeviceManagers(COrlFcoeAgentIntf* agent)
    {
        for (const DeviceCase& c : DeviceCases())
            m_table.AddClassManager(CComBSTR(c.cimClass.c_str()), c.make(agent).release());
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
        for (const DeviceCase& c : DeviceCases())
            services->Add(MakeFakeClass(c.cimClass));
        services->Add(FakeWarningMessage());
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
    DeviceManagers managers;
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

TEST_F(WholeGet, EightThreadsMixRequestsOfAllClassesAndTraceAtOnce)
{
    agent.hbas.clear();
    for (const DeviceCase& c : DeviceCases())
        c.add(agent, L"X");
    const TraceCapture trace;
    constexpr int rounds = 25;
    constexpr int threadCount = 8;
    std::atomic<std::size_t> delivered{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
    {
        threads.emplace_back(
            [&, i]
            {
                for (int round = 0; round < rounds; ++round)
                {
                    const DeviceCase& c = DeviceCases()[static_cast<std::size_t>(i + round) % DeviceCases().size()];
                    CComPtr<RecordingSink> sink;
                    sink.Attach(new RecordingSink());
                    if (round % 2 == 0)
                        provider->GetObjectAsync(CComBSTR(c.Path().c_str()), 0, nullptr, sink);
                    else
                        provider->CreateInstanceEnumAsync(CComBSTR(c.cimClass.c_str()), 0, nullptr, sink);
                    EXPECT_EQ(sink->Final().result, WBEM_S_NO_ERROR);
                    delivered += sink->Taken();

                    CComPtr<RecordingSink> deleted;
                    deleted.Attach(new RecordingSink());
                    provider->DeleteInstanceAsync(CComBSTR(DeviceCases()[2].Path().c_str()), 0, nullptr, deleted);
                    EXPECT_EQ(deleted->Final().result, WBEM_S_NO_ERROR);
                }
            });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(delivered, std::size_t{threadCount} * rounds);
    EXPECT_EQ(agent.calls.size(), std::size_t{2} * threadCount * rounds);
    // Every scope left its two lines, whole.
    std::size_t entries = 0;
    std::size_t exits = 0;
    for (const std::string& message : trace.Messages())
    {
        entries += message.rfind("ENTRY:  CZarn_", 0) == 0 && message.ends_with("::SendInstance");
        exits += message.rfind("EXIT:  CZarn_", 0) == 0 && message.ends_with("::SendInstance");
    }
    EXPECT_EQ(entries, std::size_t{threadCount} * rounds);
    EXPECT_EQ(exits, std::size_t{threadCount} * rounds);
}

} // namespace
} // namespace orl::test
