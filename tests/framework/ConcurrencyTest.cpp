// Many threads in one provider.
#include "tests/framework/Fixture.h"

#include <thread>

namespace orl::test
{
namespace
{

using Concurrency = ProviderTest;

TEST_F(Concurrency, EightThreadsEnumerateAtOnce)
{
    constexpr ULONG Instances = 200;
    constexpr int Rounds = 20;
    manager->enumerate = [&](CWomContext& context, ScriptedManager::Sink to)
    {
        CWomClassObject classObject(context);
        classObject.CreateClass(CComBSTR(manager->GetCimClassName()));
        for (ULONG i = 0; i < Instances; ++i)
        {
            CWomClassObject instance(context);
            instance.SpawnInstanceFromClass(classObject);
            instance.SetProperty(L"DeviceID", COrlString(L"X"));
            instance.Indicate(to);
        }
        return WBEM_S_NO_ERROR;
    };
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
    {
        threads.emplace_back(
            [&]
            {
                for (int round = 0; round < Rounds; ++round)
                {
                    const CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
                    told->keepsObjects = false;
                    provider->CreateInstanceEnumAsync(CComBSTR(L"Zarn_Thing"), 0, nullptr, told);
                    if (told->Taken() == Instances && told->Final().result == WBEM_S_NO_ERROR)
                        ++good;
                }
            });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(good, 8 * Rounds);
    EXPECT_EQ(thing->spawned, 8u * Rounds * Instances);
    EXPECT_LE(services->Lookups().size(), 8u) << "at most one lookup a thread, when all meet the empty cache";
}

TEST_F(Concurrency, RequestsMeetAShutdownAndANewBeginning)
{
    std::atomic<bool> stop{false};
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
    {
        threads.emplace_back(
            [&]
            {
                while (!stop)
                {
                    const CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
                    provider->CreateInstanceEnumAsync(CComBSTR(L"Zarn_Thing"), 0, nullptr, told);
                    const HRESULT status = told->Final().result;
                    if (status != WBEM_S_NO_ERROR && status != WBEM_E_PROVIDER_LOAD_FAILURE)
                        ++wrong;
                }
            });
    }
    const CComPtr<RecordingInitSink> init = MakeObject<RecordingInitSink>();
    for (int round = 0; round < 200; ++round)
    {
        provider->Shutdown(0, 0, nullptr);
        provider->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, init);
    }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(init->statuses.size(), 200u);
}

} // namespace
} // namespace orl::test
