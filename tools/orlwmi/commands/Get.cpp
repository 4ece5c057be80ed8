// get: one instance, by its path or by class and keys.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/commands/PrintResults.h"
#include "tools/orlwmi/commands/Subject.h"

namespace orl::client
{
void RunGet(const Options& options, Session& session)
{
    const std::string path = SubjectPath(options, session);
    const auto object = GetObjectAt(session.services, path, session.deadline);
    if (IsClass(object))
    {
        throw Failure(ExitCode::Usage, path + " names a class: name an instance of it, or use orlwmi class");
    }
    session.timing.CountObject();
    const Format format = options.format.value_or(Format::List);
    const auto writer = MakeResultWriter(format, Shape::One, session.output);
    writer->Write(RecordReader(options, format, session).Read(object));
    writer->End();
}

} // namespace orl::client
