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

ExitCode RunConnected(const Options& options, Output& output, const ErrorLines& errors, const Deadline& deadline,
                      Timing& timing)
{
    const auto services = Connect(NamespacePath(options.server, options.nameSpace), deadline);
    timing.Connected();
    Session session{services, deadline, output, timing, errors};
    return RunCommand(options, session);
}

ExitCode Run(const Options& options, Output& output, const ErrorLines& errors)
{
    Timing timing;
    const Deadline deadline(options.timeout);
    ComRuntime com;
    ExitCode result = ExitCode::Done;
    try
    {
        result = options.command == Command::Doctor ? RunDoctor(options, output, deadline)
                                                    : RunConnected(options, output, errors, deadline, timing);
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

ExitCode RunCommand(const Options& options, Session& session)
{
    switch (options.command)
    {
    case Command::Tree:
        RunTree(options, session);
        break;
    case Command::Stats:
        RunStats(options, session);
        break;
    case Command::Graph:
        RunGraph(options, session);
        break;
    case Command::Settings:
        RunSettings(options, session);
        break;
    case Command::Enum:
        RunEnum(options, session);
        break;
    case Command::Get:
        RunGet(options, session);
        break;
    case Command::Query:
        RunQuery(options, session);
        break;
    case Command::Assoc:
    case Command::Refs:
        RunAssociations(options, session);
        break;
    case Command::Call:
        return RunCall(options, session);
    case Command::Set:
        return RunSet(options, session);
    case Command::Reset:
        return RunReset(options, session);
    case Command::Delete:
        return RunDelete(options, session);
    case Command::Class:
        RunClass(options, session);
        break;
    case Command::Classes:
        RunClasses(options, session);
        break;
    case Command::Doctor:
        break;
    }
    return ExitCode::Done;
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
