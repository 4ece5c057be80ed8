// Queries: what they name, checked against the schema, and their answers.
#pragma once

#include "host/Request.h"

#include <string_view>

namespace orl
{

// A WQL query as a request. Throws CallFailure: WBEM_E_INVALID_QUERY_TYPE for another language, WBEM_E_INVALID_QUERY
// for a query that does not parse or names a property that the class has not got, WBEM_E_INVALID_CLASS for an unknown
// class, and what MakeAssociationQuery throws.
Ref<Request> MakeQuery(RequestScope scope, std::wstring_view language, std::wstring_view text);

} // namespace orl
