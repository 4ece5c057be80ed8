// stress: the whole product under load and faults, for a bounded time.
//
//     stress [--seconds N] [--seed S]
//
// The seed is printed first; the same seed makes everybody decide the same again, while the order in which threads meet
// remains the machine's. Exit code 0 when nothing was wrong.

#include "Common/Src/ModuleTrace.h"
#include "tests/stress/Killing.h"
#include "tests/stress/Run.h"

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

ORL_MODULE_TRACE_OFF;

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 4 && arguments[0] == "--victim")
        return orl::test::RunVictim(arguments[1], orl::test::KillHba(std::stoul(arguments[2])),
                                    std::stoull(arguments[3]));
    orl::test::RunOptions options;
    options.seed = std::random_device()();
    for (std::size_t i = 0; i < arguments.size(); i += 2)
    {
        const bool hasValue = i + 1 < arguments.size();
        if (hasValue && arguments[i] == "--seconds")
            options.seconds = static_cast<unsigned>(std::stoul(arguments[i + 1]));
        else if (hasValue && arguments[i] == "--seed")
            options.seed = std::stoull(arguments[i + 1]);
        else
        {
            std::fprintf(stderr, "usage: stress [--seconds N] [--seed S]\n");
            return 2;
        }
    }
    return orl::test::RunStress(options);
}
