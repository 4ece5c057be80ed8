// One service: its schema, its providers and its threads.
#include "host/Host.h"

#include "com/OrlCom.h"

#include <cwchar>
#include <filesystem>
#include <new>
#include <string>

namespace orl
{
namespace
{

constexpr wchar_t kHostKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Host";

// The value's text; empty when there is none.
std::wstring ReadRegistryText(const wchar_t* path, const wchar_t* name)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return {};
    std::wstring text;
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExW(key, name, nullptr, &type, nullptr, &size) == ERROR_SUCCESS && type == REG_SZ)
    {
        text.resize(size / sizeof(wchar_t) + 1);
        size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS)
            size = 0;
        text.resize(size / sizeof(wchar_t));
        text.resize(std::wcslen(text.c_str())); // with or without the terminator that the writer gave it
    }
    RegCloseKey(key);
    return text;
}

std::unique_ptr<const Repository> SchemaOfRegistry()
{
    const std::wstring folder = ReadRegistryText(kHostKey, L"Schema");
    if (folder.empty())
        throw RepositoryError(L"the registry does not name the folder of the schema: HKEY_LOCAL_MACHINE\\" +
                              std::wstring(kHostKey) + L", value Schema");
    return Repository::FromFolder(folder);
}

HRESULT LoadByClsid(const std::wstring& clsid, IUnknown** provider)
{
    CLSID parsed;
    const HRESULT form = CLSIDFromString(clsid.c_str(), &parsed);
    if (FAILED(form))
        return form;
    return CoCreateInstance(parsed, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, reinterpret_cast<void**>(provider));
}

} // namespace

Host::Host(SchemaSource schema, ProviderLoader loader)
    : m_schemaSource(std::move(schema)), m_providers(*this, std::move(loader))
{
}

Host::~Host()
{
    m_workers.Stop();
    m_providers.ReleaseAll();
}

Host& Host::OfProcess()
{
    // In the library's own memory, which goes with it when a process unloads it.
    alignas(Host) static unsigned char place[sizeof(Host)];
    static Host& process = *new (place) Host(SchemaOfRegistry, LoadByClsid);
    return process;
}

const Repository& Host::Schema()
{
    const std::lock_guard lock(m_mutex);
    if (!m_schema)
        m_schema = m_schemaSource();
    return *m_schema;
}

void Host::ReleaseUnused()
{
    if (m_clients == 0 && m_workers.StopIfIdle())
        m_providers.ReleaseAll();
}

} // namespace orl
