// Loading libraries by name.
#include <windows.h>

#include "winport/portable/Utf8.h"
#include "winport/src/Names.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <filesystem>
#include <fstream>
#include <link.h>
#include <system_error>

namespace
{

using Path = std::filesystem::path;

// dir\NAME.DLL as dir/libNAME.so; a name that has the system's own form stays.
Path FileOf(LPCWSTR name)
{
    const Path path = orl::NativePath(name);
    std::wstring base = orl::PathText(path.filename());
    constexpr size_t ExtensionLength = 4;
    if (base.size() > ExtensionLength &&
        winport::EqualNames(std::wstring_view(base).substr(base.size() - ExtensionLength), L".DLL"))
        base.resize(base.size() - ExtensionLength);
    if (base.find(L".so") == std::wstring::npos)
        base = L"lib" + base + L".so";
    return path.parent_path() / orl::NativePath(base);
}

HMODULE FromHandle(void* handle)
{
    return static_cast<HMODULE>(handle);
}

void* ToHandle(HMODULE module)
{
    return static_cast<void*>(module);
}

// The record that the loader keeps of a library: its address is the library's handle.
link_map* RecordOfAddress(const void* address)
{
    Dl_info info;
    void* record = nullptr;
    return dladdr1(address, &info, &record, RTLD_DL_LINKMAP) ? static_cast<link_map*>(record) : nullptr;
}

Path ProgramFile()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

// The loader's record of the program has no name.
Path FileOfRecord(const link_map* record)
{
    if (!record->l_name || !*record->l_name)
        return ProgramFile();
    std::error_code error;
    const Path absolute = std::filesystem::absolute(record->l_name, error);
    return error ? Path(record->l_name) : absolute;
}

// The folder of the module that this code is linked into, which is the one that calls.
Path CallersFolder()
{
    const link_map* record = RecordOfAddress(reinterpret_cast<const void*>(&CallersFolder));
    return record ? FileOfRecord(record).parent_path() : Path();
}

bool Exists(const Path& file)
{
    std::error_code error;
    return std::filesystem::is_regular_file(file, error);
}

bool IsLibraryFile(const Path& file)
{
    char magic[SELFMAG] = {};
    std::ifstream(file, std::ios::binary).read(magic, sizeof magic);
    return std::memcmp(magic, ELFMAG, SELFMAG) == 0;
}

HMODULE Fail(DWORD error)
{
    SetLastError(error);
    return nullptr;
}

// Takes one more count of a library that is loaded from this file; no file means the program.
HMODULE CountLoaded(const char* file)
{
    return FromHandle(dlopen(file && *file ? file : nullptr, RTLD_NOW | RTLD_NOLOAD));
}

struct LoadedSearch
{
    std::wstring wanted;
    Path found;
};

int MatchLoaded(dl_phdr_info* info, size_t, void* context)
{
    LoadedSearch& search = *static_cast<LoadedSearch*>(context);
    const Path file = info->dlpi_name ? Path(info->dlpi_name) : Path();
    if (!winport::EqualNames(orl::PathText(file.filename()), search.wanted))
        return 0;
    search.found = file;
    return 1;
}

// The whole path of a loaded library with this base name, compared without case; empty when there is none.
Path FindLoaded(const Path& base)
{
    LoadedSearch search{orl::PathText(base), {}};
    dl_iterate_phdr(MatchLoaded, &search);
    return search.found;
}

} // namespace

HMODULE LoadLibraryExW(LPCWSTR name, HANDLE, DWORD)
{
    if (!name || !*name)
        return Fail(ERROR_INVALID_PARAMETER);
    Path file = FileOf(name);
    if (!file.has_parent_path())
    {
        const Path beside = CallersFolder() / file;
        if (Exists(beside))
            file = beside;
        else if (const Path loaded = FindLoaded(file); !loaded.empty())
            file = loaded;
    }
    if (void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL))
        return FromHandle(handle);
    if (!Exists(file))
        return Fail(ERROR_MOD_NOT_FOUND);
    return Fail(IsLibraryFile(file) ? ERROR_PROC_NOT_FOUND : ERROR_BAD_EXE_FORMAT);
}

HMODULE LoadLibraryW(LPCWSTR name)
{
    return LoadLibraryExW(name, nullptr, 0);
}

BOOL FreeLibrary(HMODULE module)
{
    if (module && dlclose(ToHandle(module)) == 0)
        return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name)
{
    void* const handle = module ? ToHandle(module) : dlopen(nullptr, RTLD_LAZY);
    void* const address = dlsym(handle, name);
    // The loader also looks into the libraries that the module needs.
    if (address && RecordOfAddress(address) == handle)
        return reinterpret_cast<FARPROC>(address);
    SetLastError(ERROR_PROC_NOT_FOUND);
    return nullptr;
}

HMODULE GetModuleHandleW(LPCWSTR name)
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, name, &module);
    return module;
}

BOOL GetModuleHandleExW(DWORD flags, LPCWSTR nameOrAddress, HMODULE* module)
{
    *module = nullptr;
    if (flags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS)
    {
        const link_map* record = RecordOfAddress(nameOrAddress);
        *module = record ? CountLoaded(record->l_name) : nullptr;
    }
    else if (!nameOrAddress)
        *module = CountLoaded(nullptr);
    else
    {
        const Path file = FileOf(nameOrAddress);
        const Path loaded = file.has_parent_path() ? file : FindLoaded(file);
        *module = loaded.empty() ? nullptr : CountLoaded(loaded.c_str());
    }
    if (!*module)
    {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    if (flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT)
        dlclose(ToHandle(*module));
    return TRUE;
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD capacity)
{
    const Path file = module ? FileOfRecord(static_cast<link_map*>(ToHandle(module))) : ProgramFile();
    const std::wstring text = orl::PathText(file);
    if (capacity == 0)
    {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    const size_t copied = std::min<size_t>(text.size(), capacity - 1);
    std::wmemcpy(path, text.c_str(), copied);
    path[copied] = L'\0';
    if (copied == text.size())
        return static_cast<DWORD>(copied);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return capacity;
}
