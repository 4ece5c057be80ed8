// Requests that change something.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/Wmi.h"

#include <string>

namespace orl::client
{

// Runs a method of the object at a path, or of a class for a static method. `in` is null when there are no
// in-parameters. The out-parameters, or null when the method has none. Throws Failure.
[[nodiscard]] CComPtr<IWbemClassObject> CallMethod(IWbemServices* services, const std::string& path,
                                                   const std::string& method, IWbemClassObject* in,
                                                   const Deadline& deadline);

// Writes back an instance that was read from the path and changed since. Throws Failure.
void PutInstance(IWbemServices* services, IWbemClassObject* instance, const std::string& path,
                 const Deadline& deadline);

// Deletes the instance at a path. Throws Failure.
void DeleteInstance(IWbemServices* services, const std::string& path, const Deadline& deadline);

} // namespace orl::client
