// Enumerating generated adapters through IWbemServices into a sink that counts, beside a plain loop that copies the
// same records. Both ask the same agent for the records first, so the difference is what the path from agent to client
// costs.
//
//   ORL_BENCH_HBAS=N bench_enumerate [Google Benchmark's options]      N adapters, 100000 by default
//
// The agent reads its inventory once, so a process has one size. The peak memory printed is the process's so far; run
// with --benchmark_filter to read that of one benchmark alone.

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

std::size_t Adapters()
{
    const char* wanted = std::getenv("ORL_BENCH_HBAS"); // NOLINT(concurrency-mt-unsafe): before any thread
    return wanted == nullptr ? 100000 : std::stoul(wanted);
}

// Registry and inventory of this size.
fs::path MakeRegistry()
{
    const std::size_t hbas = Adapters();
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
        if (count != Adapters())
            state.SkipWithError("the agent did not report every adapter");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Adapters()));
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
    const CComPtr<IWbemServices> services = Connect();
    for (auto _ : state)
    {
        CComPtr<CountingSink> sink;
        sink.Attach(new CountingSink());
        Require(services->CreateInstanceEnumAsync(CComBSTR(L"Zarn_FCOEHBA"), 0, nullptr, sink), "the enumeration");
        // The host answers the call when the request is under way; it is done when the status has come.
        while (sink->status == WBEM_S_PENDING)
            Sleep(0);
        if (sink->status != WBEM_S_NO_ERROR || sink->count != Adapters())
            state.SkipWithError("the enumeration did not deliver every adapter");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Adapters()));
    state.counters["peak_MB"] = PeakMegabytes();
}

BENCHMARK(CopyRecords)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(EnumerateThroughServices)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    setenv("ORL2_REGISTRY", MakeRegistry().c_str(), 1);
    Require(CoInitializeEx(nullptr, COINIT_MULTITHREADED), "CoInitializeEx");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
