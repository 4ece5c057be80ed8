// Writing an instance through its provider.
#pragma once

#include "host/Request.h"

namespace orl
{

// Throws CallFailure: WBEM_E_INVALID_PARAMETER without an instance of this service, WBEM_E_INVALID_CLASS for a class of
// another connection's schema.
Ref<Request> MakePut(RequestScope scope, IWbemClassObject* instance);

} // namespace orl
