// What the keywords of an association query admit.
#include "host/AssociationFilter.h"

#include "host/EnumRequests.h"
#include "host/Qualifiers.h"
#include "wbem/Text.h"

#include <algorithm>

namespace orl
{
namespace
{

bool IsReference(const PropertyDef& property)
{
    return property.Type() == wbem::CimType::Reference && !property.IsArray();
}

// Whether objects of both classes may be the same one: either derives from the other.
bool Meet(const ClassDef& one, const ClassDef& other)
{
    return one.DerivesFrom(other) || other.DerivesFrom(one);
}

bool MayHold(const PropertyDef& reference, const ClassDef& ofClass)
{
    if (reference.declaration->type.className.empty())
        return true;
    const ClassDef* declared = ReferencedClass(reference);
    return declared && Meet(*declared, ofClass);
}

bool IsNamed(const std::wstring& wanted, const std::wstring& name)
{
    return wanted.empty() || wbem::EqualNoCase(wanted, name);
}

bool HasQualifier(const ClassDef& ofClass, const std::wstring& name)
{
    return name.empty() || FindClassQualifier(ofClass, name) != nullptr;
}

} // namespace

const ClassDef* ReferencedClass(const PropertyDef& reference)
{
    return reference.declaredBy->InNamespace().FindClass(reference.declaration->type.className);
}

AssociationFilter::AssociationFilter(const wbem::WqlQuery& query, const ClassDef& source)
    : m_query(query), m_source(source)
{
    const Namespace& nameSpace = source.InNamespace();
    const bool isReferences = query.kind == wbem::WqlKind::References;
    // The result of REFERENCES OF is the association itself.
    const std::wstring& association = isReferences ? query.resultClass : query.assocClass;
    const ClassDef* top = association.empty() ? nullptr : &NeedClass(nameSpace, association);
    if (!isReferences && !query.resultClass.empty())
        m_resultClass = &NeedClass(nameSpace, query.resultClass);
    for (const auto& each : nameSpace.Classes())
    {
        if (each->IsAssociation() && (!top || each->DerivesFrom(*top)) && AdmitsAssociation(*each))
            m_associations.push_back(each.get());
    }
}

bool AssociationFilter::AdmitsAssociation(const ClassDef& ofClass) const
{
    const bool isReferences = m_query.kind == wbem::WqlKind::References;
    if (!HasQualifier(ofClass, isReferences ? m_query.requiredQualifier : m_query.requiredAssocQualifier))
        return false;
    const std::vector<std::size_t> roles = SourceRoles(ofClass);
    if (isReferences)
        return !roles.empty();
    return std::any_of(roles.begin(), roles.end(),
                       [&](std::size_t role) { return !ResultRoles(ofClass, role).empty(); });
}

std::vector<std::size_t> AssociationFilter::SourceRoles(const ClassDef& association) const
{
    std::vector<std::size_t> roles;
    for (std::size_t i = 0; i < association.Properties().size(); ++i)
    {
        const PropertyDef& property = association.Properties()[i];
        if (IsReference(property) && IsSourceRole(property) && MayHold(property, m_source))
            roles.push_back(i);
    }
    return roles;
}

std::vector<std::size_t> AssociationFilter::ResultRoles(const ClassDef& association, std::size_t sourceRole) const
{
    std::vector<std::size_t> roles;
    for (std::size_t i = 0; i < association.Properties().size(); ++i)
    {
        const PropertyDef& property = association.Properties()[i];
        if (i != sourceRole && IsReference(property) && IsResultRole(property) &&
            (!m_resultClass || MayHold(property, *m_resultClass)))
            roles.push_back(i);
    }
    return roles;
}

bool AssociationFilter::IsSourceRole(const PropertyDef& reference) const
{
    return IsNamed(m_query.role, reference.Name());
}

bool AssociationFilter::IsResultRole(const PropertyDef& reference) const
{
    return IsNamed(m_query.resultRole, reference.Name());
}

bool AssociationFilter::AdmitsResult(const ClassDef& ofClass) const
{
    return (!m_resultClass || ofClass.DerivesFrom(*m_resultClass)) && HasQualifier(ofClass, m_query.requiredQualifier);
}

} // namespace orl
