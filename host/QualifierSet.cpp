// IWbemQualifierSet: the qualifiers of a class, a property or a method, to read.
#include "host/QualifierSet.h"

#include "host/CallStatus.h"
#include "host/VariantValue.h"

namespace orl
{

bool QualifierSet::IsAdmitted(const Qualifier& qualifier, LONG flags) noexcept
{
    const bool isLocal = (qualifier.flavor & WBEM_FLAVOR_MASK_ORIGIN) == WBEM_FLAVOR_ORIGIN_LOCAL;
    return !(flags == WBEM_FLAG_LOCAL_ONLY && !isLocal) && !(flags == WBEM_FLAG_PROPAGATED_ONLY && isLocal);
}

HRESULT QualifierSet::Get(LPCWSTR name, LONG, VARIANT* value, LONG* flavor)
{
    return ComCall(
        [&]() -> HRESULT
        {
            const Qualifier* found = name ? FindQualifier(m_qualifiers, name) : nullptr;
            if (!found)
                throw CallFailure(WBEM_E_NOT_FOUND,
                                  name ? L"there is no qualifier " + std::wstring(name) : L"no qualifier is named");
            if (value)
                ToVariant(found->value, m_namespace, *value);
            if (flavor)
                *flavor = found->flavor;
            return WBEM_S_NO_ERROR;
        });
}

HRESULT QualifierSet::Put(LPCWSTR, VARIANT*, LONG)
{
    return Publish({WBEM_E_NOT_SUPPORTED, L"qualifiers change in MOF files only", {}, {}, {}, {}, {}});
}

HRESULT QualifierSet::Delete(LPCWSTR)
{
    return Publish({WBEM_E_NOT_SUPPORTED, L"qualifiers change in MOF files only", {}, {}, {}, {}, {}});
}

HRESULT QualifierSet::GetNames(LONG flags, SAFEARRAY** names)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!names)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"there is no place for the names");
            std::vector<std::wstring> found;
            for (const Qualifier& qualifier : m_qualifiers)
            {
                if (IsAdmitted(qualifier, flags))
                    found.push_back(qualifier.name);
            }
            *names = MakeBstrArray(found);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT QualifierSet::BeginEnumeration(LONG flags)
{
    m_enumerated = flags;
    m_next = 0;
    return WBEM_S_NO_ERROR;
}

HRESULT QualifierSet::Next(LONG, BSTR* name, VARIANT* value, LONG* flavor)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (name)
                *name = nullptr;
            if (m_next == kNotEnumerating)
                throw CallFailure(WBEM_E_UNEXPECTED, L"Next was called before BeginEnumeration");
            while (m_next < m_qualifiers.size() && !IsAdmitted(m_qualifiers[m_next], m_enumerated))
                ++m_next;
            if (m_next >= m_qualifiers.size())
                return WBEM_S_NO_MORE_DATA;
            const Qualifier& qualifier = m_qualifiers[m_next];
            CComBSTR made;
            if (name)
                made.Attach(MakeBstr(qualifier.name));
            if (value)
                ToVariant(qualifier.value, m_namespace, *value);
            if (flavor)
                *flavor = qualifier.flavor;
            if (name)
                *name = made.Detach();
            ++m_next;
            return WBEM_S_NO_ERROR;
        });
}

HRESULT QualifierSet::EndEnumeration()
{
    m_next = kNotEnumerating;
    return WBEM_S_NO_ERROR;
}

} // namespace orl
