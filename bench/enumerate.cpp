// Enumerating generated adapters through IWbemServices into a sink that counts, beside a plain loop that copies the
// same records. Both ask the same agent for the records first, so the difference is what the path from agent to client
// costs.
//
//   bench_enumerate [Google Benchmark's options]
//
// The peak memory printed is the process's so far; run with --benchmark_filter for one size to read it alone.

#include "agent/OrlFcoeAgentIntf.h"
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

#include <sys/resource.h>

namespace
{

namespace fs = std::filesystem;

// A registry file, schema and inventory of its own for each size, made once.
fs::path RegistryFor(std::int64_t hbas)
{
    const fs::path bin = fs::canonical("/proc/self/exe").parent_path();
    const fs::path work = bin.parent_path() / "bench" / std::to_string(hbas);
    fs::create_directories(work);
    const fs::path inventory = work / "inventory.json";
    std::ofstream(inventory) << R"({"generate": {"seed": 1, "hbas": )" << hbas << "}}\n";
    const fs::path registry = work / "registry.reg";
    const std::string command = "'" ORL_SOURCE_DIR "/tools/make-registry' --bin '" + bin.string() + "' --schema '" +
                                (bin.parent_path() / "schema").string() + "' --backend inventory --inventory '" +
                                inventory.string() + "' '" + registry.string() + "'";
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

double PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void CopyRecords(benchmark::State& state)
{
    setenv("ORL2_REGISTRY", RegistryFor(state.range(0)).c_str(), 1);
    const HMODULE library = LoadLibraryW(L"Fcoelink");
    if (library == nullptr)
        throw std::runtime_error("Fcoelink could not be loaded");
    const auto factory =
        reinterpret_cast<GetFcoeAgentFunction>(reinterpret_cast<void (*)()>(GetProcAddress(library, "GetFcoeAgent")));
    COrlFcoeAgentIntf* agent = factory();
    for (auto _ : state)
    {
        std::vector<ORL_FCOE_HBA> records;
        CResult status;
        agent->EnumerateHBAs(COrlString(), records, status);
        std::size_t count = 0;
        for (const ORL_FCOE_HBA& record : records)
        {
            ORL_FCOE_HBA copy = record;
            benchmark::DoNotOptimize(copy);
            ++count;
        }
        if (count != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("the agent did not report every adapter");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["peak_MB"] = PeakMegabytes();
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

void EnumerateThroughServices(benchmark::State& state)
{
    setenv("ORL2_REGISTRY", RegistryFor(state.range(0)).c_str(), 1);
    const CComPtr<IWbemServices> services = Connect();
    for (auto _ : state)
    {
        CComPtr<CountingSink> sink;
        sink.Attach(new CountingSink());
        Require(services->CreateInstanceEnumAsync(CComBSTR(L"Zarn_FCOEHBA"), 0, nullptr, sink), "the enumeration");
        // The host answers the call when the request is under way; it is done when the status has come.
        while (sink->status == WBEM_S_PENDING)
            Sleep(0);
        if (sink->status != WBEM_S_NO_ERROR || sink->count != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("the enumeration did not deliver every adapter");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["peak_MB"] = PeakMegabytes();
}

BENCHMARK(CopyRecords)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(EnumerateThroughServices)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
