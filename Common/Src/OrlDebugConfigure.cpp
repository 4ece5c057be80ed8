// COrlDebug: where the log lies and what the registry says about it.

#include "Common/Src/OrlDebug.h"

#include "Common/Src/OrlRegKey.h"
#include "Common/Src/OrlSecure.h"

#include <cwchar>
#include <memory>
#include <new>

namespace
{

constexpr wchar_t SourceName[] = L"..\\..\\Common\\Src\\OrlDebug";
constexpr wchar_t ProductKey[] = L"SOFTWARE\\KESTA\\NETWORK_SERVICES\\ORL2";

constexpr ULONG LastLevelOfRegistry = 2;
constexpr size_t MaxLogFileName = 245;
constexpr size_t PathCapacity = 1024;
constexpr size_t TempCapacity = 260;

// The folder of the environment variable; false and empty when there is none or when it is too long.
bool ReadTempDirectory(wchar_t (&directory)[TempCapacity])
{
    const DWORD length = GetEnvironmentVariableW(L"Temp", directory, static_cast<DWORD>(TempCapacity));
    const bool found = length != 0 && length < TempCapacity;
    if (!found)
        directory[0] = L'\0';
    return found;
}

void Append(wchar_t (&path)[PathCapacity], const wchar_t* text)
{
    OrlSafeCat(SourceName, __LINE__, path, PathCapacity, text);
}

void BuildLogPath(const wchar_t* processTag, const wchar_t* logFileName, wchar_t (&path)[PathCapacity])
{
    path[0] = L'\0';
    // Setup runs before there is an installation to log into.
    if (_wcsicmp(processTag, L"QvSetup") == 0)
    {
        Append(path, logFileName);
        return;
    }
    COrlRegKey key;
    if (key.Open(HKEY_LOCAL_MACHINE, ProductKey) && _wcsicmp(processTag, L"Orl2Setp") != 0)
    {
        COrlString directory;
        key.GetValue(L"InstalledDir", directory);
        Append(path, directory);
    }
    else
    {
        wchar_t directory[TempCapacity] = {};
        ReadTempDirectory(directory);
        Append(path, directory);
    }
    Append(path, L"\\");
    Append(path, logFileName);
}

// The file of `path` in the Temp directory.
FILE* OpenInTemp(const wchar_t* path, const wchar_t* mode)
{
    const wchar_t* name = std::wcsrchr(path, L'\\');
    if (name == nullptr)
        return nullptr;
    wchar_t fallback[TempCapacity] = {};
    if (!ReadTempDirectory(fallback) || OrlSafeCat(SourceName, __LINE__, fallback, TempCapacity, name) != 0)
        return nullptr;
    return _wfopen(fallback, mode);
}

// Replaces the wished level by the registry's; false when there is no registry key to ask.
bool AskRegistry(ULONG& level)
{
    COrlRegKey key;
    if (!key.Open(HKEY_LOCAL_MACHINE, ProductKey))
        return false;
    DWORD wanted = 0;
    if (key.GetValue(L"TRACE", wanted))
        level = wanted;
    return true;
}

wchar_t* CopyTag(const wchar_t* tag)
{
    const size_t capacity = std::wcslen(tag) + 1;
    std::unique_ptr<wchar_t[]> copy(new wchar_t[capacity]);
    OrlSafeCopy(SourceName, __LINE__, copy.get(), capacity, tag);
    return copy.release();
}

} // namespace

int COrlDebug::Configure(const wchar_t* processTag, const wchar_t* logFileName, ULONG level, int append,
                         ULONG maxFileSize, const wchar_t*)
try
{
    if (level == 0)
    {
        m_level.store(0, std::memory_order_relaxed);
        return -1;
    }
    if (level <= LastLevelOfRegistry && (!AskRegistry(level) || level == 0))
        return -1;
    if (processTag == nullptr || logFileName == nullptr)
        return -1;
    if (logFileName[0] == L'\0' || std::wcslen(logFileName) > MaxLogFileName)
        return -1;

    // An earlier file and tag are left as they are: a line may be on its way with them.
    m_processTag = CopyTag(processTag);
    m_maxFileSize = maxFileSize;

    m_file = OpenLog(processTag, logFileName, append);
    if (m_file == nullptr)
        return -1;
    m_configured = true;
    m_level.store(level, std::memory_order_relaxed);
    return 0;
}
catch (const std::bad_alloc&)
{
    return -1;
}

FILE* COrlDebug::OpenLog(const wchar_t* processTag, const wchar_t* logFileName, int append) const
{
    const wchar_t* mode = append != 0 ? L"a+" : L"w";
    wchar_t path[PathCapacity];
    BuildLogPath(processTag, logFileName, path);
    FILE* file = _wfopen(path, mode);
    return file != nullptr ? file : OpenInTemp(path, mode);
}
