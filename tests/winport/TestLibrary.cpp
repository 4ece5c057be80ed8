// A library to load: what it exports, and what only the libraries that it needs export.
#include <windows.h>
#include <oleauto.h>

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

extern "C" __declspec(dllexport) HRESULT SetErrorFromHere(IErrorInfo* error)
{
    return SetErrorInfo(0, error);
}

extern "C" __declspec(dllexport) HRESULT CreateFromHere(const CLSID* clsid, void** object)
{
    return CoCreateInstance(*clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object);
}

extern "C" __declspec(dllexport) void DebugFromHere(const wchar_t* text)
{
    OutputDebugStringW(text);
}
