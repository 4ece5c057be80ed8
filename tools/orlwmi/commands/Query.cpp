// query: whatever the query language can say.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/commands/PrintResults.h"

namespace orl::client
{

void RunQuery(const Options& options, Session& session)
{
    PrintResults(Results::Query(session.services, options.subject), options, session);
}

} // namespace orl::client
