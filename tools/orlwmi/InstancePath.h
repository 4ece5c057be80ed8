// Paths of instances, made from a class and its keys.
#pragma once

#include "tools/orlwmi/Wmi.h"

#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

// "Zarn_FCoeLUN.DeviceID="eth0.1002",ID=5": each value is written as the class declares the key, numbers and booleans
// bare, everything else quoted. Throws Failure for a key that the class lacks and for a value of the wrong type.
[[nodiscard]] std::string MakeInstancePath(const std::string& className,
                                           const std::vector<std::pair<std::string, std::string>>& keys,
                                           IWbemClassObject* definition);

// The path of the class that an object path names, with its server and namespace when it names those:
// "\\HOST\root\KESTA:Zarn_FCOEHBA" of "\\HOST\root\KESTA:Zarn_FCOEHBA.DeviceID="eth0"".
[[nodiscard]] std::string ClassPathOf(const std::string& path);

} // namespace orl::client
