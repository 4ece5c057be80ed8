// Method calls: parameters checked on the way in, results on the way out.
#pragma once

#include "host/Request.h"

#include <string_view>

namespace orl
{

// Throws CallFailure: what ResolvePath throws; WBEM_E_INVALID_METHOD for a method that the class has not got;
// WBEM_E_METHOD_NOT_IMPLEMENTED and WBEM_E_METHOD_DISABLED by the method's qualifiers; WBEM_E_INVALID_METHOD_PARAMETERS
// for a method that is not static on the path of a class, and for a parameter that is unknown, missing or mistyped. A
// parameter that is null is missing unless it has the qualifier Optional.
Ref<Request> MakeMethodCall(RequestScope scope, std::wstring_view path, std::wstring_view method,
                            IWbemClassObject* inParameters);

} // namespace orl
