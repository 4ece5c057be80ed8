// orlwmi: the command line client.
#include "tools/orlwmi/Client.h"
#include "tools/orlwmi/Platform.h"

using namespace orl::client;

int main(int argc, char** argv)
{
    PrepareStreams();
    CatchInterrupts();
    StandardOutput output;
    const ExitCode code =
        RunClient(ProgramArguments(argc, argv), output, [](const std::string& lines) { WriteStandardError(lines); });
    if (code == ExitCode::TimedOut || code == ExitCode::Interrupted || output.IsBroken())
    {
        // A call that was given up may still be at work, or stuck, in the service's library: winding up would pull the
        // libraries from under it, or wait for it.
        EndProcess(static_cast<int>(code));
    }
    return static_cast<int>(code);
}
