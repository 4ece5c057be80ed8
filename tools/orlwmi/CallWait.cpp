// Waiting in slices.
#include "tools/orlwmi/CallWait.h"

#include "tools/orlwmi/ErrorInfo.h"

namespace orl::client
{

void AwaitCall(CComPtr<IWbemCallResult>& call, const Deadline& deadline, const std::string& what,
               const std::function<HRESULT(LONG)>& ask)
{
    try
    {
        HRESULT status = WBEM_S_TIMEDOUT;
        while (status == WBEM_S_TIMEDOUT)
        {
            status = ask(deadline.Slice());
        }
        Check(status, what);
    }
    catch (const Failure& failure)
    {
        if (SUCCEEDED(failure.Status()))
        {
            Abandon(call.Detach());
        }
        throw;
    }
}

} // namespace orl::client
