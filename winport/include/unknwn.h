// IUnknown and IClassFactory.
#pragma once

#include <windows.h>

struct IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct IClassFactory : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;
};

typedef IUnknown* LPUNKNOWN;

extern const GUID GUID_NULL;
extern const IID IID_IUnknown;
extern const IID IID_IClassFactory;
#define IID_NULL GUID_NULL
#define CLSID_NULL GUID_NULL
