// A registry of a test's own.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace orl::test
{

// While an instance lives, HKEY_LOCAL_MACHINE of this process is an empty registry that nobody else sees, so tests run
// beside each other and leave nothing behind. On Linux the programs that the test starts see it too; on Windows they
// see the real one, and so does COM when it looks for a class. At most one instance lives at a time.
//
// Key paths are below HKEY_LOCAL_MACHINE; a key is created with all keys above it. A call that fails throws
// std::runtime_error with the key and the system's error number.
class TestRegistry
{
public:
    TestRegistry();
    ~TestRegistry();
    TestRegistry(const TestRegistry&) = delete;
    TestRegistry& operator=(const TestRegistry&) = delete;

    void CreateKey(const std::wstring& key);
    void DeleteKey(const std::wstring& key);
    void SetText(const std::wstring& key, const std::wstring& name, const std::wstring& value);
    void SetNumber(const std::wstring& key, const std::wstring& name, DWORD value);
    // Any type, the bytes as they stand.
    void SetBytes(const std::wstring& key, const std::wstring& name, DWORD type, const std::vector<BYTE>& data);
    void DeleteValue(const std::wstring& key, const std::wstring& name);

private:
    std::wstring m_place;
    std::wstring m_before;
};

// The bytes that a text value is stored as, with or without its terminator.
std::vector<BYTE> BytesOf(const std::wstring& text, bool terminated);

// The product's own keys.
inline constexpr wchar_t ProductKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2";
inline constexpr wchar_t AgentsKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Agents";
inline constexpr wchar_t PackageKey[] = L"SOFTWARE\\KESTA\\Network_Services\\QUIL";

} // namespace orl::test
