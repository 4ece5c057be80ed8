// The providers of a service: loading and initialising them.
#include "host/ProviderHost.h"

#include "host/CallStatus.h"
#include "host/Services.h"
#include "wbem/Text.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <thread>

namespace orl
{
namespace
{

constexpr std::chrono::seconds kInitializationTime{60};

// What a provider says about its initialisation.
struct InitState
{
    std::mutex mutex;
    std::condition_variable changed;
    bool hasStatus = false;
    bool isAbandoned = false;
    LONG status = 0;
};

class InitSink final : public ComObject<IWbemProviderInitSink>
{
public:
    explicit InitSink(std::shared_ptr<InitState> state) : m_state(std::move(state)) {}
    ~InitSink() override
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->isAbandoned = true;
        m_state->changed.notify_all();
    }

    HRESULT STDMETHODCALLTYPE SetStatus(LONG status, LONG) override
    {
        const std::lock_guard lock(m_state->mutex);
        if (!std::exchange(m_state->hasStatus, true))
            m_state->status = status;
        m_state->changed.notify_all();
        return WBEM_S_NO_ERROR;
    }

private:
    std::shared_ptr<InitState> m_state;
};

[[noreturn]] void RefuseLoad(HRESULT code, const Registration& registration, const std::wstring& reason)
{
    throw CallFailure(code, L"the provider " + registration.name + L" " + reason, registration.name);
}

void Initialize(IWbemProviderInit& init, Host& host, const Registration& registration, IWbemContext* context)
{
    const auto state = std::make_shared<InitState>();
    const CComPtr<Services> services = MakeObject<Services>(host, *registration.nameSpace, Services::Holder::Provider);
    std::wstring name = registration.nameSpace->Name();
    CComPtr<InitSink> sink = MakeObject<InitSink>(state);
    const HRESULT answer = init.Initialize(nullptr, 0, name.data(), nullptr, services, context, sink);
    sink = nullptr;
    if (FAILED(answer))
        RefuseLoad(WBEM_E_INITIALIZATION_FAILURE, registration, L"refused to be initialised: " + HexText(answer));
    std::unique_lock lock(state->mutex);
    state->changed.wait_for(lock, kInitializationTime, [&] { return state->hasStatus || state->isAbandoned; });
    if (!state->hasStatus)
        RefuseLoad(WBEM_E_INITIALIZATION_FAILURE, registration, L"did not say that it is initialised");
    if (FAILED(state->status))
        RefuseLoad(WBEM_E_INITIALIZATION_FAILURE, registration,
                   L"could not be initialised: " + HexText(static_cast<HRESULT>(state->status)));
}

} // namespace

struct ProviderHost::Slot
{
    std::mutex loading;
    std::atomic<std::thread::id> loader{};
    CComPtr<IWbemServices> provider;
};

std::shared_ptr<ProviderHost::Slot> ProviderHost::SlotOf(const Registration& registration)
{
    const std::lock_guard lock(m_mutex);
    std::shared_ptr<Slot>& slot = m_slots[{registration.nameSpace, wbem::FoldCase(registration.name)}];
    if (!slot)
        slot = std::make_shared<Slot>();
    return slot;
}

CComPtr<IWbemServices> ProviderHost::Get(const Registration& registration, IWbemContext* context)
{
    const std::shared_ptr<Slot> slot = SlotOf(registration);
    if (slot->loader.load() == std::this_thread::get_id())
        RefuseLoad(WBEM_E_PROVIDER_LOAD_FAILURE, registration, L"was asked for before it was initialised");
    const std::lock_guard lock(slot->loading);
    if (slot->provider)
        return slot->provider;
    slot->loader = std::this_thread::get_id();
    try
    {
        slot->provider = Load(registration, context);
        slot->loader = std::thread::id();
    }
    catch (...)
    {
        slot->loader = std::thread::id();
        throw;
    }
    return slot->provider;
}

CComPtr<IWbemServices> ProviderHost::Load(const Registration& registration, IWbemContext* context)
{
    CComPtr<IUnknown> made;
    const HRESULT loaded = m_loader(registration.clsid, &made);
    if (FAILED(loaded) || !made)
        RefuseLoad(WBEM_E_PROVIDER_LOAD_FAILURE, registration,
                   L"cannot be loaded by its CLSID " + registration.clsid + L": " + HexText(loaded));
    const CComQIPtr<IWbemProviderInit> init(made);
    CComQIPtr<IWbemServices> services(made);
    if (!init || !services)
        RefuseLoad(WBEM_E_PROVIDER_LOAD_FAILURE, registration,
                   std::wstring(L"has no ") + (init ? L"IWbemServices" : L"IWbemProviderInit"));
    Initialize(*init, m_host, registration, context);
    return services;
}

void ProviderHost::ReleaseAll()
{
    decltype(m_slots) slots;
    {
        const std::lock_guard lock(m_mutex);
        slots.swap(m_slots);
    }
}

} // namespace orl
