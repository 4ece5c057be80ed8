// assoc and refs: what an object is associated with, and the associations themselves.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/commands/PrintResults.h"
#include "tools/orlwmi/commands/Subject.h"

namespace orl::client
{
namespace
{

// One restriction of the query, when it is asked for.
std::string Restriction(const char* keyword, const std::string& name, const char* kind)
{
    if (name.empty())
    {
        return {};
    }
    CheckName(name, kind);
    return std::string(" ") + keyword + " = " + name;
}

} // namespace

std::string MakeAssociationQuery(const Options& options, const std::string& path)
{
    const auto& wanted = options.association;
    std::string where = Restriction("AssocClass", wanted.assocClass, "class");
    where += Restriction("ResultClass", wanted.resultClass, "class");
    where += Restriction("Role", wanted.role, "property");
    where += Restriction("ResultRole", wanted.resultRole, "property");
    where += wanted.keysOnly ? " KeysOnly" : "";
    const std::string verb = options.command == Command::Assoc ? "ASSOCIATORS" : "REFERENCES";
    return verb + " OF {" + path + "}" + (where.empty() ? "" : " WHERE" + where);
}

void RunAssociations(const Options& options, Session& session)
{
    const std::string path = SubjectPath(options, session);
    if (ClassPathOf(path) == path)
    {
        throw Failure(ExitCode::Usage, path + " names a class: name an instance of it");
    }
    PrintResults(Results::Query(session.services, MakeAssociationQuery(options, path)), options, session, true);
}

} // namespace orl::client
