// The providers of a service: found by their registration, loaded once, kept.
#pragma once

#include "com/OrlCom.h"
#include "host/Registration.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace orl
{

class Host;

// Makes the object of a provider's CLSID.
using ProviderLoader = std::function<HRESULT(const std::wstring& clsid, IUnknown** provider)>;

// Thread safe. A provider that is slow to load keeps only those waiting who want it.
class ProviderHost
{
public:
    ProviderHost(Host& host, ProviderLoader loader) : m_host(host), m_loader(std::move(loader)) {}

    // The provider, loaded and initialised for its namespace. What failed is tried again at the next call. Throws
    // CallFailure: WBEM_E_PROVIDER_LOAD_FAILURE, WBEM_E_INITIALIZATION_FAILURE.
    CComPtr<IWbemServices> Get(const Registration& registration, IWbemContext* context);

    // Lets all providers go.
    void ReleaseAll();

private:
    struct Slot;

    std::shared_ptr<Slot> SlotOf(const Registration& registration);
    CComPtr<IWbemServices> Load(const Registration& registration, IWbemContext* context);

    Host& m_host;
    const ProviderLoader m_loader;
    std::mutex m_mutex;
    std::map<std::pair<const Namespace*, std::wstring>, std::shared_ptr<Slot>> m_slots;
};

} // namespace orl
