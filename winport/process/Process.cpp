// The process-wide state of winport.
#include "winport/process/Process.h"

#include <atomic>
#include <mutex>
#include <set>
#include <string>

namespace winport
{

namespace
{

struct ThreadState
{
    IErrorInfo* error = nullptr;
    ULONG comUse = 0;

    ~ThreadState()
    {
        if (error)
            error->Release();
    }
};

thread_local ThreadState t_state;
std::atomic<ULONG> g_comUse{0};
std::atomic<WinportDebugOutput> g_debugOutput{nullptr};

} // namespace

ComUse ComInitialized()
{
    return {t_state.comUse, g_comUse.load()};
}

ComUse ComEnter()
{
    const ComUse before = ComInitialized();
    ++t_state.comUse;
    ++g_comUse;
    return before;
}

void ComLeave()
{
    if (t_state.comUse == 0)
        return;
    --t_state.comUse;
    --g_comUse;
}

IErrorInfo* ExchangeErrorInfo(IErrorInfo* error)
{
    IErrorInfo* before = t_state.error;
    t_state.error = error;
    return before;
}

WinportDebugOutput GetDebugOutput()
{
    return g_debugOutput.load();
}

WinportDebugOutput ExchangeDebugOutput(WinportDebugOutput output)
{
    return g_debugOutput.exchange(output);
}

bool FirstReport(const char* text)
{
    // Bounded, so that a file that changes for ever cannot fill the memory; past the bound everything is new.
    constexpr size_t MaxReports = 10000;
    static std::mutex lock;
    static std::set<std::string> reported;
    const std::lock_guard<std::mutex> guard(lock);
    return reported.size() >= MaxReports || reported.insert(text).second;
}

} // namespace winport
