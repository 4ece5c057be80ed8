// steady_client: one client that asks the machine's WMI service for every class again and again, for as long as it
// lives.
//
//     steady_client MILLISECONDS     a round, so long a pause, and so on until SIGINT; then one more round
//     steady_client                  one round
//
// Prints what came of it (see Report.h), the instances of the last round among it. Exit code 0 when no call failed and
// each record was whole.
#include "tests/live/steady/Asking.h"
#include "tests/support/ProcessCounters.h"

#include <csignal>
#include <cstdio>
#include <ctime>
#include <string>

namespace
{

volatile std::sig_atomic_t g_interrupted = 0;

// Ends early when the signal comes.
void Pause(long milliseconds)
{
    constexpr long PerSecond = 1000;
    constexpr long Nanoseconds = 1000000;
    const timespec time = {milliseconds / PerSecond, milliseconds % PerSecond * Nanoseconds};
    if (g_interrupted == 0)
        nanosleep(&time, nullptr);
}

int Ask(long pause)
{
    orl::test::Report report;
    orl::test::Asking asking(report);
    if (asking.Begin())
    {
        const auto countFiles = [&] { report.Open(orl::test::CountProcess().handles); };
        const auto round = [&]
        {
            asking.Round();
            countFiles();
            report.PrintRound();
        };
        countFiles();
        while (pause > 0 && g_interrupted == 0)
        {
            round();
            Pause(pause);
        }
        round();
    }
    report.Print();
    return report.IsClean() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    char* end = nullptr;
    const long pause = argc == 2 ? std::strtol(argv[1], &end, 10) : 0;
    if (argc > 2 || (argc == 2 && (*end != '\0' || pause <= 0)))
    {
        std::fprintf(stderr, "usage: steady_client [MILLISECONDS]\n");
        return 2;
    }
    struct sigaction action = {};
    action.sa_handler = [](int) { g_interrupted = 1; };
    action.sa_flags = SA_RESTART; // nothing but the pause ends early
    sigaction(SIGINT, &action, nullptr);
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)))
        return 2;
    const int code = Ask(pause);
    CoUninitialize();
    return code;
}
