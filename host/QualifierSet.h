// IWbemQualifierSet: the qualifiers of a class, a property or a method, to read.
#pragma once

#include "com/OrlCom.h"
#include "host/Qualifiers.h"

#include <vector>

namespace orl
{

class Namespace;

// A copy of what held when it was asked for. Qualifiers change in MOF files only: Put and Delete answer
// WBEM_E_NOT_SUPPORTED. One set belongs to one thread at a time.
class QualifierSet : public ComObject<IWbemQualifierSet>
{
public:
    QualifierSet(std::vector<Qualifier> qualifiers, const Namespace& nameSpace)
        : m_qualifiers(std::move(qualifiers)), m_namespace(nameSpace)
    {
    }

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, LONG* flavor) override;
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, VARIANT* value, LONG flavor) override;
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR name) override;
    // Flags 0, WBEM_FLAG_LOCAL_ONLY or WBEM_FLAG_PROPAGATED_ONLY, here and in BeginEnumeration.
    HRESULT STDMETHODCALLTYPE GetNames(LONG flags, SAFEARRAY** names) override;
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG flags) override;
    HRESULT STDMETHODCALLTYPE Next(LONG flags, BSTR* name, VARIANT* value, LONG* flavor) override;
    HRESULT STDMETHODCALLTYPE EndEnumeration() override;

private:
    static constexpr std::size_t kNotEnumerating = static_cast<std::size_t>(-1);

    static bool IsAdmitted(const Qualifier& qualifier, LONG flags) noexcept;

    std::vector<Qualifier> m_qualifiers;
    const Namespace& m_namespace;
    std::size_t m_next = kNotEnumerating;
    LONG m_enumerated = 0;
};

} // namespace orl
