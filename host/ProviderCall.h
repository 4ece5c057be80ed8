// One call of a provider, held to the contract between a provider and its service.
#pragma once

#include "host/Call.h"
#include "host/Results.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>

namespace orl
{

class WorkerPool;

// Says what becomes of an object that a provider indicated.
class Acceptor
{
public:
    virtual ~Acceptor() = default;
    // What the client gets for it: a view of its own, or null when the object does not belong to the answer. The
    // provider may change its object afterwards.
    virtual CComPtr<ClassObject> Accept(ClassObject& object) = 0;
};

// For operations that answer with a status alone.
class NothingAcceptor final : public Acceptor
{
public:
    CComPtr<ClassObject> Accept(ClassObject&) override { return nullptr; }
};

// The contract: objects that are not null and are made from this service's classes, then one SetStatus, nothing after
// it, and no release of the sink without it. A provider that breaks it ends its call with WBEM_E_PROVIDER_FAILURE; what
// came before the breach has reached the client.
class ProviderCall : public RefCounted
{
public:
    using Invoke = std::function<HRESULT(IWbemServices* provider, IWbemObjectSink* sink)>;

    // Acceptor and results are used until Make returns, and not after that.
    ProviderCall(WorkerPool& workers, std::wstring providerName, Acceptor& acceptor, ResultSink& results);
    ~ProviderCall() override;

    // Calls the provider and waits for the end of its answer, or until the client's call is cancelled.
    CallStatus Make(IWbemServices* provider, const Invoke& invoke, Call& call);

    // From any thread: the call ends now, and the provider is told on a thread of its own.
    void Cancel() noexcept;

    // How many objects the client got. To be asked after Make.
    std::size_t Delivered() const noexcept { return m_delivered; }

private:
    // What the provider holds. Its count is the provider's interest in the call: when it falls to none without a
    // SetStatus, the call was abandoned. The memory is the call's.
    class Sink final : public IWbemObjectSink
    {
    public:
        explicit Sink(ProviderCall& call) : m_call(call) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override;
        ULONG STDMETHODCALLTYPE Release() override;
        HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject** objects) override;
        HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT code, BSTR text, IWbemClassObject* object) override;

    private:
        ProviderCall& m_call;
        std::atomic<ULONG> m_references{0};
    };

    HRESULT Indicate(LONG count, IWbemClassObject** objects);
    HRESULT Collect(LONG count, IWbemClassObject** objects);
    HRESULT Flush();
    HRESULT SetStatus(LONG flags, HRESULT code, BSTR text, IWbemClassObject* object);
    void Abandon();
    void Breach(const std::wstring& what);
    void End(CallStatus status);
    void Wait();
    CallStatus Close();

    WorkerPool& m_workers;
    const std::wstring m_providerName;
    Sink m_sink{*this};

    std::mutex m_delivering; // one Indicate at a time; guards what follows
    Acceptor* m_acceptor;    // null once the call is closed
    ResultSink* m_results;
    Objects m_batch;
    std::size_t m_delivered = 0;
    CallStatus m_failure; // of accepting or delivering an object

    std::mutex m_mutex; // guards what follows; taken after m_delivering, never before it
    std::condition_variable m_changed;
    CComPtr<IWbemServices> m_provider;
    CallStatus m_status;
    bool m_hasStatus = false;
    bool m_isAbandoned = false;
    bool m_isCancelled = false;
    std::wstring m_breach; // the first one
};

} // namespace orl
