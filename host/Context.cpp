// IWbemContext: values that a client hands to providers with its calls.
#include "host/Context.h"

#include "host/CallStatus.h"
#include "host/VariantValue.h"
#include "wbem/Text.h"

#include <algorithm>

namespace orl
{
namespace
{

void NeedArguments(bool areThere)
{
    if (!areThere)
        throw CallFailure(WBEM_E_INVALID_PARAMETER, L"an argument is missing");
}

void Copy(VARIANT& from, VARIANT& to)
{
    VariantInit(&to);
    if (FAILED(VariantCopy(&to, &from)))
        throw std::bad_alloc();
}

} // namespace

std::vector<Context::Named>::iterator Context::Find(LPCWSTR name)
{
    return std::find_if(m_values.begin(), m_values.end(),
                        [&](const Named& each) { return wbem::EqualNoCase(each.name, name); });
}

HRESULT Context::Clone(IWbemContext** copy)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedArguments(copy);
            CComPtr<Context> made = MakeObject<Context>();
            const std::lock_guard lock(m_mutex);
            made->m_values = m_values;
            *copy = made.Detach();
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Context::GetNames(LONG, SAFEARRAY** names)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedArguments(names);
            const std::lock_guard lock(m_mutex);
            std::vector<std::wstring> found;
            for (const Named& each : m_values)
                found.push_back(each.name);
            *names = MakeBstrArray(found);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Context::BeginEnumeration(LONG)
{
    const std::lock_guard lock(m_mutex);
    m_next = 0;
    return WBEM_S_NO_ERROR;
}

HRESULT Context::Next(LONG, BSTR* name, VARIANT* value)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedArguments(name && value);
            *name = nullptr;
            const std::lock_guard lock(m_mutex);
            if (m_next == kNotEnumerating)
                throw CallFailure(WBEM_E_UNEXPECTED, L"Next was called before BeginEnumeration");
            if (m_next >= m_values.size())
                return WBEM_S_NO_MORE_DATA;
            CComBSTR made;
            made.Attach(MakeBstr(m_values[m_next].name));
            Copy(m_values[m_next].value, *value);
            *name = made.Detach();
            ++m_next;
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Context::EndEnumeration()
{
    const std::lock_guard lock(m_mutex);
    m_next = kNotEnumerating;
    return WBEM_S_NO_ERROR;
}

HRESULT Context::SetValue(LPCWSTR name, LONG, VARIANT* value)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedArguments(name && value);
            CComVariant copy(*value);
            const std::lock_guard lock(m_mutex);
            const auto found = Find(name);
            if (found == m_values.end())
                m_values.push_back({name, copy});
            else
                found->value = copy;
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Context::GetValue(LPCWSTR name, LONG, VARIANT* value)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedArguments(name && value);
            VariantInit(value);
            const std::lock_guard lock(m_mutex);
            const auto found = Find(name);
            if (found == m_values.end())
                return WBEM_E_NOT_FOUND; // asked for by every provider: no failure to report
            Copy(found->value, *value);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Context::DeleteValue(LPCWSTR name, LONG)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedArguments(name);
            const std::lock_guard lock(m_mutex);
            const auto found = Find(name);
            if (found == m_values.end())
                throw CallFailure(WBEM_E_NOT_FOUND, L"the context has no value " + std::wstring(name));
            m_values.erase(found);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT Context::DeleteAll()
{
    const std::lock_guard lock(m_mutex);
    m_values.clear();
    return WBEM_S_NO_ERROR;
}

} // namespace orl
