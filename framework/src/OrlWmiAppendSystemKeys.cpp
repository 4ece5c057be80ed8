// OrlWmiAppendSystemKeys: the system keys of a path.

#include "framework/include/OrlWmiAppendSystemKeys.h"

#include <windows.h>

#include <string>

namespace
{

std::wstring HostName()
{
    DWORD size = 0;
    // The first call only tells how long the name is.
    GetComputerNameExW(ComputerNameDnsHostname, nullptr, &size);
    std::wstring name(size, L'\0');
    if (size == 0 || !GetComputerNameExW(ComputerNameDnsHostname, name.data(), &size))
        return L"localhost";
    name.resize(size);
    return name;
}

} // namespace

void OrlWmiAppendSystemKeys(COrlString& path, const wchar_t* className)
{
    static const std::wstring systemKeys =
        L"\",SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"" + HostName() + L"\"";
    constexpr wchar_t classKey[] = L",CreationClassName=\"";
    const std::wstring name = className != nullptr ? className : L"";
    path.reserve(path.size() + std::size(classKey) + name.size() + systemKeys.size());
    path.append(classKey).append(name).append(systemKeys);
}
