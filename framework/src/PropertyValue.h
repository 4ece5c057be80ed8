// Property values: how numbers, texts and lists stand in the VARIANTs of IWbemClassObject.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"

#include <vector>

namespace orl
{

bool IsOutOfMemory(HRESULT status);
// Throws CAtlException with E_OUTOFMEMORY for either of the two statuses that mean it; hands every other one on.
HRESULT ThrowIfOutOfMemory(HRESULT status);

// Throws CAtlException with E_OUTOFMEMORY. A null text of length 0 is a null BSTR.
CComBSTR MakeBstr(const wchar_t* text, size_t length);
CComBSTR MakeBstr(const std::wstring& text);

// Arrays as the property types want them; lists of texts and of objects keep their order. They throw when there is no
// memory.
CComVariant NumberArray(const std::vector<LONG>& numbers);
CComVariant TextArray(const std::vector<COrlString>& texts);
CComVariant ObjectArray(const std::vector<CComPtr<IWbemClassObject>>& objects);

// A number out of a property of any integer type; of uint32 properties, whose VARIANTs are signed, the unsigned value.
// False for anything else and for what does not fit.
bool ReadSint64(const VARIANT& value, CIMTYPE type, LONGLONG& number);
bool ReadUint32(const VARIANT& value, CIMTYPE type, ULONG& number);

} // namespace orl
