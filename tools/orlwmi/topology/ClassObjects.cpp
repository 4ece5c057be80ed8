// The objects of a class that a namespace may lack.
#include "tools/orlwmi/topology/ClassObjects.h"

#include "tools/orlwmi/Failure.h"

namespace orl::client
{

void ForEachObject(const std::function<Results()>& ask, Session& session,
                   const std::function<void(IWbemClassObject*)>& visit)
{
    try
    {
        Results results = ask();
        while (const auto object = results.Next(session.deadline, session.output))
        {
            session.timing.CountObject();
            visit(object);
        }
    }
    catch (const Failure& failure)
    {
        if (failure.Status() != WBEM_E_INVALID_CLASS && failure.Status() != WBEM_E_NOT_FOUND)
        {
            throw;
        }
    }
}

} // namespace orl::client
