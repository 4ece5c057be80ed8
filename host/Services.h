// IWbemServices: a connection to one namespace.
#pragma once

#include "com/OrlCom.h"
#include "host/ClientSink.h"
#include "host/Request.h"

#include <functional>
#include <memory>
#include <string>

namespace orl
{

class Host;
class Namespace;

// A failure is the method's answer, with an __ExtendedStatus in the thread's error object; a call with a client's sink
// answers WBEM_S_NO_ERROR and brings every failure in SetStatus. A call that is made to wait runs its provider on the
// caller's thread when it yields one object; every other call runs on a thread of the service. Thread safe.
class Services : public ComObject<IWbemServices>
{
public:
    enum class Holder
    {
        Client,
        Provider // does not keep the providers loaded
    };

    Services(Host& host, const Namespace& nameSpace, Holder holder);
    ~Services() override;

    HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR name, LONG flags, IWbemContext* context,
                                            IWbemServices** services, IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG flags, IWbemObjectSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetObject(const BSTR path, LONG flags, IWbemContext* context, IWbemClassObject** object,
                                        IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR path, LONG flags, IWbemContext* context,
                                             IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject* object, LONG flags, IWbemContext* context,
                                       IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject* object, LONG flags, IWbemContext* context,
                                            IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR name, LONG flags, IWbemContext* context,
                                          IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR name, LONG flags, IWbemContext* context,
                                               IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR superclass, LONG flags, IWbemContext* context,
                                              IEnumWbemClassObject** enumerator) override;
    HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR superclass, LONG flags, IWbemContext* context,
                                                   IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                          IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                               IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR path, LONG flags, IWbemContext* context,
                                             IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR path, LONG flags, IWbemContext* context,
                                                  IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR className, LONG flags, IWbemContext* context,
                                                 IEnumWbemClassObject** enumerator) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR className, LONG flags, IWbemContext* context,
                                                      IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                                        IEnumWbemClassObject** enumerator) override;
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                                             IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR language, const BSTR query, LONG flags,
                                                    IWbemContext* context, IEnumWbemClassObject** enumerator) override;
    HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR language, const BSTR query, LONG flags,
                                                         IWbemContext* context, IWbemObjectSink* sink) override;
    HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                                         IWbemClassObject* inParameters, IWbemClassObject** outParameters,
                                         IWbemCallResult** result) override;
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                                              IWbemClassObject* inParameters, IWbemObjectSink* sink) override;

private:
    // One operation of a client: what it is called, with what, and how its request is made.
    struct Operation
    {
        const wchar_t* name;
        std::wstring parameter;
        LONG flags;
        IWbemContext* context;
        std::function<Ref<Request>(RequestScope)> make;
    };

    Operation GetOperation(BSTR path, LONG flags, IWbemContext* context) const;
    Operation PutOperation(IWbemClassObject* instance, LONG flags, IWbemContext* context) const;
    Operation DeleteOperation(BSTR path, LONG flags, IWbemContext* context) const;
    Operation MethodOperation(BSTR path, BSTR method, LONG flags, IWbemContext* context, IWbemClassObject* in) const;
    Operation InstanceEnumOperation(BSTR className, LONG flags, IWbemContext* context) const;
    Operation ClassEnumOperation(BSTR superclass, LONG flags, IWbemContext* context) const;
    Operation QueryOperation(BSTR language, BSTR query, LONG flags, IWbemContext* context) const;

    Ref<Request> Prepare(const Operation& operation) const;
    // The three ways in which a client takes a result. They throw what went wrong.
    HRESULT OneObject(const Operation& operation, IWbemClassObject** object, IWbemCallResult** result);
    HRESULT ManyObjects(const Operation& operation, IEnumWbemClassObject** enumerator);
    HRESULT ToSink(const Operation& operation, IWbemObjectSink* sink);
    HRESULT Refuse(const wchar_t* operation, const wchar_t* reason) const;

    Host& m_host;
    const Namespace& m_namespace;
    const Holder m_holder;
    const std::shared_ptr<AsyncCalls> m_calls = std::make_shared<AsyncCalls>();
};

// The namespace that a path of names leads to. Throws CallFailure WBEM_E_INVALID_NAMESPACE.
const Namespace& NeedNamespace(Host& host, const std::vector<std::wstring>& names);

} // namespace orl
