// FakeWbemServices: a service that knows the class definitions a test gives it. FakeContext: what a client sends along.
#pragma once

#include "framework/com/RefusingServices.h"
#include "tests/support/FakeClassObject.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace orl::test
{

// Only class definitions can be had, by name without case. Safe for calls from any thread once it is filled.
class FakeWbemServices final : public RefusingServices<>
{
public:
    void Add(FakeClassPtr definition) { m_classes.push_back(std::move(definition)); }
    // Every name that was asked for, in order, also those that are unknown.
    std::vector<std::wstring> Lookups() const;

    // Whether names are kept; a test of many lookups has no use for them.
    bool keepsLookups = true;
    // Asked before every lookup: a failure is the answer.
    std::function<HRESULT(const std::wstring& className)> before;

    HRESULT STDMETHODCALLTYPE GetObject(const BSTR path, LONG flags, IWbemContext* context, IWbemClassObject** object,
                                        IWbemCallResult** result) override;

private:
    std::vector<FakeClassPtr> m_classes;
    mutable std::mutex m_lock;
    std::vector<std::wstring> m_lookups;
};

// Named values, found without case.
class FakeContext final : public ComObject<IWbemContext>
{
public:
    HRESULT STDMETHODCALLTYPE SetValue(LPCWSTR name, LONG flags, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE GetValue(LPCWSTR name, LONG flags, VARIANT* value) override;

    HRESULT STDMETHODCALLTYPE Clone(IWbemContext**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LONG, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteValue(LPCWSTR, LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteAll() override { return E_NOTIMPL; }

private:
    std::vector<std::pair<std::wstring, CComVariant>> m_values;
};

} // namespace orl::test
