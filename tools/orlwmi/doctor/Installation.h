// The parts of an installation: their names, and where the registry says that they are.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace orl::client
{

inline constexpr const wchar_t* AgentNames[] = {L"Fcoelink", L"Corelink"};
inline constexpr const wchar_t* LocatorClsid = L"{4590F811-1D3A-11D0-891F-00AA004B2E24}";
inline constexpr const wchar_t* ProviderClsid = L"{8D6C0A51-3C5B-4E0F-9B1A-57C1F0A4E2D3}";

[[nodiscard]] std::wstring AgentKey(const std::wstring& agent);

// The path of a library in a folder; the file's name is the platform's business.
[[nodiscard]] std::wstring LibraryIn(const std::wstring& folder, const std::wstring& name);
[[nodiscard]] std::wstring FolderOf(const std::wstring& path);

// Whether WMI is served by this product's own host and not by the system.
[[nodiscard]] bool HasOwnHost();

[[nodiscard]] bool FolderExists(const std::wstring& path);
[[nodiscard]] bool FileExists(const std::wstring& path);

} // namespace orl::client
