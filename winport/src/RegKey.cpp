// Keys by path.
#include "winport/src/RegFile.h"

namespace winport
{

namespace
{

// Takes the first name off a path.
std::wstring_view TakeName(std::wstring_view& path)
{
    const size_t end = path.find(L'\\');
    const std::wstring_view name = path.substr(0, end);
    path = end == std::wstring_view::npos ? std::wstring_view() : path.substr(end + 1);
    return name;
}

} // namespace

const RegKey* RegKey::Find(std::wstring_view path) const
{
    const RegKey* key = this;
    while (key && !path.empty())
    {
        const auto child = key->keys.find(TakeName(path));
        key = child == key->keys.end() ? nullptr : &child->second;
    }
    return key;
}

RegKey* RegKey::Find(std::wstring_view path)
{
    return const_cast<RegKey*>(static_cast<const RegKey*>(this)->Find(path));
}

RegKey& RegKey::Make(std::wstring_view path)
{
    RegKey* key = this;
    while (!path.empty())
    {
        const std::wstring_view childName = TakeName(path);
        auto child = key->keys.find(childName);
        if (child == key->keys.end())
        {
            child = key->keys.emplace(childName, RegKey()).first;
            child->second.name = childName;
        }
        key = &child->second;
    }
    return *key;
}

bool RegKey::Remove(std::wstring_view path)
{
    const size_t last = path.rfind(L'\\');
    const bool isDirect = last == std::wstring_view::npos;
    RegKey* parent = isDirect ? this : Find(path.substr(0, last));
    const auto child = parent ? parent->keys.find(isDirect ? path : path.substr(last + 1)) : keys.end();
    if (!parent || child == parent->keys.end())
        return false;
    parent->keys.erase(child);
    return true;
}

} // namespace winport
