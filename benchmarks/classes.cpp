// Every class that the provider serves, enumerated through IWbemServices by one client and by two at once. The SAN has
// 1,000 adapters. An instance's time has the agent's own work in it.

#include "benchmarks/San.h"

#include <benchmark/benchmark.h>

#include <string>

namespace
{

using namespace orl::bench;

constexpr San Adapters = {1000, 2, 4, 4};

// In the order in which the managers are registered.
constexpr const char* Classes[] = {"Zarn_FCOEHBA",
                                   "Zarn_FCoEPort",
                                   "Zarn_FCoEFabric",
                                   "Zarn_FcoeTarget",
                                   "Zarn_FCoeLUN",
                                   "Zarn_FCoeVLAN",
                                   "Zarn_FCoEStatistics",
                                   "Zarn_FCOESettingInt",
                                   "Zarn_FCOESettingEnum",
                                   "Zarn_FCoE_Adapter_HBA_Assoc",
                                   "Zarn_FCoE_HBA_Fabric_Assoc",
                                   "Zarn_FCoE_Fabric_Port_Assoc",
                                   "Zarn_FCoE_Port_Target_Assoc",
                                   "Zarn_FCoE_HBA_LUN_Assoc",
                                   "Zarn_FCoE_HBA_VLAN_Assoc",
                                   "Zarn_FCoE_HBA_Statistics_Assoc",
                                   "Zarn_FCoE_HBA_Setting_Assoc"};

void Enumerate(benchmark::State& state, const std::wstring& className)
{
    if (state.thread_index() == 0)
        WriteInventory(Adapters);
    const CComPtr<IWbemServices> services = Connect();
    std::size_t count = 0;
    for (auto _ : state)
    {
        CComPtr<CountingSink> sink;
        sink.Attach(new CountingSink());
        Require(services->CreateInstanceEnumAsync(CComBSTR(className.c_str()), 0, nullptr, sink), "the enumeration");
        if (sink->Await() != WBEM_S_NO_ERROR || sink->count == 0)
            state.SkipWithError("the enumeration delivered nothing");
        count += sink->count;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(count));
}

} // namespace

int main(int argc, char** argv)
{
    SetUp();
    for (const char* name : Classes)
    {
        const std::wstring wide(name, name + std::char_traits<char>::length(name));
        benchmark::RegisterBenchmark(name, [wide](benchmark::State& state) { Enumerate(state, wide); })
            ->Threads(1)
            ->Threads(2)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
