// A library to load: what it exports, and what only the libraries that it needs export.
#include <windows.h>

extern "C" __declspec(dllexport) int AddOne(int number)
{
    return number + 1;
}

// The handle of the library that holds this code, by an address in it.
extern "C" __declspec(dllexport) HMODULE OwnHandle()
{
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&AddOne), &module);
    return module;
}

// What this library, and not the program, finds under a bare name.
extern "C" __declspec(dllexport) HMODULE LoadFromHere(const wchar_t* name)
{
    return LoadLibraryW(name);
}
