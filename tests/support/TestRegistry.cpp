// A registry of a test's own: what both platforms share.

#include "tests/support/TestRegistry.h"

#include "winport/portable/Utf8.h"

#include <stdexcept>

namespace orl::test
{

namespace
{

void Check(LONG status, const std::wstring& key)
{
    if (status != ERROR_SUCCESS)
        throw std::runtime_error("registry key " + ToUtf8(key) + ": error " + std::to_string(status));
}

class OpenKey
{
public:
    explicit OpenKey(const std::wstring& path)
    {
        Check(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &m_key, nullptr),
              path);
    }
    ~OpenKey() { RegCloseKey(m_key); }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    HKEY Get() const { return m_key; }

private:
    HKEY m_key = nullptr;
};

} // namespace

void TestRegistry::CreateKey(const std::wstring& key)
{
    OpenKey created(key);
}

void TestRegistry::DeleteKey(const std::wstring& key)
{
    Check(RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str()), key);
}

void TestRegistry::SetText(const std::wstring& key, const std::wstring& name, const std::wstring& value)
{
    SetBytes(key, name, REG_SZ, BytesOf(value, true));
}

void TestRegistry::SetNumber(const std::wstring& key, const std::wstring& name, DWORD value)
{
    const BYTE* bytes = reinterpret_cast<const BYTE*>(&value);
    SetBytes(key, name, REG_DWORD, std::vector<BYTE>(bytes, bytes + sizeof(value)));
}

void TestRegistry::SetBytes(const std::wstring& key, const std::wstring& name, DWORD type,
                            const std::vector<BYTE>& data)
{
    const OpenKey opened(key);
    Check(RegSetValueExW(opened.Get(), name.c_str(), 0, type, data.data(), static_cast<DWORD>(data.size())), key);
}

void TestRegistry::DeleteValue(const std::wstring& key, const std::wstring& name)
{
    const OpenKey opened(key);
    Check(RegDeleteValueW(opened.Get(), name.c_str()), key);
}

std::vector<BYTE> BytesOf(const std::wstring& text, bool terminated)
{
    const BYTE* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    return std::vector<BYTE>(bytes, bytes + (text.size() + (terminated ? 1 : 0)) * sizeof(wchar_t));
}

} // namespace orl::test
