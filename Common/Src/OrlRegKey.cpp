// COrlRegKey: an open registry key.

#include "Common/Src/OrlRegKey.h"

#include <cstring>
#include <map>
#include <mutex>
#include <utility>

namespace
{

// How many holders a handle has beyond the first: a copied key copies its handle, and it may be closed only once.
class FurtherHolders
{
public:
    void Add(HKEY key)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_counts[key];
    }

    // False when the one that lets go was the only holder.
    bool Remove(HKEY key)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_counts.find(key);
        if (found == m_counts.end())
            return false;
        if (--found->second == 0)
            m_counts.erase(found);
        return true;
    }

private:
    std::mutex m_mutex;
    std::map<HKEY, unsigned> m_counts;
};

FurtherHolders& Holders()
{
    static FurtherHolders holders;
    return holders;
}

struct RegistryValue
{
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

LONG ReadValue(HKEY key, const wchar_t* name, RegistryValue& value)
{
    DWORD size = 0;
    LONG status = RegQueryValueExW(key, name, nullptr, &value.type, nullptr, &size);
    // The value may grow between the two reads.
    while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA)
    {
        value.data.resize(size);
        status = RegQueryValueExW(key, name, nullptr, &value.type, value.data.data(), &size);
        if (status == ERROR_SUCCESS)
        {
            value.data.resize(size);
            return ERROR_SUCCESS;
        }
    }
    return status;
}

// Up to the terminator, if it was stored.
std::wstring TextOf(const std::vector<BYTE>& data)
{
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    if (!text.empty())
        std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
    return text.c_str();
}

} // namespace

COrlRegKey::COrlRegKey() = default;

COrlRegKey::COrlRegKey(HKEY key) : m_key(key), m_owned(true) {}

COrlRegKey::COrlRegKey(const COrlRegKey& other)
{
    *this = other;
}

COrlRegKey& COrlRegKey::operator=(const COrlRegKey& other)
{
    if (this == &other)
        return *this;
    if (other.m_owned && other.m_key != nullptr)
        Holders().Add(other.m_key);
    Close();
    m_key = other.m_key;
    m_owned = other.m_owned;
    m_access = other.m_access;
    m_status = other.m_status;
    m_path = other.m_path;
    return *this;
}

COrlRegKey& COrlRegKey::operator=(HKEY key)
{
    if (key != m_key)
        Close();
    m_key = key;
    m_owned = true;
    return *this;
}

COrlRegKey::~COrlRegKey()
{
    Close();
}

bool COrlRegKey::Open(HKEY root, const COrlString& path, REGSAM option)
{
    HKEY opened = nullptr;
    const LONG status = RegOpenKeyExW(root, path.c_str(), 0, option, &opened);
    Close();
    if (status == ERROR_SUCCESS)
    {
        m_key = opened;
        m_owned = true;
        m_access = option;
        m_path = path;
    }
    return Settle(status);
}

bool COrlRegKey::GetValue(const COrlString& name, COrlString& value)
{
    RegistryValue read;
    LONG status = ReadValue(m_key, name.c_str(), read);
    if (status == ERROR_SUCCESS && read.type != REG_SZ && read.type != REG_EXPAND_SZ)
        status = ERROR_INVALID_DATA;
    if (status == ERROR_SUCCESS)
        value = TextOf(read.data);
    return Settle(status);
}

bool COrlRegKey::GetValue(const COrlString& name, DWORD& value)
{
    RegistryValue read;
    LONG status = ReadValue(m_key, name.c_str(), read);
    if (status == ERROR_SUCCESS && (read.type != REG_DWORD || read.data.size() != sizeof(DWORD)))
        status = ERROR_INVALID_DATA;
    if (status == ERROR_SUCCESS)
        std::memcpy(&value, read.data.data(), sizeof(DWORD));
    return Settle(status);
}

void COrlRegKey::Close()
{
    if (m_owned && m_key != nullptr && !Holders().Remove(m_key))
        RegCloseKey(m_key);
    m_key = nullptr;
    m_owned = false;
    m_path.clear();
}

bool COrlRegKey::Settle(LONG status)
{
    m_status = static_cast<ULONG>(status);
    return status == ERROR_SUCCESS;
}
