// ASSOCIATORS OF and REFERENCES OF an adapter with many LUNs, through IWbemServices into a sink that counts: what one
// row costs must not depend on how many there are.

#include "benchmarks/San.h"

#include <benchmark/benchmark.h>

#include <string>

namespace
{

using namespace orl::bench;

void Ask(benchmark::State& state, const std::wstring& query)
{
    const auto luns = static_cast<std::size_t>(state.range(0));
    WriteInventory({1, 10, luns / 10});
    const CComPtr<IWbemServices> services = Connect();
    for (auto _ : state)
    {
        CComPtr<CountingSink> sink;
        sink.Attach(new CountingSink());
        Require(services->ExecQueryAsync(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, sink), "the query");
        if (sink->Await() != WBEM_S_NO_ERROR || sink->count != luns)
            state.SkipWithError("the query did not find every LUN");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(luns));
}

void AssociatorsOfAnHba(benchmark::State& state)
{
    Ask(state, L"ASSOCIATORS OF {Zarn_FCOEHBA.DeviceID=\"sim0\"} WHERE AssocClass = Zarn_FCoE_HBA_LUN_Assoc");
}

void ReferencesOfAnHba(benchmark::State& state)
{
    Ask(state, L"REFERENCES OF {Zarn_FCOEHBA.DeviceID=\"sim0\"} WHERE ResultClass = Zarn_FCoE_HBA_LUN_Assoc");
}

BENCHMARK(AssociatorsOfAnHba)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(ReferencesOfAnHba)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    SetUp();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
