// MOF: finding things in what was declared.
#include "wbem/Mof.h"

namespace wbem
{

const MofDeclaration* MofDocument::FindAlias(std::wstring_view alias, const MofPosition& usedAt) const noexcept
{
    if (usedAt.file >= files.size() || files[usedAt.file].root >= aliases.size())
        return nullptr;
    const auto& known = aliases[files[usedAt.file].root];
    const auto entry = known.find(alias);
    return entry == known.end() || entry->second >= declarations.size() ? nullptr : &declarations[entry->second];
}

const MofQualifier* FindQualifier(const std::vector<MofQualifier>& qualifiers, std::wstring_view name) noexcept
{
    for (const MofQualifier& qualifier : qualifiers)
    {
        if (EqualNoCase(qualifier.name, name))
            return &qualifier;
    }
    return nullptr;
}

} // namespace wbem
