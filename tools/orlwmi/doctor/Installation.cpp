// Finding the parts of an installation.
#include "tools/orlwmi/doctor/Installation.h"

#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/doctor/RegistryView.h"
#include "winport/portable/Utf8.h"

#include <filesystem>
#include <system_error>

namespace orl::client
{
namespace
{

constexpr const wchar_t* Separators = L"\\/";

} // namespace

std::wstring AgentKey(const std::wstring& agent)
{
    return std::wstring(ProductKey) + L"\\Agents\\" + agent;
}

std::wstring LibraryIn(const std::wstring& folder, const std::wstring& name)
{
    const bool ends = !folder.empty() && std::wstring(Separators).find(folder.back()) != std::wstring::npos;
    // Either separator would do; the folder's own reads best.
    const bool slashes = folder.find(L'/') != std::wstring::npos && folder.find(L'\\') == std::wstring::npos;
    return folder + (ends ? L"" : slashes ? L"/" : L"\\") + name;
}

std::wstring FolderOf(const std::wstring& path)
{
    const auto end = path.find_last_of(Separators);
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

bool HasOwnHost()
{
    const auto library = ReadServerLibrary(LocatorClsid);
    if (!library)
    {
        return false;
    }
    const auto begin = library->find_last_of(Separators);
    const std::string name = ToUtf8(begin == std::wstring::npos ? *library : library->substr(begin + 1));
    return SameName(name.substr(0, name.rfind('.')), "orlwmihost") || SameName(name, "liborlwmihost.so");
}

bool FolderExists(const std::wstring& path)
{
    std::error_code error;
    return !path.empty() && std::filesystem::is_directory(NativePath(path), error);
}

bool FileExists(const std::wstring& path)
{
    std::error_code error;
    return !path.empty() && std::filesystem::is_regular_file(NativePath(path), error);
}

} // namespace orl::client
