// The program's way from arguments to exit code, without its connection.
#include "tests/client/ClientRun.h"

#include "tools/orlwmi/Client.h"
#include "tools/orlwmi/CommandLine.h"
#include "tools/orlwmi/Failure.h"

namespace orl::test
{

using namespace orl::client;

std::string MemoryOutput::Text() const
{
    std::string text;
    for (const auto& piece : m_pieces)
    {
        text += piece;
    }
    return text;
}

Ran RunOn(const FakeServices& services, const std::vector<std::string>& arguments)
{
    Ran ran;
    MemoryOutput output;
    try
    {
        const auto parsed = ParseCommandLine(arguments);
        const Options& options = std::get<Options>(parsed);
        const Deadline deadline(options.timeout);
        Timing timing;
        const ErrorLines errors = [&ran](const std::string& lines) { ran.errors += lines; };
        Session session{services.Get(), deadline, output, timing, errors};
        ran.code = RunCommand(options, session);
    }
    catch (const Failure& failure)
    {
        ran.code = failure.Code();
        ran.errors += failure.Lines();
    }
    output.Flush();
    ran.output = output.Text();
    return ran;
}

} // namespace orl::test
