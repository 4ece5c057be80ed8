// Starting COM on a thread, making objects by class id, and the text form of identifiers.
//
// Class ids are found in the registry: CLSID\{...}\InprocServer32 names the library. Apartments do not exist here:
// objects are called on the caller's thread.
#pragma once

#include "unknwn.h"

typedef enum tagCOINIT
{
    COINIT_MULTITHREADED = 0x0,
    COINIT_APARTMENTTHREADED = 0x2,
    COINIT_DISABLE_OLE1DDE = 0x4
} COINIT;

typedef enum tagCLSCTX
{
    CLSCTX_INPROC_SERVER = 0x1,
    CLSCTX_INPROC_HANDLER = 0x2,
    CLSCTX_LOCAL_SERVER = 0x4
} CLSCTX;
#define CLSCTX_ALL (CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER | CLSCTX_LOCAL_SERVER)

// S_OK the first time on a thread, S_FALSE after that; each wants its CoUninitialize.
HRESULT CoInitializeEx(LPVOID reserved, DWORD mode);
void CoUninitialize();

// CO_E_NOTINITIALIZED before any thread has initialised COM; REGDB_E_CLASSNOTREG for a class that the registry does not
// know; the system error of a server library that does not load; CO_E_ERRORINDLL for one without DllGetClassObject.
// A server library stays loaded.
HRESULT CoGetClassObject(REFCLSID clsid, DWORD context, LPVOID reserved, REFIID iid, LPVOID* object);
HRESULT CoCreateInstance(REFCLSID clsid, LPUNKNOWN outer, DWORD context, REFIID iid, LPVOID* object);

LPVOID CoTaskMemAlloc(SIZE_T size);
LPVOID CoTaskMemRealloc(LPVOID memory, SIZE_T size);
void CoTaskMemFree(LPVOID memory);

// 39 characters with the terminator, or 0 when there is less room.
int StringFromGUID2(REFGUID guid, LPOLESTR text, int capacity);
HRESULT CLSIDFromString(LPCOLESTR text, CLSID* clsid);
HRESULT IIDFromString(LPCOLESTR text, IID* iid);

// There is one process and one user: security is always as asked.
#define RPC_C_AUTHN_WINNT 10
#define RPC_C_AUTHN_DEFAULT 0xFFFFFFFFu
#define RPC_C_AUTHZ_NONE 0
#define RPC_C_AUTHN_LEVEL_DEFAULT 0
#define RPC_C_AUTHN_LEVEL_CALL 3
#define RPC_C_AUTHN_LEVEL_PKT 4
#define RPC_C_IMP_LEVEL_IMPERSONATE 3
typedef enum tagEOLE_AUTHENTICATION_CAPABILITIES
{
    EOAC_NONE = 0
} EOLE_AUTHENTICATION_CAPABILITIES;

HRESULT CoInitializeSecurity(PVOID descriptor, LONG serviceCount, PVOID services, void* reserved1, DWORD authentication,
                             DWORD impersonation, void* list, DWORD capabilities, void* reserved3);
HRESULT CoSetProxyBlanket(IUnknown* proxy, DWORD authentication, DWORD authorization, OLECHAR* principal, DWORD level,
                          DWORD impersonation, void* identity, DWORD capabilities);

// What a server library exports.
extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** object);
extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE DllCanUnloadNow();
