// A provider whose answers a test writes.
#pragma once

#include "com/OrlCom.h"

#include <functional>
#include <initializer_list>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace orl::test
{

// An IWbemServices that answers every operation with WBEM_E_PROVIDER_NOT_CAPABLE.
class IncapableServices : public IWbemServices
{
public:
    HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**,
                                            IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG, IWbemObjectSink**) override;
    HRESULT STDMETHODCALLTYPE GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**,
                                        IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override;
    HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**) override;
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*,
                                                    IEnumWbemClassObject**) override;
    HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                                         IWbemObjectSink*) override;
    HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                         IWbemClassObject**, IWbemCallResult**) override;
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                              IWbemObjectSink*) override;
};

} // namespace orl::test

namespace orl
{

ORL_INTERFACE_ID(test::IncapableServices, IID_IWbemServices);

} // namespace orl

namespace orl::test
{

// Operations that a test leaves empty are not supported. The functions run on whatever thread the service calls on, and
// owe the sink its SetStatus like any provider.
class ScriptedProvider : public ComObject<IWbemProviderInit, IncapableServices>
{
public:
    using Answer = std::function<HRESULT(const std::wstring& what, IWbemObjectSink* sink)>;
    using Properties = std::initializer_list<std::pair<const wchar_t*, CComVariant>>;

    Answer get;       // of a path
    Answer enumerate; // of a class
    Answer query;     // of a query
    Answer remove;    // of a path
    std::function<HRESULT(IWbemClassObject* instance, IWbemObjectSink* sink)> put;
    std::function<HRESULT(const std::wstring& path, const std::wstring& method, IWbemClassObject* in,
                          IWbemObjectSink* sink)>
        call;
    std::function<HRESULT(IWbemProviderInitSink* sink)> initialize; // empty: answers that all is well
    std::function<void(IWbemObjectSink* sink)> cancel;

    // Every call so far: "GetObject Test_Lamp.Name=\"a\"".
    std::vector<std::wstring> Calls() const;
    // The context that came with the last call.
    CComPtr<IWbemContext> LastContext() const;

    // An instance as a provider makes it: class definition from the service, SpawnInstance, Put.
    CComPtr<IWbemClassObject> Make(const wchar_t* className, Properties properties) const;
    // The out-parameters of a method, to be filled.
    CComPtr<IWbemClassObject> MakeResult(const wchar_t* className, const wchar_t* method) const;
    IWbemServices* Service() const { return m_service; }
    // Drops the service, and with it all that keeps the two alive.
    void Forget() { m_service = nullptr; }

    HRESULT STDMETHODCALLTYPE Initialize(LPWSTR user, LONG flags, LPWSTR nameSpace, LPWSTR locale,
                                         IWbemServices* service, IWbemContext* context,
                                         IWbemProviderInitSink* sink) override;
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR path, LONG flags, IWbemContext* context,
                                             IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR className, LONG flags, IWbemContext* context,
                                                      IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                                             IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                               IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR path, LONG flags, IWbemContext* context,
                                                  IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                                              IWbemClassObject* in, IWbemObjectSink* sink) override;

private:
    void Note(const std::wstring& call, IWbemContext* context);
    HRESULT Do(const Answer& answer, const wchar_t* operation, BSTR what, IWbemContext* context, IWbemObjectSink* sink);

    mutable std::mutex m_mutex;
    std::vector<std::wstring> m_calls;
    CComPtr<IWbemContext> m_context;
    CComPtr<IWbemServices> m_service;
};

// A BSTR's characters.
std::wstring TextOf(BSTR text);

} // namespace orl::test
