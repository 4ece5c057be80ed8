// AsyncRequest: the parts of a request that do not depend on its operation.

#include "framework/com/AsyncRequest.h"

#include "Common/Src/OrlDebug.h"
#include "framework/com/ExtendedStatus.h"

#include <exception>
#include <string>

namespace orl
{

namespace
{

COrlString Widened(const char* text)
{
    std::wstring wide;
    for (; *text != '\0'; ++text)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(*text));
    return COrlString(std::move(wide));
}

} // namespace

AsyncRequest::AsyncRequest(std::shared_ptr<Connection> connection, const wchar_t* operation, const wchar_t* subject,
                           IWbemContext* clientContext, IWbemObjectSink* clientSink) noexcept
    : m_connection(std::move(connection)), m_operation(operation), m_subject(subject), m_clientContext(clientContext),
      m_clientSink(clientSink)
{
}

void AsyncRequest::Start()
{
    if (m_connection == nullptr)
        throw RefusedRequest{WBEM_E_PROVIDER_LOAD_FAILURE, L"The provider has not been initialized"};
    m_context.emplace(m_connection->services.p, m_clientContext, &m_connection->classes);
    m_sink = MakeObject<RequestSink>(m_clientSink);
    if (m_subject == nullptr)
        throw RefusedRequest{WBEM_E_INVALID_PARAMETER, L"The call does not say what it is about"};
}

void AsyncRequest::SetSubject(const CComBSTR& subject)
{
    m_ownSubject = subject;
    m_subject = m_ownSubject.m_str;
}

COrlWmiAutoParsedObjectPath AsyncRequest::ParsePath(const wchar_t* path) const
{
    COrlWmiAutoParsedObjectPath parsed;
    const HRESULT status = parsed.Parse(path);
    if (FAILED(status))
        throw RefusedRequest{status, COrlString(L"The object path cannot be read: ") + parsed.ErrorText()};
    return parsed;
}

CWomClassManagerRoot& AsyncRequest::FindManager(const wchar_t* className)
{
    CWomClassManagerRoot* manager = m_connection->managers.Find(className);
    if (manager == nullptr)
    {
        // Clients may write a class name in any case; managers are known by the one of the definition.
        CComPtr<IWbemClassObject> definition;
        CComBSTR spelled;
        if (SUCCEEDED(m_context->LoadClass(CComBSTR(className), definition)) &&
            SUCCEEDED(CWomClassObject(*m_context, definition).GetProperty(L"__CLASS", spelled)) &&
            spelled.Length() != 0)
            manager = m_connection->managers.Find(spelled.m_str);
    }
    if (manager == nullptr)
    {
        throw RefusedRequest{WBEM_E_INVALID_CLASS,
                             COrlString(L"No class manager serves the class ") + COrlString(className)};
    }
    return *manager;
}

CComPtr<IWbemClassObject> AsyncRequest::LoadClass(const wchar_t* className)
{
    CComPtr<IWbemClassObject> definition;
    const HRESULT status = m_context->LoadClass(CComBSTR(className), definition);
    if (FAILED(status) || definition == nullptr)
    {
        throw RefusedRequest{FAILED(status) ? status : WBEM_E_FAILED,
                             COrlString(L"The service does not give the definition of the class ") +
                                 COrlString(className)};
    }
    return definition;
}

// What a success of the manager means to the client.
HRESULT AsyncRequest::StatusOfSuccess(HRESULT status)
{
    if (FAILED(status))
        return status;
    if (m_sink->Refusal() == WBEM_E_CALL_CANCELLED)
        throw RefusedRequest{m_sink->Refusal(), L"The client cancelled the call"};
    return m_expectsInstance && m_sink->Indicated() == 0 ? StatusOfEmptyGet() : status;
}

HRESULT AsyncRequest::StatusOfEmptyGet()
{
    if (m_sink->Refusal() != WBEM_S_NO_ERROR)
        throw RefusedRequest{m_sink->Refusal(), L"The client did not take the instance"};
    if (m_context->LossStatus() != WBEM_S_NO_ERROR)
        throw RefusedRequest{m_context->LossStatus(), L"There is not enough memory for the instance"};
    throw RefusedRequest{WBEM_E_NOT_FOUND, COrlString(L"There is no instance ") + COrlString(m_subject)};
}

void AsyncRequest::Explain(const wchar_t* reason) noexcept
{
    try
    {
        m_reason = reason;
    }
    catch (...)
    {
        // The status tells the rest.
        m_reason.clear();
    }
}

void AsyncRequest::ExplainCurrentException() noexcept
{
    try
    {
        throw;
    }
    catch (const CWomProviderException& failure)
    {
        try
        {
            m_reason = failure.FormatErrorMessage();
        }
        catch (...)
        {
            m_reason.clear();
        }
    }
    catch (const CAtlException& failure)
    {
        Explain(failure.m_hr == E_OUTOFMEMORY ? L"There is not enough memory" : L"A part of the provider failed");
    }
    catch (const std::bad_alloc&)
    {
        Explain(L"There is not enough memory");
    }
    catch (const std::exception& failure)
    {
        try
        {
            m_reason = COrlString(L"The provider failed: ") + Widened(failure.what());
        }
        catch (...)
        {
            m_reason.clear();
        }
    }
    catch (...)
    {
        Explain(L"The provider failed without saying why");
    }
}

void AsyncRequest::End(Completion& completion, HRESULT status) noexcept
{
    if (m_sink != nullptr)
        m_sink->Close();
    if (SUCCEEDED(status))
    {
        completion.Finish(status, m_resultText.m_str);
        return;
    }
    if (m_reason.empty())
        Explain(L"The class manager refused the call");
    const wchar_t* subject = m_subject != nullptr ? m_subject : L"";
    g_OrlDebug.Print(L"%s of %s ended with 0x%08X: %s", m_operation, subject, status, m_reason.c_str());
    CComPtr<IWbemClassObject> words;
    if (m_context.has_value())
        words = MakeExtendedStatus(*m_context, {m_operation, subject, m_reason.c_str(), status});
    completion.Finish(status, nullptr, words);
}

} // namespace orl
