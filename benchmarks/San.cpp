#include "benchmarks/San.h"

#include "Common/Src/ModuleTrace.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

ORL_MODULE_TRACE_OFF;

namespace orl::bench
{

namespace
{

namespace fs = std::filesystem;

fs::path WorkFolder()
{
    return fs::canonical("/proc/self/exe").parent_path().parent_path() / "bench" / "san";
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

} // namespace

void WriteInventory(const San& san)
{
    const fs::path file = WorkFolder() / "inventory.json";
    const fs::path next = WorkFolder() / "inventory.new";
    std::ofstream(next) << R"({"generate": {"seed": 1, "hbas": )" << san.hbas << R"(, "targetsPerHba": )"
                        << san.targetsPerHba << R"(, "lunsPerTarget": )" << san.lunsPerTarget
                        << R"(, "settingsPerHba": )" << san.settingsPerHba << "}}\n";
    // The agent reads a file that was written just now again and again, for it may still be being written.
    fs::last_write_time(next, fs::file_time_type::clock::now() - std::chrono::minutes(1));
    fs::rename(next, file);
}

void SetUp()
{
    setenv("ORL2_REGISTRY", MakeRegistry().c_str(), 1); // NOLINT(concurrency-mt-unsafe): before any thread
    Require(CoInitializeEx(nullptr, COINIT_MULTITHREADED), "CoInitializeEx");
}

void Require(HRESULT hr, const char* what)
{
    if (FAILED(hr))
        throw std::runtime_error(std::string(what) + " failed");
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

} // namespace orl::bench
