// The scalar types, handles and calling-convention words of the Win32 names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cwchar>

// Names that begin with an underscore are the system's, and stand here for it.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

// An exported name is visible outside its library; every other one is hidden by the compiler's default.
#define __declspec(attribute) WINPORT_DECLSPEC_##attribute
#define WINPORT_DECLSPEC_dllexport __attribute__((visibility("default")))
#define WINPORT_DECLSPEC_dllimport __attribute__((visibility("default")))
#define WINPORT_DECLSPEC_novtable

#define __cdecl
#define __stdcall
#define WINAPI
#define CALLBACK
#define APIENTRY
#define STDMETHODCALLTYPE
#define STDMETHODIMP HRESULT STDMETHODCALLTYPE
#define STDMETHODIMP_(type) type STDMETHODCALLTYPE
#define STDAPI extern "C" HRESULT STDMETHODCALLTYPE
#define STDAPI_(type) extern "C" type STDMETHODCALLTYPE
#define EXTERN_C extern "C"

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

typedef int BOOL;
typedef unsigned char BYTE;
typedef unsigned char UCHAR;
typedef unsigned char BOOLEAN;
typedef char CHAR;
typedef wchar_t WCHAR;
typedef wchar_t OLECHAR;
typedef int16_t SHORT;
typedef uint16_t USHORT;
typedef uint16_t WORD;
typedef int INT;
typedef unsigned int UINT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint32_t DWORD;
typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;
typedef uint64_t DWORDLONG;
typedef int64_t LONG64;
typedef uint64_t ULONG64;
typedef int64_t __int64;
typedef intptr_t INT_PTR;
typedef uintptr_t UINT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t ULONG_PTR;
typedef uintptr_t DWORD_PTR;
typedef ULONG_PTR SIZE_T;
typedef float FLOAT;
typedef double DOUBLE;

typedef void* PVOID;
typedef void* LPVOID;
typedef const void* LPCVOID;
typedef BYTE* LPBYTE;
typedef DWORD* LPDWORD;
typedef BOOL* LPBOOL;
typedef LONG* PLONG;
typedef ULONG* PULONG;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef wchar_t* LPWSTR;
typedef const wchar_t* LPCWSTR;
typedef wchar_t* LPOLESTR;
typedef const wchar_t* LPCOLESTR;

typedef int errno_t;

typedef void* HANDLE;
typedef HANDLE HLOCAL;
typedef struct HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
typedef struct HKEY__* HKEY;
typedef HKEY* PHKEY;
typedef INT_PTR(WINAPI* FARPROC)();

typedef LONG LSTATUS;
typedef DWORD REGSAM;
typedef DWORD LCID;
typedef WORD LANGID;
typedef DWORD LCTYPE;

typedef LONG HRESULT;
typedef LONG SCODE;

typedef union _LARGE_INTEGER
{
    __extension__ struct
    {
        DWORD LowPart;
        LONG HighPart;
    };
    struct
    {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
} LARGE_INTEGER;

typedef struct _FILETIME
{
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
} FILETIME;

typedef struct _GUID
{
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} GUID;
typedef GUID IID;
typedef GUID CLSID;
typedef const GUID& REFGUID;
typedef const IID& REFIID;
typedef const CLSID& REFCLSID;

bool operator==(const GUID& left, const GUID& right);
inline bool IsEqualGUID(const GUID& left, const GUID& right)
{
    return left == right;
}
#define IsEqualIID(left, right) IsEqualGUID(left, right)
#define IsEqualCLSID(left, right) IsEqualGUID(left, right)

#define MAX_PATH 260
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))
#define UNREFERENCED_PARAMETER(name) (static_cast<void>(name))
#define LOWORD(value) (static_cast<WORD>((value)&0xFFFF))
#define HIWORD(value) (static_cast<WORD>(((value) >> 16) & 0xFFFF))

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
