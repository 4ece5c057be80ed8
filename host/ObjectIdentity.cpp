// Which object a path stands for.
#include "host/ObjectIdentity.h"

#include "host/Repository.h"
#include "wbem/Text.h"

#include <algorithm>
#include <array>

namespace orl
{

bool IsSystemKey(std::wstring_view name)
{
    static constexpr std::array<std::wstring_view, 3> names = {L"CreationClassName", L"SystemCreationClassName",
                                                               L"SystemName"};
    return std::any_of(names.begin(), names.end(),
                       [&](std::wstring_view each) { return wbem::EqualNoCase(each, name); });
}

std::wstring IdentityOf(const wbem::ObjectPath& path)
{
    wbem::PathComparison how;
    how.quotedNumbers = true;
    how.nestedPaths = true;
    const auto isSystemKey = [](const wbem::PathKey& key) { return IsSystemKey(key.name); };
    if (std::none_of(path.keys.begin(), path.keys.end(), isSystemKey))
        return wbem::IdentityText(path, how);
    wbem::ObjectPath own = path;
    std::erase_if(own.keys, isSystemKey);
    return wbem::IdentityText(own, how);
}

void NameTheKey(wbem::ObjectPath& path, const Namespace& nameSpace)
{
    if (path.keys.size() != 1 || !path.keys.front().name.empty())
        return;
    const ClassDef* ofClass = nameSpace.FindClass(path.className);
    if (ofClass && ofClass->Keys().size() == 1)
        path.keys.front().name = ofClass->Properties()[ofClass->Keys().front()].Name();
}

} // namespace orl
