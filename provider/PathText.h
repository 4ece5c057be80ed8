// Writing object paths: bounded text, then a BSTR in the caller's hands.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"

namespace orl
{

// What one path may hold, its end included; the rest of a longer one is cut.
constexpr std::size_t PathCapacity = 5000;

COrlString FormatPath(const wchar_t* format, ...);

// Puts a new BSTR in place of the one that `path` holds, which is freed. Throws CAtlException with E_OUTOFMEMORY and
// leaves `path` alone when there is no memory.
void StorePath(BSTR& path, const COrlString& text);
// The same of FormatPath's answer.
void StoreFormattedPath(BSTR& path, const wchar_t* format, ...);

} // namespace orl
