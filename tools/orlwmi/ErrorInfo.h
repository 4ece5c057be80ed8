// What a failed call leaves behind beside its status code.
#pragma once

#include "tools/orlwmi/Failure.h"

#include <windows.h>

namespace orl::client
{

// Forgets what an earlier call on this thread left. Called before a request, so that its failure is not explained by
// another one's.
void ClearErrorInfo();

// Takes what the call that has just failed on this thread left. Empty when it left nothing.
[[nodiscard]] ExtendedStatus TakeErrorInfo();

// Throws Failure for a failed status, explained by TakeErrorInfo. `what` says what was attempted: "cannot get X".
void Check(HRESULT status, const std::string& what);

} // namespace orl::client
