// The registry functions on the registry file.
#include <windows.h>

#include "winport/src/RegStore.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <set>

// An open key is its path; what is there is looked up at each use, so that it is always the file's present content.
struct HKEY__
{
    std::wstring path;
};

namespace
{

using winport::RegFile;
using winport::RegKey;
using winport::RegValue;

std::mutex g_lock;

// Made at the first use: a module's trace reads the registry while the module's own objects are still being made.
std::set<HKEY>& OpenKeys()
{
    static std::set<HKEY> keys;
    return keys;
}

// The path of an open or predefined key; false for any other handle.
bool PathOf(HKEY key, std::wstring& path)
{
    if (key == HKEY_LOCAL_MACHINE)
        path = L"HKEY_LOCAL_MACHINE";
    else if (key == HKEY_CURRENT_USER)
        path = L"HKEY_CURRENT_USER";
    else if (key == HKEY_CLASSES_ROOT)
        path = winport::ClassesPath;
    else
    {
        const std::lock_guard<std::mutex> guard(g_lock);
        if (!OpenKeys().contains(key))
            return false;
        path = key->path;
    }
    return true;
}

bool IsPredefined(HKEY key)
{
    return key == HKEY_LOCAL_MACHINE || key == HKEY_CURRENT_USER || key == HKEY_CLASSES_ROOT;
}

// The path below a key; one backslash at the end is no name.
bool PathBelow(HKEY root, LPCWSTR below, std::wstring& path)
{
    if (!PathOf(root, path))
        return false;
    if (below && *below)
        path += std::wstring(L"\\") + below;
    if (path.ends_with(L'\\'))
        path.pop_back();
    return true;
}

// The key at the path; a root is there even when the file has nothing below it.
const RegKey* FindKey(const RegFile& file, const std::wstring& path)
{
    static const RegKey empty;
    const RegKey* key = file.root.Find(path);
    return key || path.find(L'\\') != std::wstring::npos ? key : &empty;
}

HKEY MakeHandle(const std::wstring& path)
{
    const std::lock_guard<std::mutex> guard(g_lock);
    return *OpenKeys().insert(new HKEY__{path}).first;
}

bool AreNamesValid(std::wstring_view path)
{
    while (!path.empty())
    {
        const size_t end = std::min(path.find(L'\\'), path.size());
        const std::wstring_view name = path.substr(0, end);
        if (name.empty() || name.size() > winport::MaxKeyName ||
            std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; }))
            return false;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return true;
}

// What a query gives for data: the type, and as much as there is room for.
LSTATUS CopyData(const RegValue& value, DWORD* type, BYTE* data, DWORD* size)
{
    if (type)
        *type = value.type;
    if (!size)
        return data ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    const DWORD room = *size;
    *size = static_cast<DWORD>(value.data.size());
    if (!data)
        return ERROR_SUCCESS;
    if (room < *size)
        return ERROR_MORE_DATA;
    std::copy(value.data.begin(), value.data.end(), data);
    return ERROR_SUCCESS;
}

LSTATUS CopyName(const std::wstring& text, LPWSTR name, DWORD* length)
{
    if (!name || !length)
        return ERROR_INVALID_PARAMETER;
    if (*length <= text.size())
        return ERROR_MORE_DATA;
    std::wmemcpy(name, text.c_str(), text.size() + 1);
    *length = static_cast<DWORD>(text.size());
    return ERROR_SUCCESS;
}

// Runs the change on an open key that is still there.
template <class Change>
LSTATUS ChangeKey(HKEY key, const Change& change)
{
    std::wstring path;
    if (!PathOf(key, path))
        return ERROR_INVALID_HANDLE;
    return winport::ChangeRegistry(
        [&](RegFile& file) -> LSTATUS
        {
            RegKey* found = IsPredefined(key) ? &file.root.Make(path) : file.root.Find(path);
            return found ? change(*found) : ERROR_KEY_DELETED;
        });
}

} // namespace

LSTATUS RegOpenKeyExW(HKEY root, LPCWSTR path, DWORD, REGSAM, HKEY* result)
{
    if (!result)
        return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    std::wstring whole;
    if (!PathBelow(root, path, whole))
        return ERROR_INVALID_HANDLE;
    const auto file = winport::ReadRegistry();
    if (!FindKey(*file, whole))
        return ERROR_FILE_NOT_FOUND;
    *result = MakeHandle(whole);
    return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY key)
{
    if (IsPredefined(key))
        return ERROR_SUCCESS;
    const std::lock_guard<std::mutex> guard(g_lock);
    if (OpenKeys().erase(key) == 0)
        return ERROR_INVALID_HANDLE;
    delete key;
    return ERROR_SUCCESS;
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD*, DWORD* type, BYTE* data, DWORD* size)
{
    std::wstring path;
    if (!PathOf(key, path))
        return ERROR_INVALID_HANDLE;
    const auto file = winport::ReadRegistry();
    const RegKey* found = FindKey(*file, path);
    if (!found)
        return ERROR_KEY_DELETED;
    const auto value = found->values.find(std::wstring_view(name ? name : L""));
    return value == found->values.end() ? ERROR_FILE_NOT_FOUND : CopyData(value->second, type, data, size);
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD*, LPWSTR, DWORD*, FILETIME*)
{
    std::wstring path;
    if (!PathOf(key, path))
        return ERROR_INVALID_HANDLE;
    const auto file = winport::ReadRegistry();
    const RegKey* found = FindKey(*file, path);
    if (!found)
        return ERROR_KEY_DELETED;
    if (index >= found->keys.size())
        return ERROR_NO_MORE_ITEMS;
    return CopyName(std::next(found->keys.begin(), index)->second.name, name, nameLength);
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD*, DWORD* type, BYTE* data,
                      DWORD* size)
{
    std::wstring path;
    if (!PathOf(key, path))
        return ERROR_INVALID_HANDLE;
    const auto file = winport::ReadRegistry();
    const RegKey* found = FindKey(*file, path);
    if (!found)
        return ERROR_KEY_DELETED;
    if (index >= found->values.size())
        return ERROR_NO_MORE_ITEMS;
    const RegValue& value = std::next(found->values.begin(), index)->second;
    const LSTATUS status = CopyName(value.name, name, nameLength);
    return status == ERROR_SUCCESS ? CopyData(value, type, data, size) : status;
}

LSTATUS RegCreateKeyExW(HKEY root, LPCWSTR path, DWORD, LPWSTR, DWORD, REGSAM, const SECURITY_ATTRIBUTES*, HKEY* result,
                        DWORD* disposition)
{
    std::wstring whole;
    if (!result || !path)
        return ERROR_INVALID_PARAMETER;
    if (!PathBelow(root, path, whole))
        return ERROR_INVALID_HANDLE;
    if (!AreNamesValid(whole) || std::count(whole.begin(), whole.end(), L'\\') > LONGLONG{winport::MaxKeyDepth})
        return ERROR_INVALID_PARAMETER;
    bool exists = FindKey(*winport::ReadRegistry(), whole) != nullptr;
    if (!exists)
    {
        const LSTATUS status = winport::ChangeRegistry(
            [&](RegFile& file) -> LSTATUS
            {
                exists = file.root.Find(whole) != nullptr;
                file.root.Make(whole);
                return ERROR_SUCCESS;
            });
        if (status != ERROR_SUCCESS)
            return status;
    }
    *result = MakeHandle(whole);
    if (disposition)
        *disposition = exists ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size)
{
    const std::wstring valueName = name ? name : L"";
    const bool hasControl = std::any_of(valueName.begin(), valueName.end(), [](wchar_t c) { return c < L' '; });
    if ((size && !data) || size > winport::MaxValueData || valueName.size() > winport::MaxValueName || hasControl)
        return ERROR_INVALID_PARAMETER;
    return ChangeKey(key,
                     [&](RegKey& found) -> LSTATUS
                     {
                         RegValue& value = found.values[valueName];
                         if (value.name.empty())
                             value.name = valueName;
                         value.type = type;
                         value.data.assign(data, data + size);
                         return ERROR_SUCCESS;
                     });
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name)
{
    return ChangeKey(key,
                     [&](RegKey& found) -> LSTATUS
                     {
                         const auto value = found.values.find(std::wstring_view(name ? name : L""));
                         if (value == found.values.end())
                             return ERROR_FILE_NOT_FOUND;
                         found.values.erase(value);
                         return ERROR_SUCCESS;
                     });
}

LSTATUS RegDeleteTreeW(HKEY root, LPCWSTR path)
{
    return ChangeKey(root,
                     [&](RegKey& found) -> LSTATUS
                     {
                         if (!path || !*path)
                         {
                             found.keys.clear();
                             found.values.clear();
                             return ERROR_SUCCESS;
                         }
                         return found.Remove(path) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
                     });
}
