// OrlInstProvider: the in-process WMI provider through which a service reaches the class managers.
#pragma once

#include "framework/com/Connection.h"
#include "framework/com/RefusingServices.h"
#include "Common/Src/OrlString.h"

#include <memory>
#include <mutex>

namespace orl
{

// Where a provider has its managers from. Any number of providers share one.
class ManagerSource
{
public:
    // Answers the table, filled; null with a status and a reason when it cannot be. Called from any thread.
    virtual const ManagerTable* Managers(HRESULT& status, COrlString& reason) noexcept = 0;

protected:
    ~ManagerSource() = default;
};

// Capable of the asynchronous operations on instances, methods and queries, and of nothing else. They run on the
// caller's thread, in any number at once, and end before they return: with one SetStatus, whatever happens in between.
// Only a call without a sink is answered by an error of its own.
//
// A failed call ends with an __ExtendedStatus object where the service knows that class.
class OrlInstProvider final : public RefusingServices<IWbemProviderInit, IWbemShutdown>
{
public:
    // The source must outlive the provider.
    explicit OrlInstProvider(ManagerSource& source) noexcept : m_source(source) {}

    // Answers what the sink is told: WBEM_S_INITIALIZED or a failure. A failure leaves a text in the thread's error
    // object.
    HRESULT STDMETHODCALLTYPE Initialize(LPWSTR user, LONG flags, LPWSTR name, LPWSTR locale, IWbemServices* services,
                                         IWbemContext* context, IWbemProviderInitSink* sink) override;
    // Lets go of the service. Requests that are under way end in their own time; later ones are refused.
    HRESULT STDMETHODCALLTYPE Shutdown(LONG reason, ULONG milliseconds, IWbemContext* context) override;

    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR path, LONG flags, IWbemContext* context,
                                             IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR className, LONG flags, IWbemContext* context,
                                                      IWbemObjectSink* sink) override;
    // Creates with WBEM_FLAG_CREATE_ONLY and updates without it; the status comes with the instance's path.
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                               IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR path, LONG flags, IWbemContext* context,
                                                  IWbemObjectSink* sink) override;
    // Indicates the out-parameters, when the method has some and succeeds.
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                                              IWbemClassObject* inParameters, IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                                             IWbemObjectSink* sink) override;

private:
    std::shared_ptr<Connection> CurrentConnection() noexcept;
    HRESULT Connect(IWbemServices* services, COrlString& reason) noexcept;

    ManagerSource& m_source;
    std::mutex m_lock;
    std::shared_ptr<Connection> m_connection;
};

} // namespace orl
