// What a client asked for: its one way to run.
#include "host/Request.h"

namespace orl
{

void Request::Run(Call& call, ResultSink& results) noexcept
{
    CallStatus status;
    try
    {
        status = Answer(call, results);
    }
    catch (...)
    {
        status = StatusOfCurrentException();
    }
    try
    {
        results.Finish(Named(std::move(status)));
    }
    catch (...)
    {
        CallStatus bare;
        bare.code = WBEM_E_OUT_OF_MEMORY;
        results.Finish(std::move(bare));
    }
}

CallStatus Request::Named(CallStatus status) const
{
    if (status.operation.empty())
        status.operation = m_operation;
    if (status.parameter.empty())
        status.parameter = m_parameter;
    return status;
}

} // namespace orl
