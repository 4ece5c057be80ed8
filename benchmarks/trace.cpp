// What tracing costs: nothing worth mentioning while it is off, and beside a bare formatted write while it is on.

#include "Common/Src/ModuleTrace.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <new>
#include <string>
#include <unistd.h>

ORL_MODULE_TRACE_OFF;

namespace
{

constexpr int WrittenLines = 50000;

// A folder for the logs, away from what is installed on this machine.
class LogFolder
{
public:
    LogFolder() : m_path(std::filesystem::temp_directory_path() / ("orl-bench-" + std::to_string(getpid())))
    {
        std::filesystem::create_directory(m_path);
        SetEnvironmentVariableW(L"Temp", m_path.wstring().c_str());
        SetEnvironmentVariableW(L"ORL2_REGISTRY", (m_path / "none.reg").wstring().c_str());
    }
    ~LogFolder() { std::filesystem::remove_all(m_path); }
    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    std::string File(const char* name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

const LogFolder& Folder()
{
    static const LogFolder folder;
    return folder;
}

void Restart()
{
    g_OrlDebug.~COrlDebug();
    new (&g_OrlDebug) COrlDebug;
}

// A log in the benchmark's own folder for as long as it lives.
class OpenLog
{
public:
    explicit OpenLog(benchmark::State& state)
    {
        Folder();
        Restart();
        if (g_OrlDebug.Configure(L"BENCH_", L".\\Bench.txt", 3, 0, 0, nullptr) != 0)
            state.SkipWithError("the log could not be opened");
    }
    ~OpenLog() { Restart(); }
    OpenLog(const OpenLog&) = delete;
    OpenLog& operator=(const OpenLog&) = delete;
};

[[gnu::noinline]] bool Bare(bool value)
{
    benchmark::DoNotOptimize(value);
    return value;
}

[[gnu::noinline]] bool Scoped(bool value)
{
    COrlTraceScope scope(L"CZarn_FcoeHBA::SendInstance");
    benchmark::DoNotOptimize(value);
    return value;
}

[[gnu::noinline]] bool ScopedWithResult(bool value)
{
    bool result = value;
    COrlTraceScope scope(L"CZarn_FcoeHBA::SendInstance", &result);
    benchmark::DoNotOptimize(result);
    return result;
}

void CallBare(benchmark::State& state)
{
    for (auto _ : state)
        Bare(true);
}

void CallScopedWhileOff(benchmark::State& state)
{
    for (auto _ : state)
        Scoped(true);
}

void CallScopedWithResultWhileOff(benchmark::State& state)
{
    for (auto _ : state)
        ScopedWithResult(true);
}

void PrintWhileOff(benchmark::State& state)
{
    for (auto _ : state)
        g_OrlDebug.Print(L"SendInstance failed for %s", L"eth0");
}

void CallScopedWhileOn(benchmark::State& state)
{
    const OpenLog log(state);
    for (auto _ : state)
        Scoped(true);
}

void PrintWhileOn(benchmark::State& state)
{
    const OpenLog log(state);
    const std::wstring message(static_cast<size_t>(state.range(0)), L'm');
    for (auto _ : state)
        g_OrlDebug.Print(L"%s", message.c_str());
}

// The same bytes by the narrow printf, into an open file that is flushed after each line.
void FormatWriteAndFlush(benchmark::State& state)
{
    const std::string message(static_cast<size_t>(state.range(0)), 'm');
    FILE* file = std::fopen(Folder().File("Bare.txt").c_str(), "w");
    for (auto _ : state)
    {
        std::fprintf(file, "%s\tPID:%x\tTID:%x\t%02d:%02d:%02d.%03d\t(%llX)\tTIER %d\t\t%s\n", "BENCH_", 0x12345,
                     0x12345, 7, 8, 9, 10, 0x1234ABCDEFULL, 1, message.c_str());
        std::fflush(file);
    }
    std::fclose(file);
}

} // namespace

BENCHMARK(CallBare);
BENCHMARK(CallScopedWhileOff)->ThreadRange(1, 8);
BENCHMARK(CallScopedWithResultWhileOff);
BENCHMARK(PrintWhileOff);
BENCHMARK(CallScopedWhileOn)->Iterations(WrittenLines);
BENCHMARK(PrintWhileOn)->RangeMultiplier(4)->Range(16, 1024)->Iterations(WrittenLines);
BENCHMARK(FormatWriteAndFlush)->RangeMultiplier(4)->Range(16, 1024)->Iterations(WrittenLines);

BENCHMARK_MAIN();
