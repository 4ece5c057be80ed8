// Values on their way in and out of COM: VARIANT to CimValue and back.
//
// uint8 travels as VT_UI1, sint8 and sint16 as VT_I2, uint16, sint32 and uint32 as VT_I4, 64-bit integers as decimal
// VT_BSTR, reals as VT_R4 and VT_R8, boolean as VT_BOOL, texts as VT_BSTR, char16 as VT_I2, objects as VT_UNKNOWN,
// arrays as SAFEARRAYs of the same.
#pragma once

#include "wbem/CimValue.h"

#include <windows.h>
#include <oleauto.h>

#include <optional>
#include <string>
#include <string_view>

namespace orl
{

class Namespace;

// The value as the given type, from the form above or any that says the same: VT_I1 to VT_UI8 for integers (VT_I4 of
// either sign for uint32), integral VT_R8, decimal text, VARIANTs by reference, arrays of VARIANTs, VT_EMPTY and
// VT_NULL for null. Otherwise nothing and why.
std::optional<wbem::CimValue> FromVariant(const VARIANT& variant, wbem::CimType type, bool isArray,
                                          std::wstring& reason);

// `variant` need not be initialised and is the caller's to clear. Embedded objects are instances of classes of the
// namespace. Throws std::bad_alloc.
void ToVariant(const wbem::CimValue& value, const Namespace& nameSpace, VARIANT& variant);

// A new BSTR of the text. Throws std::bad_alloc.
BSTR MakeBstr(std::wstring_view text);
// A SAFEARRAY of VT_BSTR. Throws std::bad_alloc.
SAFEARRAY* MakeBstrArray(const std::vector<std::wstring>& texts);
// The characters of a BSTR; empty for null.
std::wstring_view ViewOf(BSTR text) noexcept;

} // namespace orl
