// Waiting for one call that was made to return at once.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/Wmi.h"

#include <functional>
#include <string>

namespace orl::client
{

// Asks the call again and again until it has an answer; `ask` gets the milliseconds that it may take and answers
// WBEM_S_TIMEDOUT while there is none. A failed status is a Failure that begins with `what`. A call that is given up,
// because the time is over or the user wants it so, is left behind.
void AwaitCall(CComPtr<IWbemCallResult>& call, const Deadline& deadline, const std::string& what,
               const std::function<HRESULT(LONG)>& ask);

} // namespace orl::client
