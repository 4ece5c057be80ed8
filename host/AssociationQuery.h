// ASSOCIATORS OF and REFERENCES OF.
#pragma once

#include "host/Request.h"
#include "wbem/Wql.h"

#include <string_view>

namespace orl
{

// An association query as a request; `text` is the client's. Throws CallFailure: WBEM_E_INVALID_OBJECT_PATH for a path
// that names nothing in the schema, WBEM_E_INVALID_CLASS for a class that is not there, WBEM_E_INVALID_QUERY when a
// class is asked about without SchemaOnly or an instance with it.
//
// An object that nothing is found about is looked up: WBEM_E_NOT_FOUND when its provider does not know it.
Ref<Request> MakeAssociationQuery(RequestScope scope, std::wstring_view text, wbem::WqlQuery query);

} // namespace orl
