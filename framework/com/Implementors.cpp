// Implementors: finding, loading and registering.

#include "framework/com/Implementors.h"

#include "Common/Src/OrlDebug.h"
#include "Common/Src/OrlRegKey.h"
#include "com/OrlCom.h"
#include "framework/include/OrlStatusOfCurrentException.h"

#include <string>
#include <vector>

namespace orl
{

namespace
{

constexpr wchar_t FrameworkKey[] = L"SOFTWARE\\KESTA\\Network_Services\\ORL2\\Framework";
constexpr wchar_t DefaultImplementor[] = L"ORL2FCOE";
// What the result holds before the call: an implementor that fails leaves it as it is.
constexpr ULONG NotRegistered = 0xFFFFFFFF;

std::vector<std::wstring> ImplementorNames()
{
    COrlString list;
    COrlRegKey key;
    if (key.Open(HKEY_LOCAL_MACHINE, FrameworkKey))
        key.GetValue(L"Implementors", list);
    std::vector<std::wstring> names;
    std::wstring_view rest(list);
    while (!rest.empty())
    {
        const size_t end = rest.find(L';');
        COrlString name(std::wstring(rest.substr(0, end)));
        name.Trim();
        if (!name.IsEmpty())
            names.push_back(name);
        rest = end == std::wstring_view::npos ? std::wstring_view() : rest.substr(end + 1);
    }
    if (names.empty())
        names.emplace_back(DefaultImplementor);
    return names;
}

// The folder of this module with the separator behind it; empty when the system does not tell.
std::wstring OwnFolder()
{
    static const char here = 0;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&here), &module))
        return {};
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    const size_t last = path.find_last_of(L"\\/");
    return last == std::wstring::npos ? std::wstring() : path.substr(0, last + 1);
}

std::wstring PathOf(const std::wstring& name)
{
    return name.find_first_of(L"\\/") != std::wstring::npos ? name : OwnFolder() + name;
}

// An exception that leaves the export keeps what was registered before it.
HRESULT Register(RegisterCimImplementorsFunction entry, ManagerTable& managers, CResult& result)
{
    try
    {
        entry(nullptr, &managers, &result);
        return result.ulErrCode == 0 ? WBEM_S_NO_ERROR : WBEM_E_FAILED;
    }
    catch (...)
    {
        return OrlStatusOfCurrentException();
    }
}

HRESULT LoadImplementor(const std::wstring& path, ManagerTable& managers, std::wstring& reason)
{
    const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr)
    {
        reason = L"The implementor library " + path + L" cannot be loaded: error " + std::to_wstring(GetLastError());
        return WBEM_E_FAILED;
    }
    const auto entry = GetExport<RegisterCimImplementorsFunction>(library, "RegisterCimImplementors");
    if (entry == nullptr)
    {
        reason = L"The implementor library " + path + L" has no export RegisterCimImplementors";
        return WBEM_E_FAILED;
    }
    CResult result{NotRegistered, 0};
    const HRESULT status = Register(entry, managers, result);
    if (FAILED(status))
        reason = L"The implementor library " + path + L" did not register its classes; its trace log says why";
    return status;
}

HRESULT LoadAll(ManagerTable& managers, COrlString& reason)
{
    HRESULT first = WBEM_S_NO_ERROR;
    for (const std::wstring& name : ImplementorNames())
    {
        std::wstring failure;
        const HRESULT status = LoadImplementor(PathOf(name), managers, failure);
        if (SUCCEEDED(status))
            continue;
        g_OrlDebug.Print(L"%s (0x%08X)", failure.c_str(), status);
        if (SUCCEEDED(first))
        {
            first = status;
            reason = failure;
        }
    }
    g_OrlDebug.Print(L"%d class managers are registered", static_cast<int>(managers.Size()));
    return first;
}

} // namespace

HRESULT LoadImplementors(ManagerTable& managers, COrlString& reason) noexcept
{
    try
    {
        return LoadAll(managers, reason);
    }
    catch (...)
    {
        return OrlStatusOfCurrentException();
    }
}

} // namespace orl
