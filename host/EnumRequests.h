// Requests for many objects: the instances of a class, the classes of a namespace.
#pragma once

#include "host/ProviderCall.h"
#include "host/Request.h"

#include <memory>
#include <string_view>

namespace orl
{

// The class, or WBEM_E_INVALID_CLASS thrown as CallFailure.
const ClassDef& NeedClass(const Namespace& nameSpace, std::wstring_view name);

// Whether an instance that the provider of `asked` sent belongs to the answer: it is of that class, or of a class below
// it that no provider serves of its own while subclasses are wanted. A provider may answer for one association with
// instances of another one: they say what they link.
bool BelongsTo(const ObjectBody& body, const ClassDef& asked, bool withSubclasses);

// Instances of a class, and of all classes below it unless the flags say WBEM_FLAG_SHALLOW.
Ref<Request> MakeInstanceEnum(RequestScope scope, std::wstring_view className);

// The classes below one, or below none: all, or with WBEM_FLAG_SHALLOW the next level only.
Ref<Request> MakeClassEnum(RequestScope scope, std::wstring_view superclass);

} // namespace orl
