// The environment, the host's name and the system's library folder.
#include <windows.h>

#include "winport/portable/Utf8.h"
#include "winport/src/Names.h"

#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <gnu/libc-version.h>
#include <string>
#include <unistd.h>

namespace
{

// The variable's own spelling of a name, or the name as given when there is none.
std::string SpellingOf(LPCWSTR name)
{
    std::string wanted = orl::ToUtf8(name);
    if (std::getenv(wanted.c_str()))
        return wanted;
    for (char** entry = environ; entry && *entry; ++entry)
    {
        const std::string_view text = *entry;
        const std::string_view spelling = text.substr(0, text.find('='));
        if (winport::EqualNames(orl::FromUtf8(spelling), name))
            return std::string(spelling);
    }
    return wanted;
}

bool IsTemporaryFolder(LPCWSTR name)
{
    return winport::EqualNames(name, L"TEMP") || winport::EqualNames(name, L"TMP");
}

// Copies with its terminator when it fits: then the length, else the room needed.
DWORD CopyOut(const std::wstring& text, LPWSTR destination, DWORD capacity)
{
    if (text.size() >= capacity)
        return static_cast<DWORD>(text.size() + 1);
    std::wmemcpy(destination, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

std::wstring HostName()
{
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, sizeof name - 1);
    return orl::FromUtf8(name);
}

BOOL CopyComputerName(const std::wstring& text, LPWSTR name, DWORD* size, DWORD tooSmall)
{
    const DWORD length = CopyOut(text, name, *size);
    const bool fits = length < *size;
    *size = length;
    if (!fits)
        SetLastError(tooSmall);
    return fits;
}

} // namespace

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR value, DWORD capacity)
{
    const char* found = std::getenv(SpellingOf(name).c_str());
    if (!found && IsTemporaryFolder(name))
    {
        found = std::getenv("TMPDIR");
        if (!found || !*found)
            found = "/tmp";
    }
    if (!found)
    {
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    return CopyOut(orl::FromUtf8(found), value, capacity);
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value)
{
    const std::string spelling = SpellingOf(name);
    const bool known = std::getenv(spelling.c_str()) != nullptr;
    const int result = value ? setenv(spelling.c_str(), orl::ToUtf8(value).c_str(), 1) : unsetenv(spelling.c_str());
    if (result != 0)
        SetLastError(ERROR_INVALID_PARAMETER);
    else if (!value && !known)
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
    return result == 0 && (value || known);
}

UINT GetSystemDirectoryW(LPWSTR path, UINT capacity)
{
    // The C library lies where the system keeps its own.
    Dl_info library;
    std::wstring folder = L"/usr/lib";
    if (dladdr(reinterpret_cast<void*>(&gnu_get_libc_version), &library) && library.dli_fname)
        folder = orl::PathText(std::filesystem::path(library.dli_fname).parent_path());
    return CopyOut(folder, path, capacity);
}

BOOL GetComputerNameW(LPWSTR name, DWORD* size)
{
    return CopyComputerName(HostName(), name, size, ERROR_BUFFER_OVERFLOW);
}

BOOL GetComputerNameExW(COMPUTER_NAME_FORMAT format, LPWSTR name, DWORD* size)
{
    const std::wstring host = HostName();
    const size_t point = host.find(L'.');
    std::wstring text = host;
    if (format == ComputerNameDnsDomain)
        text = point == std::wstring::npos ? std::wstring() : host.substr(point + 1);
    else if (format != ComputerNameDnsFullyQualified)
        text = host.substr(0, point);
    return CopyComputerName(text, name, size, ERROR_MORE_DATA);
}
