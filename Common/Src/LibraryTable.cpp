// Which of the product's libraries lies where.

#include "Common/Src/LibraryTable.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>

namespace orl
{

const std::array<LibraryRow, 31> LibraryTable = {{
    {L"Corelink", LibraryGroup::AgentLibraries},
    {L"Fcoelink", LibraryGroup::AgentLibraries},
    {L"Dcblink", LibraryGroup::AgentLibraries},
    {L"Iscsilink", LibraryGroup::AgentLibraries},
    {L"Teamlink", LibraryGroup::AgentLibraries},
    {L"Vlanlink", LibraryGroup::AgentLibraries},
    {L"Diaglink", LibraryGroup::AgentLibraries},

    {L"OrlAgent", LibraryGroup::AgentNames},
    {L"OrlCoreAgent", LibraryGroup::AgentNames},
    {L"OrlFcoeAgent", LibraryGroup::AgentNames},
    {L"OrlDcbAgent", LibraryGroup::AgentNames},
    // Installed as an agent library of its own nowadays; the group above wins.
    {L"Diaglink", LibraryGroup::AgentNames},

    {L"QuilService", LibraryGroup::Services},
    {L"QuilDcb", LibraryGroup::Services},
    {L"QuilFcoe", LibraryGroup::Services},
    {L"QuilIscsi", LibraryGroup::Services},

    {L"CommonRes", LibraryGroup::ResourceLibraries},
    {L"CoreRes", LibraryGroup::ResourceLibraries},
    {L"FcoeRes", LibraryGroup::ResourceLibraries},
    {L"DcbRes", LibraryGroup::ResourceLibraries},
    {L"IscsiRes", LibraryGroup::ResourceLibraries},
    {L"TeamRes", LibraryGroup::ResourceLibraries},
    {L"DiagRes", LibraryGroup::ResourceLibraries},

    {L"Kernel32", LibraryGroup::OtherLibraries},
    {L"Advapi32", LibraryGroup::OtherLibraries},
    {L"Iphlpapi", LibraryGroup::OtherLibraries},
    {L"Setupapi", LibraryGroup::OtherLibraries},
    {L"Version", LibraryGroup::OtherLibraries},
    {L"OrlSysInfo", LibraryGroup::OtherLibraries},

    // They lie beside the module that asks for them.
    {L"Orl2InstUtility", LibraryGroup::NoDirectory},
    {L"ORL2FCOE", LibraryGroup::NoDirectory},
}};

LibraryGroup FindLibraryGroup(const wchar_t* baseName, const wchar_t* subName)
{
    const auto matches = [=](const LibraryRow& row)
    { return _wcsicmp(row.name, row.group == LibraryGroup::ResourceLibraries ? subName : baseName) == 0; };
    const auto found = std::find_if(LibraryTable.begin(), LibraryTable.end(), matches);
    return found == LibraryTable.end() ? LibraryGroup::NoDirectory : found->group;
}

} // namespace orl
