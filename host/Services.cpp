// IWbemServices: a connection to one namespace.
#include "host/Services.h"

#include "host/CallResult.h"
#include "host/EnumRequests.h"
#include "host/Enumerator.h"
#include "host/Host.h"
#include "host/MethodRequest.h"
#include "host/PathRequests.h"
#include "host/PutRequest.h"
#include "host/QueryRunner.h"
#include "host/VariantValue.h"
#include "wbem/ObjectPath.h"

namespace orl
{
namespace
{

constexpr const wchar_t* kSchemaIsFixed = L"classes change in their MOF files only";
constexpr const wchar_t* kNoEvents = L"events are not supported";

// A request that could not be made, as one that fails when it runs: for clients that learn everything from their sink.
class FailedRequest final : public Request
{
public:
    FailedRequest(RequestScope scope, CallStatus status)
        : Request(std::move(scope), status.operation, status.parameter), m_status(std::move(status))
    {
    }

private:
    CallStatus Answer(Call&, ResultSink&) override { return m_status; }

    const CallStatus m_status;
};

} // namespace

const Namespace& NeedNamespace(Host& host, const std::vector<std::wstring>& names)
{
    if (const Namespace* found = host.Schema().FindNamespace(names))
        return *found;
    wbem::ObjectPath path;
    path.namespaces = names;
    throw CallFailure(WBEM_E_INVALID_NAMESPACE, L"there is no namespace " + path.NamespaceText());
}

Services::Services(Host& host, const Namespace& nameSpace, Holder holder)
    : m_host(host), m_namespace(nameSpace), m_holder(holder)
{
    if (m_holder == Holder::Client)
        m_host.AddClient();
}

Services::~Services()
{
    if (m_holder == Holder::Client)
        m_host.RemoveClient();
}

// The three ways in which a client takes a result --------------------------------------------------------------------

Ref<Request> Services::Prepare(const Operation& operation) const
{
    try
    {
        return operation.make(RequestScope{m_host, m_namespace, operation.context, operation.flags});
    }
    catch (...)
    {
        CallStatus status = StatusOfCurrentException();
        status.operation = operation.name;
        status.parameter = operation.parameter;
        throw CallFailure(std::move(status));
    }
}

HRESULT Services::OneObject(const Operation& operation, IWbemClassObject** object, IWbemCallResult** result)
{
    if (object)
        *object = nullptr;
    const Ref<Request> request = Prepare(operation);
    const auto call = MakeRef<Call>();
    const auto single = MakeRef<SingleResult>();
    if (operation.flags & WBEM_FLAG_RETURN_IMMEDIATELY)
    {
        NeedPlace(result);
        *result = nullptr;
        CComPtr<CallResult> pending = MakeObject<CallResult>(single);
        m_host.Workers().Run([request, call, single] { request->Run(*call, *single); });
        *result = pending.Detach();
        return WBEM_S_NO_ERROR;
    }
    request->Run(*call, *single);
    if (single->Status().Failed())
        throw CallFailure(single->Status());
    Publish(single->Status()); // what the provider left in the error object was its own affair
    CComPtr<CallResult> done;
    if (result)
        done = MakeObject<CallResult>(single);
    if (object && single->Object())
        *object = CComPtr<ClassObject>(single->Object()).Detach();
    if (result)
        *result = done.Detach();
    return single->Status().code;
}

HRESULT Services::ManyObjects(const Operation& operation, IEnumWbemClassObject** enumerator)
{
    NeedPlace(enumerator);
    *enumerator = nullptr;
    CComPtr<Enumerator> made = MakeObject<Enumerator>(m_host.Workers(), Prepare(operation));
    if (!(operation.flags & WBEM_FLAG_RETURN_IMMEDIATELY))
        made->AwaitFirst();
    *enumerator = made.Detach();
    return WBEM_S_NO_ERROR;
}

HRESULT Services::ToSink(const Operation& operation, IWbemObjectSink* sink)
{
    if (!sink)
        throw CallFailure(WBEM_E_INVALID_PARAMETER, L"there is no sink for the answer");
    Ref<Request> request;
    try
    {
        request = Prepare(operation);
    }
    catch (const CallFailure& failure)
    {
        request = MakeRequest<FailedRequest>(RequestScope{m_host, m_namespace, nullptr, 0}, failure.status);
    }
    const auto call = MakeRef<Call>();
    const auto client = MakeRef<ClientSink>(sink, call);
    m_calls->Add(client);
    try
    {
        m_host.Workers().Run(
            [request, call, client, calls = m_calls]
            {
                request->Run(*call, *client);
                calls->Remove(client);
            });
    }
    catch (...)
    {
        m_calls->Remove(client);
        throw;
    }
    return WBEM_S_NO_ERROR;
}

HRESULT Services::Refuse(const wchar_t* operation, const wchar_t* reason) const
{
    CallStatus status;
    status.code = WBEM_E_NOT_SUPPORTED;
    return ComCall(
        [&]() -> HRESULT
        {
            status.operation = operation;
            status.description = reason;
            throw CallFailure(std::move(status));
        });
}

// Operations ---------------------------------------------------------------------------------------------------------

Services::Operation Services::GetOperation(BSTR path, LONG flags, IWbemContext* context) const
{
    return {L"GetObject", std::wstring(ViewOf(path)), flags, context,
            [path](RequestScope scope) { return MakeGet(std::move(scope), ViewOf(path)); }};
}

Services::Operation Services::PutOperation(IWbemClassObject* instance, LONG flags, IWbemContext* context) const
{
    return {L"PutInstance", {}, flags, context, [instance](RequestScope scope) {
                return MakePut(std::move(scope), instance);
            }};
}

Services::Operation Services::DeleteOperation(BSTR path, LONG flags, IWbemContext* context) const
{
    return {L"DeleteInstance", std::wstring(ViewOf(path)), flags, context,
            [path](RequestScope scope) { return MakeDelete(std::move(scope), ViewOf(path)); }};
}

Services::Operation Services::MethodOperation(BSTR path, BSTR method, LONG flags, IWbemContext* context,
                                              IWbemClassObject* in) const
{
    return {L"ExecMethod", std::wstring(ViewOf(path)), flags, context,
            [=](RequestScope scope) { return MakeMethodCall(std::move(scope), ViewOf(path), ViewOf(method), in); }};
}

Services::Operation Services::InstanceEnumOperation(BSTR className, LONG flags, IWbemContext* context) const
{
    return {L"CreateInstanceEnum", std::wstring(ViewOf(className)), flags, context,
            [className](RequestScope scope) { return MakeInstanceEnum(std::move(scope), ViewOf(className)); }};
}

Services::Operation Services::ClassEnumOperation(BSTR superclass, LONG flags, IWbemContext* context) const
{
    return {L"CreateClassEnum", std::wstring(ViewOf(superclass)), flags, context,
            [superclass](RequestScope scope) { return MakeClassEnum(std::move(scope), ViewOf(superclass)); }};
}

Services::Operation Services::QueryOperation(BSTR language, BSTR query, LONG flags, IWbemContext* context) const
{
    // Some script layers count the terminator into the length of the queries that they make.
    std::wstring_view text = ViewOf(query);
    text = text.substr(0, text.find_last_not_of(L'\0') + 1);
    return {L"ExecQuery", std::wstring(text), flags, context,
            [=](RequestScope scope) { return MakeQuery(std::move(scope), ViewOf(language), text); }};
}

// The interface ------------------------------------------------------------------------------------------------------

HRESULT Services::OpenNamespace(const BSTR name, LONG, IWbemContext*, IWbemServices** services,
                                IWbemCallResult** result)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!services && !result)
                NeedPlace(nullptr);
            const auto path = wbem::ObjectPath::ParseNamespace(m_namespace.Name() + L"\\" + std::wstring(ViewOf(name)));
            if (!path)
                throw CallFailure(WBEM_E_INVALID_NAMESPACE, L"the namespace is malformed: " + path.Error().Text());
            const CComPtr<Services> opened =
                MakeObject<Services>(m_host, NeedNamespace(m_host, path->namespaces), m_holder);
            if (services)
                *services = CComPtr<Services>(opened).Detach();
            if (result)
            {
                const auto done = MakeRef<SingleResult>();
                done->Finish({});
                *result = MakeObject<CallResult>(done, CComPtr<IWbemServices>(opened.p)).Detach();
            }
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Services::CancelAsyncCall(IWbemObjectSink* sink)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!sink)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"CancelAsyncCall has no sink");
            if (!m_calls->Cancel(sink))
                throw CallFailure(WBEM_E_NOT_FOUND, L"no call with this sink is under way");
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Services::QueryObjectSink(LONG, IWbemObjectSink**)
{
    return Refuse(L"QueryObjectSink", L"objects are not sent to the service");
}

HRESULT Services::GetObject(const BSTR path, LONG flags, IWbemContext* context, IWbemClassObject** object,
                            IWbemCallResult** result)
{
    return ComCall([&] { return OneObject(GetOperation(path, flags, context), object, result); });
}

HRESULT Services::GetObjectAsync(const BSTR path, LONG flags, IWbemContext* context, IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(GetOperation(path, flags, context), sink); });
}

HRESULT Services::PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**)
{
    return Refuse(L"PutClass", kSchemaIsFixed);
}

HRESULT Services::PutClassAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*)
{
    return Refuse(L"PutClass", kSchemaIsFixed);
}

HRESULT Services::DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**)
{
    return Refuse(L"DeleteClass", kSchemaIsFixed);
}

HRESULT Services::DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return Refuse(L"DeleteClass", kSchemaIsFixed);
}

HRESULT Services::CreateClassEnum(const BSTR superclass, LONG flags, IWbemContext* context,
                                  IEnumWbemClassObject** enumerator)
{
    return ComCall([&] { return ManyObjects(ClassEnumOperation(superclass, flags, context), enumerator); });
}

HRESULT Services::CreateClassEnumAsync(const BSTR superclass, LONG flags, IWbemContext* context, IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(ClassEnumOperation(superclass, flags, context), sink); });
}

HRESULT Services::PutInstance(IWbemClassObject* instance, LONG flags, IWbemContext* context, IWbemCallResult** result)
{
    return ComCall([&] { return OneObject(PutOperation(instance, flags, context), nullptr, result); });
}

HRESULT Services::PutInstanceAsync(IWbemClassObject* instance, LONG flags, IWbemContext* context, IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(PutOperation(instance, flags, context), sink); });
}

HRESULT Services::DeleteInstance(const BSTR path, LONG flags, IWbemContext* context, IWbemCallResult** result)
{
    return ComCall([&] { return OneObject(DeleteOperation(path, flags, context), nullptr, result); });
}

HRESULT Services::DeleteInstanceAsync(const BSTR path, LONG flags, IWbemContext* context, IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(DeleteOperation(path, flags, context), sink); });
}

HRESULT Services::CreateInstanceEnum(const BSTR className, LONG flags, IWbemContext* context,
                                     IEnumWbemClassObject** enumerator)
{
    return ComCall([&] { return ManyObjects(InstanceEnumOperation(className, flags, context), enumerator); });
}

HRESULT Services::CreateInstanceEnumAsync(const BSTR className, LONG flags, IWbemContext* context,
                                          IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(InstanceEnumOperation(className, flags, context), sink); });
}

HRESULT Services::ExecQuery(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                            IEnumWbemClassObject** enumerator)
{
    return ComCall([&] { return ManyObjects(QueryOperation(language, query, flags, context), enumerator); });
}

HRESULT Services::ExecQueryAsync(const BSTR language, const BSTR query, LONG flags, IWbemContext* context,
                                 IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(QueryOperation(language, query, flags, context), sink); });
}

HRESULT Services::ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*, IEnumWbemClassObject**)
{
    return Refuse(L"ExecNotificationQuery", kNoEvents);
}

HRESULT Services::ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*)
{
    return Refuse(L"ExecNotificationQuery", kNoEvents);
}

HRESULT Services::ExecMethod(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                             IWbemClassObject* inParameters, IWbemClassObject** outParameters, IWbemCallResult** result)
{
    return ComCall(
        [&] { return OneObject(MethodOperation(path, method, flags, context, inParameters), outParameters, result); });
}

HRESULT Services::ExecMethodAsync(const BSTR path, const BSTR method, LONG flags, IWbemContext* context,
                                  IWbemClassObject* inParameters, IWbemObjectSink* sink)
{
    return ComCall([&] { return ToSink(MethodOperation(path, method, flags, context, inParameters), sink); });
}

} // namespace orl
