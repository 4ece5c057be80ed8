// What was parsed, as one line that a table of tests can hold.
#pragma once

#include "wbem/CimValue.h"
#include "wbem/Mof.h"
#include "wbem/ObjectPath.h"
#include "wbem/Parsed.h"
#include "wbem/Wql.h"

#include <string>
#include <string_view>

namespace wbem
{

// The type and the value: sint32 5, string "x", uint8[] {1, 2}, NULL.
std::string Shown(const CimValue& value);

// \\server\a\b:Class with each key on " | ": \\.\root:C | Id=string "x".
std::string Shown(const ObjectPath& path);

// The error as people see it.
std::string Shown(const ParseError& error);

std::string Utf8(std::wstring_view text);

// What GoogleTest prints for a failed comparison.
void PrintTo(const CimValue& value, std::ostream* out);

} // namespace wbem
