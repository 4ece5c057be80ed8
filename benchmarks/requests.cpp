// Single requests through IWbemServices, one after the other: how long one takes in the middle (p50_us) and at its
// worst but one in a hundred (p99_us).

#include "benchmarks/San.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace
{

using namespace orl::bench;

// What the tools of a machine with two busy adapters ask for.
constexpr San TwoAdapters = {2, 4, 8, 4};

void Repeat(benchmark::State& state, const std::function<HRESULT(IWbemServices*)>& request)
{
    WriteInventory(TwoAdapters);
    const CComPtr<IWbemServices> services = Connect();
    Require(request(services), "the request");
    std::vector<double> times;
    for (auto _ : state)
    {
        const auto start = std::chrono::steady_clock::now();
        if (FAILED(request(services)))
            state.SkipWithError("a request failed");
        times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    state.counters["p50_us"] = times[times.size() / 2];
    state.counters["p99_us"] = times[times.size() * 99 / 100];
}

void Get(benchmark::State& state, const wchar_t* path)
{
    Repeat(state,
           [path](IWbemServices* services)
           {
               CComPtr<IWbemClassObject> object;
               return services->GetObject(CComBSTR(path), 0, nullptr, &object, nullptr);
           });
}

void GetAnAdapter(benchmark::State& state)
{
    Get(state, L"Zarn_FCOEHBA.DeviceID=\"sim1\"");
}

void GetALun(benchmark::State& state)
{
    Get(state, L"Zarn_FCoeLUN.DeviceID=\"sim1\",ID=3");
}

void GetASetting(benchmark::State& state)
{
    Get(state, L"Zarn_FCOESettingInt.Caption=\"Limit0\",ParentId=\"sim1\",ParentType=\"NIC\"");
}

void GenerateAName(benchmark::State& state)
{
    Repeat(state,
           [](IWbemServices* services)
           {
               CComPtr<IWbemClassObject> answer;
               return services->ExecMethod(CComBSTR(L"Zarn_FCOEHBA.DeviceID=\"sim1\""),
                                           CComBSTR(L"GenerateVirtualPortWWPN"), 0, nullptr, nullptr, &answer, nullptr);
           });
}

BENCHMARK(GetAnAdapter)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(GetALun)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(GetASetting)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(GenerateAName)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    SetUp();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
