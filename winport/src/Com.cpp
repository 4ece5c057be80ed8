// Starting COM, and objects by class id.
#include <oleauto.h>

#include "winport/process/Process.h"

#include <cstdlib>
#include <cwchar>
#include <map>
#include <mutex>
#include <string>

namespace
{

// The library that serves a class, as the registry names it; empty when it names none.
std::wstring ServerOf(REFCLSID clsid)
{
    wchar_t id[39];
    StringFromGUID2(clsid, id, 39);
    const std::wstring path = std::wstring(L"CLSID\\") + id + L"\\InprocServer32";
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return {};
    std::wstring server;
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (RegQueryValueExW(key, nullptr, nullptr, &type, nullptr, &size) == ERROR_SUCCESS && type == REG_SZ)
    {
        server.resize(size / sizeof(wchar_t) + 1);
        size = static_cast<DWORD>(server.size() * sizeof(wchar_t));
        const LSTATUS status =
            RegQueryValueExW(key, nullptr, nullptr, &type, reinterpret_cast<BYTE*>(server.data()), &size);
        server.resize(status == ERROR_SUCCESS ? std::wcslen(server.c_str()) : 0);
    }
    RegCloseKey(key);
    return server;
}

// Servers stay loaded, as objects of theirs may live anywhere: one handle each.
HMODULE LoadServer(const std::wstring& path)
{
    static std::mutex lock;
    static std::map<std::wstring, HMODULE> servers;
    const std::lock_guard<std::mutex> guard(lock);
    const auto known = servers.find(path);
    if (known != servers.end())
        return known->second;
    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module)
        servers.emplace(path, module);
    return module;
}

bool ReadHex(const wchar_t*& text, int digits, uint32_t& value)
{
    value = 0;
    for (; digits > 0; --digits, ++text)
    {
        const wchar_t c = *text;
        const int digit = c >= L'0' && c <= L'9'   ? c - L'0'
                          : c >= L'a' && c <= L'f' ? c - L'a' + 10
                          : c >= L'A' && c <= L'F' ? c - L'A' + 10
                                                   : -1;
        if (digit < 0)
            return false;
        value = value << 4 | static_cast<uint32_t>(digit);
    }
    return true;
}

bool ReadGuid(const wchar_t* text, GUID& guid)
{
    uint32_t data2 = 0;
    uint32_t data3 = 0;
    if (*text++ != L'{' || !ReadHex(text, 8, guid.Data1) || *text++ != L'-' || !ReadHex(text, 4, data2) ||
        *text++ != L'-' || !ReadHex(text, 4, data3) || *text++ != L'-')
        return false;
    guid.Data2 = static_cast<uint16_t>(data2);
    guid.Data3 = static_cast<uint16_t>(data3);
    for (int i = 0; i < 8; ++i)
    {
        uint32_t byte = 0;
        if ((i == 2 && *text++ != L'-') || !ReadHex(text, 2, byte))
            return false;
        guid.Data4[i] = static_cast<uint8_t>(byte);
    }
    return *text++ == L'}' && *text == L'\0';
}

} // namespace

HRESULT CoInitializeEx(LPVOID, DWORD)
{
    return winport::ComEnter().thread == 0 ? S_OK : S_FALSE;
}

void CoUninitialize()
{
    winport::ComLeave();
}

HRESULT CoGetClassObject(REFCLSID clsid, DWORD, LPVOID, REFIID iid, LPVOID* object)
{
    if (!object)
        return E_INVALIDARG;
    *object = nullptr;
    if (winport::ComInitialized().process == 0)
        return CO_E_NOTINITIALIZED;
    const std::wstring server = ServerOf(clsid);
    if (server.empty())
        return REGDB_E_CLASSNOTREG;
    const HMODULE module = LoadServer(server);
    if (!module)
        return HRESULT_FROM_WIN32(GetLastError());
    using GetClassObjectFunction = HRESULT(REFCLSID, REFIID, LPVOID*);
    const auto getClassObject =
        reinterpret_cast<GetClassObjectFunction*>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    return getClassObject ? getClassObject(clsid, iid, object) : CO_E_ERRORINDLL;
}

HRESULT CoCreateInstance(REFCLSID clsid, LPUNKNOWN outer, DWORD context, REFIID iid, LPVOID* object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    void* factory = nullptr;
    const HRESULT hr = CoGetClassObject(clsid, context, nullptr, IID_IClassFactory, &factory);
    if (FAILED(hr))
        return hr;
    IClassFactory* const classFactory = static_cast<IClassFactory*>(factory);
    const HRESULT created = classFactory->CreateInstance(outer, iid, object);
    classFactory->Release();
    return created;
}

LPVOID CoTaskMemAlloc(SIZE_T size)
{
    return std::malloc(size ? size : 1);
}

LPVOID CoTaskMemRealloc(LPVOID memory, SIZE_T size)
{
    return std::realloc(memory, size ? size : 1);
}

void CoTaskMemFree(LPVOID memory)
{
    std::free(memory);
}

int StringFromGUID2(REFGUID guid, LPOLESTR text, int capacity)
{
    constexpr int Length = 38;
    if (capacity <= Length)
        return 0;
    const uint8_t* d = guid.Data4;
    _snwprintf(text, Length + 1, L"{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1, guid.Data2,
               guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
    return Length + 1;
}

HRESULT CLSIDFromString(LPCOLESTR text, CLSID* clsid)
{
    if (!clsid)
        return E_INVALIDARG;
    *clsid = GUID_NULL;
    if (!text)
        return S_OK;
    GUID read;
    if (!ReadGuid(text, read))
        return CO_E_CLASSSTRING;
    *clsid = read;
    return S_OK;
}

HRESULT IIDFromString(LPCOLESTR text, IID* iid)
{
    const HRESULT hr = CLSIDFromString(text, iid);
    return hr == CO_E_CLASSSTRING ? E_INVALIDARG : hr;
}

HRESULT CoInitializeSecurity(PVOID, LONG, PVOID, void*, DWORD, DWORD, void*, DWORD, void*)
{
    return S_OK;
}

HRESULT CoSetProxyBlanket(IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD, void*, DWORD)
{
    return S_OK;
}

HRESULT SetErrorInfo(ULONG, IErrorInfo* error)
{
    if (error)
        error->AddRef();
    if (IErrorInfo* before = winport::ExchangeErrorInfo(error))
        before->Release();
    return S_OK;
}

HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** error)
{
    if (!error || reserved != 0)
        return E_INVALIDARG;
    *error = winport::ExchangeErrorInfo(nullptr);
    return *error ? S_OK : S_FALSE;
}
