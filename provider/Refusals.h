// The refusals that managers share. Tools know them by code, text, source and line, so each manager says its own.
#pragma once

#include "agent/CResult.h"
#include "framework/include/COrlWmiAutoParsedObjectPath.h"
#include "framework/include/CWomContext.h"

namespace orl
{

// Where a refusal is reported from.
struct SourceLine
{
    const wchar_t* name;
    int line;
};

// All of them throw CWomProviderException.

// The key that the path must have. A path without it is refused with its own text and WBEM_E_NOT_FOUND. `unnamedToo` as
// for GetKeyRef.
const COrlWmiNamedValue& RequireKey(const COrlWmiAutoParsedObjectPath& path, const wchar_t* key,
                                    const CWomContext& context, const SourceLine& source, bool unnamedToo = false);

// What the path names exists, but is none of the manager's.
[[noreturn]] void RefuseKind(const CWomContext& context, const SourceLine& source);

// The FCoE agent could not list its records.
[[noreturn]] void RefuseEnumeration(const CWomContext& context, const wchar_t* text, const SourceLine& source);

// The adapter agent answered a failure, or a success without what it was asked for.
[[noreturn]] void RefuseForAgent(const CWomContext& context, const CResult& answer, const wchar_t* text,
                                 const SourceLine& source);

} // namespace orl
