// Changes settings of one adapter of an inventory in several threads at once, each its own settings, and writes each
// change to its output when it was answered as done:
//
//     setting_writer INVENTORY DEVICE-ID FIRST THREADS ROUNDS
//
// Thread T of them sets Limit(FIRST + 2 * T) to one number after the other; "Limit6=12".

#include "agentlibs/corelink/CoreAgent.h"
#include "Common/Src/ModuleTrace.h"
#include "winport/portable/Utf8.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

ORL_MODULE_TRACE_OFF;

int main(int argc, char** argv)
{
    if (argc != 6)
        return 2;
    orl::CoreAgent agent(orl::MakeInventorySettings({L"inventory", orl::FromUtf8(argv[1]), {}}));
    const COrlString adapter = orl::FromUtf8(argv[2]);
    const int first = std::atoi(argv[3]);
    const int rounds = std::atoi(argv[5]);
    std::mutex output;
    bool failed = false;
    std::vector<std::thread> threads;
    for (int number = 0; number < std::atoi(argv[4]); ++number)
        threads.emplace_back(
            [&, number]
            {
                const std::wstring name = L"Limit" + std::to_wstring(first + 2 * number);
                for (int round = 1; round <= rounds; ++round)
                {
                    ORL_SETTING_VAL_INT value;
                    value.Value = round;
                    CResult status;
                    const CResult result = agent.SetSetting(adapter, name, &value, status);
                    const std::lock_guard lock(output);
                    failed = failed || result.ulErrCode != 0;
                    if (result.ulErrCode == 0)
                        std::printf("%s=%d\n", orl::ToUtf8(name).c_str(), round);
                    std::fflush(stdout);
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    return failed ? 1 : 0;
}
