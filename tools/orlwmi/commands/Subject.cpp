// Paths and names, checked.
#include "tools/orlwmi/commands/Subject.h"

#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"

#include <algorithm>

namespace orl::client
{

std::string SubjectPath(const Options& options, Session& session)
{
    if (options.keys.empty())
    {
        return options.subject;
    }
    const auto definition = GetObjectAt(session.services, options.subject, session.deadline);
    if (!IsClass(definition))
    {
        throw Failure(ExitCode::Usage, options.subject + " names an instance already: --key goes with a class");
    }
    return MakeInstancePath(options.subject, options.keys, definition);
}

void CheckName(const std::string& name, const char* kind)
{
    const bool named = std::all_of(name.begin(), name.end(),
                                   [](char c)
                                   {
                                       const auto byte = static_cast<unsigned char>(c);
                                       return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                                              (c >= 'A' && c <= 'Z') || byte >= 0x80;
                                   });
    if (!named)
    {
        throw Failure(ExitCode::Usage, "\"" + name + "\" is not the name of a " + kind);
    }
}

} // namespace orl::client
