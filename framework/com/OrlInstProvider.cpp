// OrlInstProvider: the operations, each as what is its own.

#include "framework/com/OrlInstProvider.h"

#include "Common/Src/OrlDebug.h"
#include "framework/com/AsyncRequest.h"
#include "framework/com/ErrorText.h"
#include "framework/include/CWomWQLParser.h"
#include "wbem/Text.h"

namespace orl
{

namespace
{

// A system property as text; empty when the object does not tell.
CComBSTR SystemText(CWomContext& context, IWbemClassObject* object, const wchar_t* name)
{
    CComBSTR text;
    CWomClassObject(context, object).GetProperty(name, text);
    return text;
}

// What a method's definition says about its parameters. Both stay null for a method that the class does not declare:
// whether there is such a method is the manager's to say.
struct MethodSignature
{
    CComPtr<IWbemClassObject> in;
    CComPtr<IWbemClassObject> out;
};

MethodSignature SignatureOf(IWbemClassObject* definition, const wchar_t* method)
{
    MethodSignature signature;
    const HRESULT status = definition->GetMethod(method, 0, &signature.in, &signature.out);
    if (FAILED(status) && status != WBEM_E_NOT_FOUND && status != WBEM_E_INVALID_METHOD)
        throw RefusedRequest{status, COrlString(L"The service does not give the parameters of ") + COrlString(method)};
    return signature;
}

CComPtr<IWbemClassObject> SpawnParameters(IWbemClassObject* signature)
{
    CComPtr<IWbemClassObject> parameters;
    const HRESULT status = signature != nullptr ? signature->SpawnInstance(0, &parameters) : WBEM_S_NO_ERROR;
    if (FAILED(status))
        throw RefusedRequest{status, L"The method's parameters cannot be made"};
    return parameters;
}

} // namespace

HRESULT OrlInstProvider::GetObjectAsync(const BSTR path, LONG, IWbemContext* context, IWbemObjectSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::GetObjectAsync");
    AsyncRequest request(CurrentConnection(), L"GetObject", path, context, sink);
    return request.Run(
        [&]
        {
            COrlWmiAutoParsedObjectPath parsed = request.ParsePath(path);
            CWomClassManagerRoot& manager = request.FindManager(parsed.ClassName());
            request.ExpectInstance();
            return manager.GetObjectAsync(parsed, request.Context(), request.Sink());
        });
}

HRESULT OrlInstProvider::CreateInstanceEnumAsync(const BSTR className, LONG, IWbemContext* context,
                                                 IWbemObjectSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::CreateInstanceEnumAsync");
    AsyncRequest request(CurrentConnection(), L"CreateInstanceEnum", className, context, sink);
    return request.Run(
        [&]
        {
            CWomClassManagerRoot& manager = request.FindManager(className);
            return manager.CreateInstanceEnumAsync(request.Context(), request.Sink());
        });
}

HRESULT OrlInstProvider::PutInstanceAsync(IWbemClassObject* instance, LONG flags, IWbemContext* context,
                                          IWbemObjectSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::PutInstanceAsync");
    AsyncRequest request(CurrentConnection(), L"PutInstance", instance != nullptr ? L"" : nullptr, context, sink);
    return request.Run(
        [&]
        {
            const CComBSTR className = SystemText(request.Context(), instance, L"__CLASS");
            if (className.Length() == 0)
                throw RefusedRequest{WBEM_E_INVALID_OBJECT, L"The instance does not tell its class"};
            CComBSTR path = SystemText(request.Context(), instance, L"__RELPATH");
            request.SetSubject(path.Length() != 0 ? path : className);
            CWomClassManagerRoot& manager = request.FindManager(className);
            CWomClassObject object(request.Context(), instance);
            const HRESULT status = (flags & WBEM_FLAG_CREATE_ONLY) != 0
                                       ? manager.CreateInstanceAsync(object, request.Context(), path, request.Sink())
                                       : manager.UpdateInstanceAsync(object, request.Context(), 0, request.Sink());
            request.SetResultText(std::move(path));
            return status;
        });
}

HRESULT OrlInstProvider::DeleteInstanceAsync(const BSTR path, LONG, IWbemContext* context, IWbemObjectSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::DeleteInstanceAsync");
    AsyncRequest request(CurrentConnection(), L"DeleteInstance", path, context, sink);
    return request.Run(
        [&]
        {
            COrlWmiAutoParsedObjectPath parsed = request.ParsePath(path);
            CWomClassManagerRoot& manager = request.FindManager(parsed.ClassName());
            return manager.DeleteInstanceAsync(parsed, request.Context(), request.Sink());
        });
}

HRESULT OrlInstProvider::ExecMethodAsync(const BSTR path, const BSTR method, LONG, IWbemContext* context,
                                         IWbemClassObject* inParameters, IWbemObjectSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::ExecMethodAsync");
    AsyncRequest request(CurrentConnection(), L"ExecMethod", path, context, sink);
    return request.Run(
        [&]
        {
            if (method == nullptr || *method == L'\0')
                throw RefusedRequest{WBEM_E_INVALID_PARAMETER, L"The call does not name a method"};
            COrlWmiAutoParsedObjectPath parsed = request.ParsePath(path);
            CWomClassManagerRoot& manager = request.FindManager(parsed.ClassName());
            const MethodSignature signature = SignatureOf(request.LoadClass(parsed.ClassName()), method);
            const CComPtr<IWbemClassObject> givenOrEmpty =
                inParameters != nullptr ? CComPtr<IWbemClassObject>(inParameters) : SpawnParameters(signature.in);
            CWomClassObject in(request.Context(), givenOrEmpty);
            CWomClassObject out(request.Context(), SpawnParameters(signature.out));
            const HRESULT status = manager.ExecMethodAsync(parsed, method, request.Context(), in, out, request.Sink());
            if (SUCCEEDED(status) && out.Object() != nullptr)
                out.Indicate(request.Sink());
            return status;
        });
}

HRESULT OrlInstProvider::ExecQueryAsync(const BSTR language, const BSTR query, LONG, IWbemContext* context,
                                        IWbemObjectSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::ExecQueryAsync");
    AsyncRequest request(CurrentConnection(), L"ExecQuery", query, context, sink);
    return request.Run(
        [&]
        {
            if (language == nullptr || !wbem::EqualNoCase(language, L"WQL"))
                throw RefusedRequest{WBEM_E_INVALID_QUERY_TYPE, L"The only query language here is WQL"};
            // A query that does not parse still reaches its manager, which then sends everything.
            CWomWQLParser parsed;
            parsed.Parse(query);
            if (parsed.ClassName().IsEmpty())
                throw RefusedRequest{WBEM_E_INVALID_QUERY,
                                     COrlString(L"The query cannot be read: ") + parsed.FailureText()};
            CWomClassManagerRoot& manager = request.FindManager(parsed.ClassName());
            return manager.ExecQueryAsync(parsed, request.Context(), request.Sink());
        });
}

HRESULT OrlInstProvider::Initialize(LPWSTR, LONG, LPWSTR, LPWSTR, IWbemServices* services, IWbemContext*,
                                    IWbemProviderInitSink* sink)
{
    COrlTraceScope scope(L"OrlInstProvider::Initialize");
    if (sink == nullptr)
        return WBEM_E_INVALID_PARAMETER;
    COrlString reason;
    const HRESULT status = Connect(services, reason);
    if (FAILED(status))
    {
        g_OrlDebug.Print(L"Initialize ended with 0x%08X: %s", status, reason.c_str());
        SetErrorText(L"Orl2InstUtility", reason.c_str());
    }
    sink->SetStatus(SUCCEEDED(status) ? static_cast<LONG>(WBEM_S_INITIALIZED) : status, 0);
    return status;
}

HRESULT OrlInstProvider::Connect(IWbemServices* services, COrlString& reason) noexcept
{
    try
    {
        if (services == nullptr)
        {
            reason = L"The service did not hand its namespace to the provider";
            return WBEM_E_INVALID_PARAMETER;
        }
        HRESULT status = WBEM_S_NO_ERROR;
        const ManagerTable* managers = m_source.Managers(status, reason);
        if (managers == nullptr)
            return FAILED(status) ? status : WBEM_E_FAILED;
        auto connection = std::make_shared<Connection>(services, *managers);
        const std::lock_guard<std::mutex> guard(m_lock);
        m_connection = std::move(connection);
        return WBEM_S_NO_ERROR;
    }
    catch (...)
    {
        return OrlStatusOfCurrentException();
    }
}

HRESULT OrlInstProvider::Shutdown(LONG, ULONG, IWbemContext*)
{
    COrlTraceScope scope(L"OrlInstProvider::Shutdown");
    std::shared_ptr<Connection> gone;
    const std::lock_guard<std::mutex> guard(m_lock);
    gone.swap(m_connection);
    return WBEM_S_NO_ERROR;
}

std::shared_ptr<Connection> OrlInstProvider::CurrentConnection() noexcept
{
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_connection;
}

} // namespace orl
