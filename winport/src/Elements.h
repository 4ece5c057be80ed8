// Owned values in memory: the elements of arrays and the contents of VARIANTs.
#pragma once

#include <oleauto.h>

namespace winport
{

// The size of a value of the type; 0 for a type that arrays cannot hold.
ULONG ElementSize(VARTYPE type);

// Lets go of what the value owns and sets it to zero.
void ClearElement(VARTYPE type, void* element);

// Copies a value with what it owns into a place that holds nothing (zeros).
HRESULT CopyElement(VARTYPE type, void* destination, const void* source);

} // namespace winport
