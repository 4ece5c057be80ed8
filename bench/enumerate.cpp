// Enumerating generated adapters and LUNs through IWbemServices into a sink that counts, beside a plain loop that
// copies the same records, and one get among 10,000 LUNs beside one walk of them. Both sides ask the same agent for the
// records first, so the difference is what the path from agent to client costs.
//
// "peak_MB" is the process's peak memory during that benchmark alone.

#include "agent/OrlFcoeAgentIntf.h"
#include "Common/Src/ModuleTrace.h"
#include "com/OrlAtl.h"
#include "com/OrlCom.h"

#include <benchmark/benchmark.h>
#include <wbemidl.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

ORL_MODULE_TRACE_OFF;

namespace
{

namespace fs = std::filesystem;

// How many of each kind the inventory is to hold.
struct San
{
    std::size_t hbas;
    std::size_t targetsPerHba;
    std::size_t lunsPerTarget;
};

fs::path WorkFolder()
{
    return fs::canonical("/proc/self/exe").parent_path().parent_path() / "bench" / "enumerate";
}

// The agent notices that its file has changed.
void WriteInventory(const San& san)
{
    const fs::path file = WorkFolder() / "inventory.json";
    const fs::path next = WorkFolder() / "inventory.new";
    std::ofstream(next) << R"({"generate": {"seed": 1, "hbas": )" << san.hbas << R"(, "targetsPerHba": )"
                        << san.targetsPerHba << R"(, "lunsPerTarget": )" << san.lunsPerTarget << "}}\n";
    fs::rename(next, file);
}

fs::path MakeRegistry()
{
    const fs::path bin = fs::canonical("/proc/self/exe").parent_path();
    const fs::path work = WorkFolder();
    fs::create_directories(work);
    WriteInventory({1, 1, 1});
    const fs::path registry = work / "registry.reg";
    const std::string command = "'" ORL_SOURCE_DIR "/tools/make-registry' --bin '" + bin.string() + "' --schema '" +
                                (bin.parent_path() / "schema").string() + "' --backend inventory --inventory '" +
                                (work / "inventory.json").string() + "' '" + registry.string() + "'";
    if (std::system(command.c_str()) != 0) // NOLINT(cert-env33-c): a fixed script of this repository
        throw std::runtime_error("the registry could not be written");
    return registry;
}

void Require(HRESULT hr, const char* what)
{
    if (FAILED(hr))
        throw std::runtime_error(std::string(what) + " failed");
}

class CountingSink final : public orl::ComObject<IWbemObjectSink>
{
public:
    std::size_t count = 0;
    std::atomic<HRESULT> status = WBEM_S_PENDING; // set by the host's thread

    HRESULT STDMETHODCALLTYPE Indicate(LONG objects, IWbemClassObject**) override
    {
        count += static_cast<std::size_t>(objects);
        return WBEM_S_NO_ERROR;
    }
    HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT result, BSTR, IWbemClassObject*) override
    {
        if (flags == WBEM_STATUS_COMPLETE)
            status = result;
        return WBEM_S_NO_ERROR;
    }
};

// Peak memory since ForgetPeak, as proc(5) has it.
void ForgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << 5;
}

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
    ForgetPeak();
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

CComPtr<IWbemServices> Connect()
{
    CComPtr<IWbemLocator> locator;
    Require(CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                             reinterpret_cast<void**>(&locator)),
            "CoCreateInstance of the locator");
    CComPtr<IWbemServices> services;
    Require(locator->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr, nullptr, 0, nullptr, nullptr, &services),
            "ConnectServer");
    return services;
}

template <typename Kind>
void ThroughServices(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    WriteInventory(Kind::Holding(count));
    const CComPtr<IWbemServices> services = Connect();
    ForgetPeak();
    for (auto _ : state)
    {
        CComPtr<CountingSink> sink;
        sink.Attach(new CountingSink());
        Require(services->CreateInstanceEnumAsync(CComBSTR(Kind::Class), 0, nullptr, sink), "the enumeration");
        // The host answers the call when the request is under way; it is done when the status has come.
        while (sink->status == WBEM_S_PENDING)
            Sleep(0);
        if (sink->status != WBEM_S_NO_ERROR || sink->count != count)
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
    setenv("ORL2_REGISTRY", MakeRegistry().c_str(), 1);
    Require(CoInitializeEx(nullptr, COINIT_MULTITHREADED), "CoInitializeEx");
    Both<Hbas>("CopyHbas", "HbasThroughServices", 100000);
    Both<Luns>("CopyLuns", "LunsThroughServices", 1000000);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
