// Parsing, connecting, running, and telling what went wrong.
#include "tools/orlwmi/Client.h"

#include "tools/orlwmi/CommandLine.h"
#include "tools/orlwmi/Connection.h"
#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/commands/Commands.h"
#include "tools/orlwmi/doctor/Doctor.h"

#include <new>

namespace orl::client
{
namespace
{

void RunConnected(const Options& options, Output& output, const Deadline& deadline, Timing& timing)
{
    const auto services = Connect(NamespacePath(options.server, options.nameSpace), deadline);
    timing.Connected();
    Session session{services, deadline, output, timing};
    RunCommand(options, session);
}

ExitCode Run(const Options& options, Output& output, const ErrorLines& errors)
{
    Timing timing;
    const Deadline deadline(options.timeout);
    ComRuntime com;
    ExitCode result = ExitCode::Done;
    try
    {
        if (options.command == Command::Doctor)
        {
            result = RunDoctor(options, output, deadline);
        }
        else
        {
            RunConnected(options, output, deadline, timing);
        }
        output.Flush();
    }
    catch (const Failure&)
    {
        output.Flush(); // what came before the failure is worth seeing
        throw;
    }
    if (options.timing)
    {
        errors("orlwmi: " + timing.Line() + "\n");
    }
    return result;
}

} // namespace

void RunCommand(const Options& options, Session& session)
{
    switch (options.command)
    {
    case Command::Tree:
        return RunTree(options, session);
    case Command::Enum:
        return RunEnum(options, session);
    case Command::Get:
        return RunGet(options, session);
    case Command::Query:
        return RunQuery(options, session);
    case Command::Class:
        return RunClass(options, session);
    case Command::Classes:
        return RunClasses(options, session);
    case Command::Doctor:
        break;
    }
}

ExitCode RunClient(const std::vector<std::string>& arguments, Output& output, const ErrorLines& errors) noexcept
try
{
    const auto parsed = ParseCommandLine(arguments);
    if (const auto* help = std::get_if<Help>(&parsed))
    {
        output.Write(help->text);
        output.Flush();
        return ExitCode::Done;
    }
    return Run(std::get<Options>(parsed), output, errors);
}
catch (const ReceiverGone&)
{
    return ExitCode::Done;
}
catch (const Failure& failure)
{
    errors(failure.Lines());
    return failure.Code();
}
catch (const CAtlException& failure)
{
    errors(Failure("the client failed", failure.m_hr, {}).Lines());
    return ExitCode::Failed;
}
catch (const std::exception& failure)
{
    errors(std::string("orlwmi: the client failed: ") + failure.what() + "\n");
    return ExitCode::Failed;
}

} // namespace orl::client
