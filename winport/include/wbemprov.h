// The WMI provider interfaces.
#pragma once

#include <wbemcli.h>

// The status that Initialize reports when all is well.
inline constexpr LONG WBEM_S_INITIALIZED = 0;

// Takes the outcome of Initialize.
struct IWbemProviderInitSink : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE SetStatus(LONG status, LONG flags) = 0;
};

// The first call to a provider.
struct IWbemProviderInit : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE Initialize(LPWSTR user, LONG flags, LPWSTR name, LPWSTR locale,
                                                 IWbemServices* services, IWbemContext* context,
                                                 IWbemProviderInitSink* sink) = 0;
};

extern const IID IID_IWbemProviderInitSink;
extern const IID IID_IWbemProviderInit;
