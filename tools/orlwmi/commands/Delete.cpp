// delete: instances, by their paths.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/Actions.h"
#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Text.h"

namespace orl::client
{
namespace
{

// Whether the next path may be tried: not when the time is over, or the user wants no more.
bool MayGoOn(const Failure& failure)
{
    return failure.Code() != ExitCode::TimedOut && failure.Code() != ExitCode::Interrupted;
}

} // namespace

ExitCode RunDelete(const Options& options, Session& session)
{
    ExitCode code = ExitCode::Done;
    for (const auto& path : options.operands)
    {
        try
        {
            DeleteInstance(session.services, path, session.deadline);
            session.timing.CountObject();
            session.output.Write("deleted " + Printable(path) + "\n");
        }
        catch (const Failure& failure)
        {
            if (!MayGoOn(failure))
            {
                throw;
            }
            session.output.Flush();
            session.errors(failure.Lines());
            code = code == ExitCode::Done ? failure.Code() : code;
        }
    }
    return code;
}

} // namespace orl::client
