// IWbemContext: values that a client hands to providers with its calls.
#pragma once

#include "com/OrlCom.h"

#include <mutex>
#include <string>
#include <vector>

namespace orl
{

// Names compare without case and keep their order. Thread safe.
class Context : public ComObject<IWbemContext>
{
public:
    HRESULT STDMETHODCALLTYPE Clone(IWbemContext** copy) override;
    HRESULT STDMETHODCALLTYPE GetNames(LONG flags, SAFEARRAY** names) override;
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) override;
    HRESULT STDMETHODCALLTYPE Next(LONG flags, BSTR* name, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE EndEnumeration() override;
    HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR name, LONG flags, VARIANT* value) override;
    // WBEM_E_NOT_FOUND for a name that was not set.
    HRESULT STDMETHODCALLTYPE GetValue(LPCWSTR name, LONG flags, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE DeleteValue(LPCWSTR name, LONG flags) override;
    HRESULT STDMETHODCALLTYPE DeleteAll() override;

private:
    static constexpr std::size_t kNotEnumerating = static_cast<std::size_t>(-1);

    struct Named
    {
        std::wstring name;
        CComVariant value;
    };

    std::vector<Named>::iterator Find(LPCWSTR name);

    std::mutex m_mutex;
    std::vector<Named> m_values;
    std::size_t m_next = kNotEnumerating;
};

} // namespace orl
