// OrlCom: module references, the class factory, and the server's keys in the registry.

#include "com/OrlCom.h"

#include <string>

namespace orl
{

namespace
{

std::atomic<ULONG> g_moduleReferences{0};

class ClassFactory final : public ComObject<IClassFactory>
{
public:
    explicit ClassFactory(const ServerClass& served) : m_served(served) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        try
        {
            return m_served.create(iid, object);
        }
        catch (...)
        {
            return ResultOfCurrentException();
        }
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override
    {
        if (lock)
            AddModuleReference();
        else
            ReleaseModuleReference();
        return S_OK;
    }

private:
    const ServerClass& m_served;
};

constexpr wchar_t ClassesKey[] = L"SOFTWARE\\Classes\\CLSID\\";

std::wstring KeyOf(const ServerClass& served)
{
    wchar_t text[40]{};
    StringFromGUID2(*served.clsid, text, 40);
    return ClassesKey + std::wstring(text);
}

// The file of the module that this code is linked into.
std::wstring ModulePath()
{
    HMODULE module = nullptr;
    static const char here = 0;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&here), &module))
        return {};
    constexpr DWORD LongestPath = 32768;
    std::wstring path(LongestPath, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), LongestPath));
    return path;
}

LSTATUS WriteKey(const std::wstring& key, const wchar_t* value, const std::wstring& text)
{
    HKEY opened = nullptr;
    LSTATUS status =
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &opened, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    status = RegSetValueExW(opened, value, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                            static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(opened);
    return status;
}

HRESULT RegisterClass(const ServerClass& served, const std::wstring& path)
{
    const std::wstring key = KeyOf(served);
    const std::wstring server = key + L"\\InprocServer32";
    LSTATUS status = WriteKey(key, nullptr, served.name);
    if (status == ERROR_SUCCESS)
        status = WriteKey(server, nullptr, path);
    if (status == ERROR_SUCCESS)
        status = WriteKey(server, L"ThreadingModel", L"Both");
    return HRESULT_FROM_WIN32(static_cast<ULONG>(status));
}

} // namespace

HRESULT ResultOfCurrentException() noexcept
{
    try
    {
        throw;
    }
    catch (const CAtlException& failure)
    {
        return failure.m_hr;
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
    catch (...)
    {
        return E_FAIL;
    }
}

void AddModuleReference() noexcept
{
    g_moduleReferences.fetch_add(1, std::memory_order_relaxed);
}

void ReleaseModuleReference() noexcept
{
    g_moduleReferences.fetch_sub(1, std::memory_order_release);
}

ULONG ModuleReferences() noexcept
{
    return g_moduleReferences.load(std::memory_order_acquire);
}

HRESULT GetClassObject(std::span<const ServerClass> classes, REFCLSID clsid, REFIID iid, void** object) noexcept
try
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    for (const ServerClass& served : classes)
    {
        if (!IsEqualCLSID(clsid, *served.clsid))
            continue;
        return MakeObject<ClassFactory>(served)->QueryInterface(iid, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}
catch (...)
{
    return ResultOfCurrentException();
}

HRESULT CanUnloadNow() noexcept
{
    return ModuleReferences() == 0 ? S_OK : S_FALSE;
}

HRESULT RegisterServer(std::span<const ServerClass> classes) noexcept
try
{
    const std::wstring path = ModulePath();
    if (path.empty())
        return HRESULT_FROM_WIN32(GetLastError());
    for (const ServerClass& served : classes)
    {
        const HRESULT hr = RegisterClass(served, path);
        if (FAILED(hr))
            return hr;
    }
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
}

HRESULT UnregisterServer(std::span<const ServerClass> classes) noexcept
try
{
    for (const ServerClass& served : classes)
    {
        const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, KeyOf(served).c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
            return HRESULT_FROM_WIN32(static_cast<ULONG>(status));
    }
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
}

} // namespace orl
