// Qualifiers of classes and their members.
#pragma once

#include "tools/orlwmi/Record.h"
#include "tools/orlwmi/Wmi.h"

#include <string>

namespace orl::client
{

// The value of a qualifier, or null when the class, property or method does not have it.
[[nodiscard]] Value ClassQualifier(IWbemClassObject* definition, const std::string& name);
[[nodiscard]] Value PropertyQualifier(IWbemClassObject* definition, const std::string& property,
                                      const std::string& name);
[[nodiscard]] Value MethodQualifier(IWbemClassObject* definition, const std::string& method, const std::string& name);

} // namespace orl::client
