// The values of paths and queries as VARIANTs.
#pragma once

#include "framework/include/COrlWmiNamedValue.h"
#include "wbem/CimValue.h"

#include <string>
#include <vector>

namespace orl
{

// Text is VT_BSTR, sint32 VT_I4, a longer integer a decimal VT_BSTR, a boolean VT_BOOL, a real VT_R8, null VT_NULL.
// Throws CAtlException when there is no memory.
CComVariant CimVariant(const wbem::CimValue& value);

// Names compare without case; null when there is none of that name.
const COrlWmiNamedValue* FindNamedValue(const std::vector<COrlWmiNamedValue>& values, const wchar_t* name);

} // namespace orl
