// Names of CIM types, as MOF writes them.
#pragma once

#include <windows.h>

#include <string>

namespace orl::client
{

// "uint32", "string[]", "ref". A number that is no type is shown as such.
[[nodiscard]] std::string TypeName(LONG cimType);

} // namespace orl::client
