// One call of an agent's operation: where a back end's exceptions end.
#pragma once

#include "agent/WarningMessageObj.h"
#include "agentlibs/BackendError.h"

#include <exception>
#include <vector>

namespace orl
{

// The agent and its operation as traces name them: "Src\FcoeAgent", "FcoeAgent::EnumerateHBAs".
struct AgentOperation
{
    const wchar_t* source;
    const wchar_t* name;
};

// Writes an Error line with the exception's code and text, adds the text as a warning of the error kind where there is
// a list for it, and answers the code, which is never 0. Throws nothing.
ULONG ReportFailure(const AgentOperation& operation, const std::exception& failure,
                    std::vector<WarningMessageObj>* warnings) noexcept;

// Carries out `call()` and answers 0, or reports what it threw and answers the code. Only a FaultException passes.
template <typename Call>
ULONG CallBackend(const AgentOperation& operation, std::vector<WarningMessageObj>* warnings, Call&& call)
{
    try
    {
        call();
        return 0;
    }
    catch (const FaultException&)
    {
        throw;
    }
    catch (const std::exception& failure)
    {
        return ReportFailure(operation, failure, warnings);
    }
}

} // namespace orl
