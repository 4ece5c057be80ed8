// Creates virtual ports of an inventory and writes the name of each to its output when it is done:
//
//     port_writer INVENTORY DEVICE-ID COUNT

#include "agentlibs/fcoelink/Backend.h"
#include "Common/Src/ModuleTrace.h"
#include "winport/portable/Utf8.h"

#include <cstdio>
#include <cstdlib>

ORL_MODULE_TRACE_OFF;

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    try
    {
        const auto backend = orl::MakeInventoryBackend({L"inventory", orl::FromUtf8(argv[1]), {}});
        for (int left = std::atoi(argv[3]); left > 0; --left)
        {
            COrlString name;
            std::vector<WarningMessageObj> warnings;
            CResult status;
            if (!backend->CreateVirtualPort(COrlString(orl::FromUtf8(argv[2]).c_str()), name, warnings, status))
                return 1;
            std::printf("%s\n", orl::ToUtf8(name).c_str());
            std::fflush(stdout);
        }
    }
    catch (const orl::BackendError& error)
    {
        std::fprintf(stderr, "%s\n", orl::ToUtf8(error.Text()).c_str());
        return 1;
    }
    return 0;
}
