// AsyncRequest: one asynchronous operation from its acceptance to its final status.
#pragma once

#include "framework/com/Completion.h"
#include "framework/com/Connection.h"
#include "framework/com/RequestSink.h"
#include "framework/include/COrlWmiAutoParsedObjectPath.h"
#include "framework/include/CWomContext.h"
#include "framework/include/OrlStatusOfCurrentException.h"

#include <memory>
#include <optional>

namespace orl
{

// A request that does not get as far as its manager, or fails after it.
struct RefusedRequest
{
    HRESULT status;
    COrlString reason;
};

// Lives on the stack of the COM method. Of the two names `operation` is what the client called, `subject` what it was
// called about; both are the caller's and `subject` may be null.
class AsyncRequest
{
public:
    AsyncRequest(std::shared_ptr<Connection> connection, const wchar_t* operation, const wchar_t* subject,
                 IWbemContext* clientContext, IWbemObjectSink* clientSink) noexcept;

    // Runs `work`, which answers the manager's status or throws anything, and tells the client the end. What the COM
    // method answers: success, because the status travels by the sink, or WBEM_E_INVALID_PARAMETER when there is none.
    template <typename Work>
    HRESULT Run(Work work) noexcept
    {
        if (m_clientSink == nullptr)
            return WBEM_E_INVALID_PARAMETER;
        Completion completion(m_clientSink);
        HRESULT status = WBEM_S_NO_ERROR;
        try
        {
            Start();
            status = StatusOfSuccess(work());
        }
        catch (const RefusedRequest& refused)
        {
            status = refused.status;
            Explain(refused.reason.c_str());
        }
        catch (...)
        {
            status = OrlStatusOfCurrentException();
            ExplainCurrentException();
        }
        End(completion, status);
        return WBEM_S_NO_ERROR;
    }

    // The rest is for `work`, and throws RefusedRequest.

    // A get that sent nothing has not found its object.
    void ExpectInstance() noexcept { m_expectsInstance = true; }
    // For an operation that learns only while it runs what it is about.
    void SetSubject(const CComBSTR& subject);
    // The text that goes with a success: the path of what was written.
    void SetResultText(CComBSTR text) noexcept { m_resultText = std::move(text); }

    COrlWmiAutoParsedObjectPath ParsePath(const wchar_t* path) const;
    // By the name letter for letter, or as the class's definition spells it.
    CWomClassManagerRoot& FindManager(const wchar_t* className);
    CComPtr<IWbemClassObject> LoadClass(const wchar_t* className);

    CWomContext& Context() noexcept { return *m_context; }
    CComPtr<IWbemObjectSink> Sink() const noexcept { return m_sink.p; }

private:
    void Start();
    HRESULT StatusOfSuccess(HRESULT status);
    HRESULT StatusOfEmptyGet();
    void Explain(const wchar_t* reason) noexcept;
    void ExplainCurrentException() noexcept;
    void End(Completion& completion, HRESULT status) noexcept;

    std::shared_ptr<Connection> m_connection;
    const wchar_t* m_operation;
    const wchar_t* m_subject;
    IWbemContext* m_clientContext;
    IWbemObjectSink* m_clientSink;
    std::optional<CWomContext> m_context;
    CComPtr<RequestSink> m_sink;
    bool m_expectsInstance = false;
    CComBSTR m_ownSubject;
    CComBSTR m_resultText;
    COrlString m_reason;
};

} // namespace orl
