// CHelper: what is installed, where, and how its libraries are loaded.

#include "Common/Src/Helper.h"

#include "Common/Src/LibraryTable.h"
#include "Common/Src/OrlDebug.h"
#include "Common/Src/OrlRegKey.h"

#include <cwchar>

namespace
{

constexpr wchar_t SourceName[] = L"..\\..\\Common\\Src\\Helper";
constexpr int NoPathLine = 767;

constexpr wchar_t ProductKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2";
constexpr wchar_t AgentsKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Agents\\";
constexpr wchar_t PackageKey[] = L"SOFTWARE\\KESTA\\Network_Services\\QUIL";
constexpr wchar_t StatusKey[] = L"SOFTWARE\\KESTA\\Network_Services\\QUIL\\";

constexpr wchar_t LibraryExtension[] = L".DLL";
constexpr UINT SystemDirectoryCapacity = 260;

// What differs between the components of the driver package, in the words that their logs are read by.
struct Component
{
    const wchar_t* operation;
    const wchar_t* statusValue;
    const wchar_t* noKey;
    const wchar_t* noValue;
    const wchar_t* notInstalled;
};

constexpr Component Dcb = {L"CHelper::IsDcbInstalled", L"InstalledQUIL_DCB",
                           L"IsDcbInstalled() - Unable to open the QUIL registry key - exiting",
                           L"IsDcbInstalled() - Unable to open the DCB installation status registry value - exiting",
                           L"IsDcbInstalled() - DCB was not installed - exiting"};
constexpr Component Fcoe = {L"CHelper::IsFcoeInstalled", L"InstalledQUIL_FCOE",
                            L"IsFcoeInstalled() - Unable to open the QUIL registry key - exiting",
                            L"IsFcoeInstalled() - Unable to open the Fcoe installation status registry value - exiting",
                            L"IsFcoeInstalled() - fcoe was not installed - exiting"};
// Its texts speak of FCoE; those who search logs know them so.
constexpr Component Iscsi = {
    L"CHelper::IsIscsiInstalled", L"InstalledQUIL_ISCSI",
    L"IsIscsiInstalled() - Unable to open the QUIL registry key - exiting",
    L"IsIscsiInstalled() - Unable to open the Fcoe installation status registry value - exiting",
    L"IsIscsiInstalled() - fcoe was not installed - exiting"};

bool IsInstalled(const Component& component)
{
    bool installed = false;
    COrlTraceScope scope(component.operation, &installed);
    COrlRegKey key;
    COrlString status;
    if (!key.Open(HKEY_LOCAL_MACHINE, StatusKey))
        g_OrlDebug.Print(component.noKey);
    else if (!key.GetValue(component.statusValue, status))
        g_OrlDebug.Print(component.noValue);
    else if (!(status == L"1"))
        g_OrlDebug.Print(component.notInstalled);
    else
        installed = true;
    return installed;
}

int ReadLanguage(const wchar_t* keyPath, const wchar_t* valueName, COrlString& language)
{
    COrlRegKey key;
    return key.Open(HKEY_LOCAL_MACHINE, keyPath) && key.GetValue(valueName, language) ? 0 : -1;
}

bool EndsInLibraryExtension(const COrlString& name)
{
    COrlString upper(name);
    upper.MakeUpper();
    return upper.ends_with(LibraryExtension);
}

COrlString WithBackslash(const COrlString& directory)
{
    return directory.ends_with(L'\\') ? directory : directory + L"\\";
}

// A subfolder of the directory that a registry value names; empty when it cannot be read.
COrlString FolderFromRegistry(const wchar_t* keyPath, const wchar_t* valueName, const wchar_t* folder)
{
    COrlString directory;
    if (!CHelper::GetPathFromRegistry(keyPath, valueName, directory) || directory.IsEmpty())
        return COrlString();
    return WithBackslash(directory) + folder;
}

COrlString SystemDirectory()
{
    wchar_t directory[SystemDirectoryCapacity] = {};
    const UINT length = GetSystemDirectoryW(directory, SystemDirectoryCapacity);
    return length != 0 && length < SystemDirectoryCapacity ? COrlString(directory) : COrlString();
}

// Where the library lies; empty when nobody says it.
COrlString DirectoryOf(const COrlString& baseName, const COrlString& subName)
{
    COrlString directory;
    switch (orl::FindLibraryGroup(baseName, subName))
    {
    case orl::LibraryGroup::AgentLibraries:
        CHelper::GetAgentDirectory(baseName, directory);
        break;
    case orl::LibraryGroup::AgentNames:
        directory = FolderFromRegistry(ProductKey, L"InstalledDir", L"Agent");
        break;
    case orl::LibraryGroup::Services:
        directory = FolderFromRegistry(PackageKey, L"InstallDir", L"QUIL");
        break;
    case orl::LibraryGroup::ResourceLibraries:
        CHelper::GetPathFromRegistry(ProductKey, L"ResourcePath", directory);
        break;
    case orl::LibraryGroup::OtherLibraries:
        directory = SystemDirectory();
        break;
    case orl::LibraryGroup::NoDirectory:
        break;
    }
    return directory;
}

} // namespace

bool CHelper::IsDcbInstalled()
{
    return IsInstalled(Dcb);
}

bool CHelper::IsFcoeInstalled()
{
    return IsInstalled(Fcoe);
}

bool CHelper::IsIscsiInstalled()
{
    return IsInstalled(Iscsi);
}

bool CHelper::GetPathFromRegistry(COrlString keyPath, COrlString valueName, COrlString& path)
{
    bool found = false;
    COrlTraceScope scope(L"CHelper::GetPathFromRegistry", &found);
    COrlRegKey key;
    if (!key.Open(HKEY_LOCAL_MACHINE, keyPath))
        g_OrlDebug.Print(L"GetPathFromRegistry() - Unable to open the registry key - exiting");
    else if (!key.GetValue(valueName, path))
        g_OrlDebug.Print(L"GetPathFromRegistry() - Unable to open the registry value - exiting");
    else
        found = true;
    keyPath.ClearString();
    valueName.ClearString();
    return found;
}

bool CHelper::GetAgentDirectory(const COrlString& agent, COrlString& directory)
{
    return GetPathFromRegistry(COrlString(AgentsKey) + agent, L"InstalledDir", directory);
}

int CHelper::GetInstalledLanguage(COrlString& language)
{
    return ReadLanguage(ProductKey, L"InstalledLangShortString", language);
}

int CHelper::GetLocalLanguage(COrlString& language)
{
    return ReadLanguage(PackageKey, L"LocalLanguage", language);
}

bool CHelper::StripLibraryName(const COrlString& libraryName, COrlString& baseName, COrlString& subName)
{
    bool stripped = false;
    COrlTraceScope scope(L"CHelper::StripLibraryName", &stripped);
    COrlString base(libraryName);
    if (EndsInLibraryExtension(base))
        base.resize(base.size() - std::wcslen(LibraryExtension));
    // npos + 1 is 0: without a backslash nothing goes.
    base.erase(0, base.find(L'\\') + 1);

    COrlString upper(base);
    upper.MakeUpper();
    const size_t resource = upper.find(L"RES");
    subName = resource == COrlString::npos ? base : COrlString(base.substr(0, resource + std::wcslen(L"RES")));
    baseName = std::move(base);
    stripped = !baseName.IsEmpty();
    return stripped;
}

HMODULE CHelper::QvLoadLibrary(const COrlString& library)
{
    COrlTraceScope scope(L"CHelper::QvLoadLibrary");
    COrlString baseName;
    COrlString subName;
    StripLibraryName(library, baseName, subName);

    const COrlString directory = DirectoryOf(baseName, subName);
    COrlString path;
    if (!directory.IsEmpty())
    {
        path = WithBackslash(directory) + baseName;
    }
    else
    {
        g_OrlDebug.Error(SourceName, NoPathLine, L"ERROR:  Unable to find path to library!  Defaulting to no path %s",
                         library.c_str());
        path = library;
    }
    if (!EndsInLibraryExtension(path))
        path += LibraryExtension;
    return LoadLibraryW(path.c_str());
}
