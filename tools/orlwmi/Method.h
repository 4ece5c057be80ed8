// The method of a class that a command line means, and its in-parameters.
#pragma once

#include "tools/orlwmi/Wmi.h"

#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

struct Method
{
    std::string name;             // as the class declares it
    CComPtr<IWbemClassObject> in; // the declaration of the in-parameters; null when there are none
};

// Names compare without case. A name that the class lacks is a Failure with ExitCode::NotFound that tells the nearest
// one.
[[nodiscard]] Method FindMethod(IWbemClassObject* definition, const std::string& name);

// The in-parameters of a call, of the types that the method declares; null when the method takes none. One name may
// stand several times, for an array. Throws Failure for a parameter that the method lacks (ExitCode::NotFound) and for
// a value of another type (ExitCode::Usage).
[[nodiscard]] CComPtr<IWbemClassObject>
MakeInParameters(const Method& method, const std::vector<std::pair<std::string, std::string>>& parameters);

} // namespace orl::client
