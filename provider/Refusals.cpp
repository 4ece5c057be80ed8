// The refusals that managers share.

#include "provider/Refusals.h"

#include "framework/include/CWomProviderException.h"

namespace orl
{

namespace
{

// The framework knows every object that a path does not name, for want of a key or of a match, by this code.
constexpr ULONG NotNamedCode = 0x8004090F;
constexpr ULONG EnumerationCode = 0x8004091A;

} // namespace

const COrlWmiNamedValue& RequireKey(const COrlWmiAutoParsedObjectPath& path, const wchar_t* key,
                                    const CWomContext& context, const SourceLine& source, bool unnamedToo)
{
    const COrlWmiNamedValue* found = path.GetKeyRef(key, unnamedToo);
    if (found == nullptr)
    {
        throw CWomProviderException(context, NotNamedCode, path.PathText(), WBEM_E_NOT_FOUND, source.name, source.line);
    }
    return *found;
}

void RefuseKind(const CWomContext& context, const SourceLine& source)
{
    throw CWomProviderException(context, NotNamedCode, CComBSTR(), WBEM_E_NOT_FOUND, source.name, source.line);
}

void RefuseEnumeration(const CWomContext& context, const wchar_t* text, const SourceLine& source)
{
    throw CWomProviderException(context, EnumerationCode, CComBSTR(text), WBEM_E_NOT_FOUND, source.name, source.line);
}

void RefuseForAgent(const CWomContext& context, const CResult& answer, const wchar_t* text, const SourceLine& source)
{
    throw CWomProviderException(context, answer, CComBSTR(text), source.name, source.line);
}

} // namespace orl
