// CWomContext: one request, as the managers see it.
#pragma once

#include "com/OrlAtl.h"
#include "framework/include/OrlFrameworkApi.h"

#include <wbemcli.h>

namespace orl
{

// Where the requests of one connection get class definitions from. Safe for calls from any thread.
class ClassSource
{
public:
    // The definition must not be changed: other requests hold the same object.
    virtual HRESULT LoadClass(const CComBSTR& className, IWbemContext* clientContext,
                              CComPtr<IWbemClassObject>& definition) = 0;

protected:
    ~ClassSource() = default;
};

} // namespace orl

// Lives on the stack of one request and is used by that request's thread alone.
class ORL_FRAMEWORK_API CWomContext
{
public:
    // `services` is the service's own door for this connection, `clientContext` what the client sent along; both may be
    // null. Without a source every class definition is asked of the services anew.
    explicit CWomContext(IWbemServices* services, IWbemContext* clientContext = nullptr,
                         orl::ClassSource* classes = nullptr);
    CWomContext(const CWomContext&) = delete;
    CWomContext& operator=(const CWomContext&) = delete;

    // The status word that is copied into the agents' CResult.
    ULONG ulStatus = 0;

    // The flags are 0 unless the client's own context sets them; nothing else ever does.
    ULONG ulSuppressProperties = 0;      // __GET_EXT_KEYS_ONLY
    ULONG ulOmitSystemKeys = 0;          // OrlOmitSystemKeys
    ULONG ulDisplayValueUnsupported = 0; // OrlDisplayValueUnsupported

    // The definition is shared with other requests and is only read. Out of memory throws CAtlException.
    HRESULT LoadClass(const CComBSTR& className, CComPtr<IWbemClassObject>& definition);

    IWbemServices* Services() const { return m_services; }
    IWbemContext* ClientContext() const { return m_clientContext; }

    // The client is gone: instances are no longer made, so that the rest of a long list costs little.
    bool IsCancelled() const { return m_cancelled; }
    void NoteCancelled() { m_cancelled = true; }

    // For whoever leaves one record out and goes on with the next: what became of it, see OrlStatusOfCurrentException.
    // A lack of memory is remembered for a get, which would otherwise tell the client that the object does not exist;
    // other losses are not.
    void NoteLostRecord(HRESULT status);
    // WBEM_S_NO_ERROR when there was no such loss.
    HRESULT LossStatus() const { return m_lossStatus; }

private:
    CComPtr<IWbemServices> m_services;
    CComPtr<IWbemContext> m_clientContext;
    orl::ClassSource* m_classes;
    bool m_cancelled = false;
    HRESULT m_lossStatus = WBEM_S_NO_ERROR;
};
