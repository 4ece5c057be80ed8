// Requests that begin with an object path: get and delete.
#pragma once

#include "host/Request.h"
#include "wbem/ObjectPath.h"

#include <string_view>

namespace orl
{

// An object path with what it names in the schema. The class and the keys are spelled as the schema does.
struct ResolvedPath
{
    wbem::ObjectPath path;
    const ClassDef* ofClass = nullptr;

    // For providers: Class.Key="value" without server and namespace.
    std::wstring Text() const { return path.RelativeText(); }
};

// Throws CallFailure: WBEM_E_INVALID_OBJECT_PATH for a text that is no path of a class or instance, or has an unnamed
// key where the class has not just one; WBEM_E_INVALID_NAMESPACE for another namespace that does not exist; and
// `missingClass` when the class does not.
ResolvedPath ResolvePath(const RequestScope& scope, std::wstring_view text, HRESULT missingClass);

// As above with the code that fits a get: WBEM_E_NOT_FOUND for a class that is itself asked for, else
// WBEM_E_INVALID_CLASS.
Ref<Request> MakeGet(RequestScope scope, std::wstring_view path);
Ref<Request> MakeDelete(RequestScope scope, std::wstring_view path);

} // namespace orl
