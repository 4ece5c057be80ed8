// The registry, as far as the doctor reads it: values below HKEY_LOCAL_MACHINE.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace orl::client
{

// The keys of an installation, without the root.
inline constexpr const wchar_t* ProductKey = L"SOFTWARE\\KESTA\\Network_Services\\ORL2";
inline constexpr const wchar_t* PackageKey = L"SOFTWARE\\KESTA\\Network_Services\\QUIL";

[[nodiscard]] bool KeyExists(const std::wstring& key);

// Nothing when the key or value is missing or of another type. A text ends at its terminator.
[[nodiscard]] std::optional<std::wstring> ReadRegistryText(const std::wstring& key, const std::wstring& value);
[[nodiscard]] std::optional<DWORD> ReadRegistryNumber(const std::wstring& key, const std::wstring& value);

// The library that serves a COM class in this process, as it is registered.
[[nodiscard]] std::optional<std::wstring> ReadServerLibrary(const std::wstring& clsid);

} // namespace orl::client
