// enum: the instances of a class.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/commands/PrintResults.h"
#include "tools/orlwmi/commands/Subject.h"

#include <algorithm>

namespace orl::client
{
namespace
{

bool IsSystemProperty(const std::string& name)
{
    return name.compare(0, 2, "__") == 0;
}

// System properties are computed of the whole object: the service projects only when none is asked for.
std::string SelectList(const std::vector<std::string>& names)
{
    if (names.empty() || std::any_of(names.begin(), names.end(), IsSystemProperty))
    {
        return "*";
    }
    std::string list;
    for (const auto& name : names)
    {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

} // namespace

std::string MakeQuery(const Options& options)
{
    const std::string query = "SELECT " + SelectList(options.select) + " FROM " + options.subject;
    return options.where.empty() ? query : query + " WHERE " + options.where;
}

void RunEnum(const Options& options, Session& session)
{
    CheckName(options.subject, "class");
    const bool plain = options.where.empty() && SelectList(options.select) == "*";
    PrintResults(plain ? Results::Instances(session.services, options.subject)
                       : Results::Query(session.services, MakeQuery(options)),
                 options, session);
}

} // namespace orl::client
