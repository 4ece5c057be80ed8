// Reading registry values.
#include "tools/orlwmi/doctor/RegistryView.h"

#include <algorithm>
#include <vector>

namespace orl::client
{
namespace
{

class OpenKey
{
public:
    explicit OpenKey(const std::wstring& path)
    {
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &m_key) != ERROR_SUCCESS)
        {
            m_key = nullptr;
        }
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey()
    {
        if (m_key != nullptr)
        {
            RegCloseKey(m_key);
        }
    }

    [[nodiscard]] bool IsOpen() const { return m_key != nullptr; }

    [[nodiscard]] bool Read(const std::wstring& value, DWORD& type, std::vector<BYTE>& data) const
    {
        DWORD size = 0;
        if (!IsOpen() || RegQueryValueExW(m_key, value.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        {
            return false;
        }
        data.resize(size);
        return RegQueryValueExW(m_key, value.c_str(), nullptr, &type, data.data(), &size) == ERROR_SUCCESS &&
               size <= data.size();
    }

private:
    HKEY m_key = nullptr;
};

} // namespace

bool KeyExists(const std::wstring& key)
{
    return OpenKey(key).IsOpen();
}

std::optional<std::wstring> ReadRegistryText(const std::wstring& key, const std::wstring& value)
{
    DWORD type = 0;
    std::vector<BYTE> data;
    if (!OpenKey(key).Read(value, type, data) || (type != REG_SZ && type != REG_EXPAND_SZ))
    {
        return std::nullopt;
    }
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    std::copy_n(data.begin(), text.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(text.data()));
    return text.substr(0, text.find(L'\0'));
}

std::optional<DWORD> ReadRegistryNumber(const std::wstring& key, const std::wstring& value)
{
    DWORD type = 0;
    std::vector<BYTE> data;
    if (!OpenKey(key).Read(value, type, data) || type != REG_DWORD || data.size() != sizeof(DWORD))
    {
        return std::nullopt;
    }
    DWORD number = 0;
    std::copy_n(data.begin(), sizeof number, reinterpret_cast<BYTE*>(&number));
    return number;
}

std::optional<std::wstring> ReadServerLibrary(const std::wstring& clsid)
{
    return ReadRegistryText(L"SOFTWARE\\Classes\\CLSID\\" + clsid + L"\\InprocServer32", L"");
}

} // namespace orl::client
