// One call of a provider, held to the contract between a provider and its service.
#include "host/ProviderCall.h"

#include "host/VariantValue.h"
#include "host/WorkerPool.h"

namespace orl
{
namespace
{

constexpr std::size_t kBatch = 64; // objects that are checked before they go on, when many come in one Indicate

} // namespace

// The sink -----------------------------------------------------------------------------------------------------------

HRESULT ProviderCall::Sink::QueryInterface(REFIID iid, void** object)
{
    if (!object)
        return E_POINTER;
    const bool isOffered = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IWbemObjectSink);
    *object = isOffered ? this : nullptr;
    if (!isOffered)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ProviderCall::Sink::AddRef()
{
    m_call.AddRef();
    return ++m_references;
}

ULONG ProviderCall::Sink::Release()
{
    const ULONG left = --m_references;
    if (left == 0)
        m_call.Abandon();
    m_call.RefCounted::Release();
    return left;
}

HRESULT ProviderCall::Sink::Indicate(LONG count, IWbemClassObject** objects)
{
    return m_call.Indicate(count, objects);
}

HRESULT ProviderCall::Sink::SetStatus(LONG flags, HRESULT code, BSTR text, IWbemClassObject* object)
{
    return m_call.SetStatus(flags, code, text, object);
}

// The call -----------------------------------------------------------------------------------------------------------

ProviderCall::ProviderCall(WorkerPool& workers, std::wstring providerName, Acceptor& acceptor, ResultSink& results)
    : m_workers(workers), m_providerName(std::move(providerName)), m_acceptor(&acceptor), m_results(&results)
{
    AddModuleReference(); // a provider may hold the sink longer than anybody else holds the module
}

ProviderCall::~ProviderCall()
{
    ReleaseModuleReference();
}

// The analyzer takes each release of a reference for the last one; the caller of Make holds one.
// NOLINTBEGIN(clang-analyzer-cplusplus.NewDelete)
CallStatus ProviderCall::Make(IWbemServices* provider, const Invoke& invoke, Call& call)
{
    m_provider = provider;
    if (!call.Begin(Ref<ProviderCall>(this)))
        Cancel();
    else
    {
        CComPtr<IWbemObjectSink> sink(&m_sink);
        SetErrorInfo(0, nullptr);
        HRESULT answer = WBEM_E_PROVIDER_FAILURE;
        try
        {
            answer = invoke(provider, sink);
        }
        catch (...)
        {
            Breach(L"let an exception out of its method");
        }
        if (FAILED(answer))
        {
            CallStatus refused;
            refused.code = answer;
            refused.object = TakeExtendedStatus();
            End(std::move(refused));
        }
        sink = nullptr;
        Wait();
        call.End();
    }
    return Close();
}

// NOLINTEND(clang-analyzer-cplusplus.NewDelete)

void ProviderCall::Wait()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_hasStatus || m_isAbandoned || m_isCancelled; });
}

// From here on the provider reaches nobody any more.
CallStatus ProviderCall::Close()
{
    const std::lock_guard delivering(m_delivering);
    m_acceptor = nullptr;
    m_results = nullptr;
    const std::lock_guard lock(m_mutex);
    m_provider = nullptr;
    CallStatus outcome;
    if (m_isCancelled)
    {
        outcome.code = WBEM_E_CALL_CANCELLED;
        outcome.description = L"the call was cancelled";
    }
    else if (!m_breach.empty() || !m_hasStatus)
    {
        outcome.code = WBEM_E_PROVIDER_FAILURE;
        outcome.description = L"the provider " + m_providerName + L" " +
                              (m_breach.empty() ? L"released its sink without a SetStatus" : m_breach);
    }
    else if (m_failure.Failed())
        outcome = std::move(m_failure);
    else
        outcome = std::move(m_status);
    outcome.provider = m_providerName;
    return outcome;
}

void ProviderCall::Cancel() noexcept
{
    CComPtr<IWbemServices> provider;
    {
        const std::lock_guard lock(m_mutex);
        m_isCancelled = true;
        provider = m_provider;
    }
    m_changed.notify_all();
    if (!provider)
        return;
    try
    {
        m_workers.Run([provider, sink = CComPtr<IWbemObjectSink>(&m_sink)] { provider->CancelAsyncCall(sink); });
    }
    catch (...)
    {
        return; // the provider learns it from its next Indicate
    }
}

// What the provider sends --------------------------------------------------------------------------------------------

HRESULT ProviderCall::Indicate(LONG count, IWbemClassObject** objects)
{
    const std::lock_guard delivering(m_delivering);
    if (!m_acceptor)
        return WBEM_E_CALL_CANCELLED;
    {
        const std::lock_guard lock(m_mutex);
        if (m_isCancelled)
            return WBEM_E_CALL_CANCELLED;
        if (m_hasStatus && m_breach.empty())
            m_breach = L"sent an object after its SetStatus";
        if (m_hasStatus)
            return WBEM_E_PROVIDER_FAILURE;
    }
    try
    {
        return Collect(count, objects);
    }
    catch (...)
    {
        m_batch.clear();
        m_failure = StatusOfCurrentException();
        return m_failure.code;
    }
}

HRESULT ProviderCall::Collect(LONG count, IWbemClassObject** objects)
{
    if (count < 0 || (count > 0 && !objects))
    {
        Breach(L"sent an Indicate without objects");
        return WBEM_E_INVALID_PARAMETER;
    }
    for (LONG i = 0; i < count; ++i)
    {
        const CComPtr<ClassObject> own = ClassObject::From(objects[i]);
        if (!own)
        {
            Breach(objects[i] ? L"sent an object that is not made from this service's classes" : L"sent a null object");
            Flush();
            return WBEM_E_INVALID_OBJECT;
        }
        own->Body()->TellRoomOfTexts();
        if (CComPtr<ClassObject> accepted = m_acceptor->Accept(*own))
            m_batch.push_back(std::move(accepted));
        if (m_batch.size() >= kBatch)
        {
            if (const HRESULT delivered = Flush(); FAILED(delivered))
                return delivered;
        }
    }
    return Flush();
}

HRESULT ProviderCall::Flush()
{
    if (m_batch.empty())
        return WBEM_S_NO_ERROR;
    const std::size_t count = m_batch.size();
    const HRESULT delivered = m_results->Deliver(m_batch);
    m_batch.clear();
    if (SUCCEEDED(delivered))
        m_delivered += count;
    return delivered;
}

HRESULT ProviderCall::SetStatus(LONG flags, HRESULT code, BSTR text, IWbemClassObject* object)
{
    if (flags != WBEM_STATUS_COMPLETE)
        return WBEM_S_NO_ERROR; // progress is nobody's end
    try
    {
        CallStatus status;
        status.code = code;
        status.object = FAILED(code) ? object : nullptr;
        status.text = ViewOf(text);
        const std::lock_guard lock(m_mutex);
        if (m_hasStatus)
        {
            if (m_breach.empty())
                m_breach = L"sent a second SetStatus";
            return WBEM_E_PROVIDER_FAILURE;
        }
        m_status = std::move(status);
        m_hasStatus = true;
    }
    catch (...)
    {
        return StatusOfCurrentException().code;
    }
    m_changed.notify_all();
    return WBEM_S_NO_ERROR;
}

void ProviderCall::End(CallStatus status)
{
    const std::lock_guard lock(m_mutex);
    if (!m_hasStatus)
        m_status = std::move(status);
    m_hasStatus = true;
}

void ProviderCall::Abandon()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isAbandoned = true;
    }
    m_changed.notify_all();
}

void ProviderCall::Breach(const std::wstring& what)
{
    const std::lock_guard lock(m_mutex);
    if (m_breach.empty())
        m_breach = what;
}

} // namespace orl
