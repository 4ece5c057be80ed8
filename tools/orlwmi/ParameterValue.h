// Values of the command line, as a CIM type wants them.
#pragma once

#include "tools/orlwmi/Wmi.h"

#include <string>
#include <vector>

namespace orl::client
{

// The VARIANT in which a value of the type travels. Throws Failure with ExitCode::Usage for a text that is no such
// value; its message begins with the name: "the parameter Depth".
//
//   numbers   decimal, or hexadecimal behind 0x
//   booleans  TRUE or FALSE in any case
//   texts     as they are; between double quotes with \" and \\ where that is needed, as for the text NULL
//   arrays    [a,b], or each element as a text of its own
//   NULL      no value, for every type
[[nodiscard]] CComVariant MakeParameterValue(const std::string& name, LONG cimType,
                                             const std::vector<std::string>& texts);

} // namespace orl::client
