// ClassCache: the class definitions of one connection, each asked of the service once.
#pragma once

#include "framework/include/CWomContext.h"
#include "wbem/Text.h"

#include <cstddef>
#include <mutex>

namespace orl
{

// The service hands a definition to a provider afresh for each connection, so what a connection has seen stays true for
// it. Safe for calls from any thread.
class ClassCache final : public ClassSource
{
public:
    // Far more than one provider serves; a client cannot make it grow without end.
    static constexpr std::size_t Capacity = 256;

    explicit ClassCache(IWbemServices* services) : m_services(services) {}

    // A failure is not remembered: the class may be there at the next request.
    HRESULT LoadClass(const CComBSTR& className, IWbemContext* clientContext,
                      CComPtr<IWbemClassObject>& definition) override;

private:
    bool Find(std::wstring_view name, CComPtr<IWbemClassObject>& definition);
    void Remember(std::wstring_view name, const CComPtr<IWbemClassObject>& definition);

    CComPtr<IWbemServices> m_services;
    std::mutex m_lock;
    wbem::NameMap<CComPtr<IWbemClassObject>> m_definitions;
};

} // namespace orl
