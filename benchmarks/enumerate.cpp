// Enumerating generated adapters and LUNs through IWbemServices into a sink that counts, beside a plain loop that
// copies the same records, and one get among 10,000 LUNs beside one walk of them. Both sides ask the same agent for the
// records first, so the difference is what the path from agent to client costs.
//
// "peak_MB" is the process's peak memory: of a benchmark alone when it runs alone.

#include "benchmarks/San.h"

#include "agent/OrlFcoeAgentIntf.h"

#include <benchmark/benchmark.h>
#include <wbemidl.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace
{

using namespace orl::bench;

// As proc(5) has it.
double PeakMegabytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
    {
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) / 1024;
    }
    return 0;
}

COrlFcoeAgentIntf& Agent()
{
    static COrlFcoeAgentIntf* const agent = []
    {
        const HMODULE library = LoadLibraryW(L"Fcoelink");
        if (library == nullptr)
            throw std::runtime_error("Fcoelink could not be loaded");
        return reinterpret_cast<GetFcoeAgentFunction>(
            reinterpret_cast<void (*)()>(GetProcAddress(library, "GetFcoeAgent")))();
    }();
    return *agent;
}

// One kind of record: its class, and how a SAN holds so many of them.
struct Hbas
{
    using Record = ORL_FCOE_HBA;
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateHBAs;
    static constexpr const wchar_t* Class = L"Zarn_FCOEHBA";
    static San Holding(std::size_t count) { return {count, 1, 1}; }
};

struct Luns
{
    using Record = ORL_FCOE_LUN;
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateLUNs;
    static constexpr const wchar_t* Class = L"Zarn_FCoeLUN";
    static San Holding(std::size_t count) { return {count / 1000, 10, 100}; }
};

template <typename Kind>
std::vector<typename Kind::Record> RecordsOf(const wchar_t* deviceId)
{
    std::vector<typename Kind::Record> records;
    CResult status;
    (Agent().*Kind::Enumerate)(COrlString(deviceId), records, status);
    return records;
}

void TellWhatItTook(benchmark::State& state, std::size_t items)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
    state.counters["peak_MB"] = PeakMegabytes();
}

template <typename Kind>
void CopyRecords(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    WriteInventory(Kind::Holding(count));
    for (auto _ : state)
    {
        const auto records = RecordsOf<Kind>(L"");
        for (const auto& record : records)
        {
            auto copy = record;
            benchmark::DoNotOptimize(copy);
        }
        if (records.size() != count)
            state.SkipWithError("the agent did not report every record");
    }
    TellWhatItTook(state, count);
}

template <typename Kind>
void ThroughServices(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    WriteInventory(Kind::Holding(count));
    const CComPtr<IWbemServices> services = Connect();
    for (auto _ : state)
    {
        CComPtr<CountingSink> sink;
        sink.Attach(new CountingSink());
        Require(services->CreateInstanceEnumAsync(CComBSTR(Kind::Class), 0, nullptr, sink), "the enumeration");
        if (sink->Await() != WBEM_S_NO_ERROR || sink->count != count)
            state.SkipWithError("the enumeration did not deliver every record");
    }
    TellWhatItTook(state, count);
}

constexpr San TenThousandLunsOfEachOfTen = {10, 10, 1000};

void WalkTheLunsOfOneHba(benchmark::State& state)
{
    WriteInventory(TenThousandLunsOfEachOfTen);
    for (auto _ : state)
    {
        if (RecordsOf<Luns>(L"sim3").size() != 10000)
            state.SkipWithError("the agent did not report every LUN");
    }
}

void GetOneLunThroughServices(benchmark::State& state)
{
    WriteInventory(TenThousandLunsOfEachOfTen);
    const CComPtr<IWbemServices> services = Connect();
    const CComBSTR path(L"Zarn_FCoeLUN.DeviceID=\"sim3\",ID=7");
    for (auto _ : state)
    {
        CComPtr<IWbemClassObject> lun;
        Require(services->GetObject(path, 0, nullptr, &lun, nullptr), "the get");
    }
}

template <typename Kind>
void Both(const char* copying, const char* through, std::int64_t most)
{
    benchmark::RegisterBenchmark(copying, &CopyRecords<Kind>)
        ->RangeMultiplier(10)
        ->Range(1000, most)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark(through, &ThroughServices<Kind>)
        ->RangeMultiplier(10)
        ->Range(1000, most)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

BENCHMARK(WalkTheLunsOfOneHba)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(GetOneLunThroughServices)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    SetUp();
    Both<Hbas>("CopyHbas", "HbasThroughServices", 100000);
    Both<Luns>("CopyLuns", "LunsThroughServices", 1000000);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
