// What the keywords of an association query admit, resolved against the schema.
#pragma once

#include "host/Repository.h"
#include "wbem/Wql.h"

#include <cstddef>
#include <vector>

namespace orl
{

// Of ASSOCIATORS OF and REFERENCES OF. Keeps a reference to the query.
class AssociationFilter
{
public:
    // Throws CallFailure WBEM_E_INVALID_CLASS when a keyword names a class that the namespace lacks.
    AssociationFilter(const wbem::WqlQuery& query, const ClassDef& source);

    // The association classes that may link an object of the source's class to one that is wanted.
    const std::vector<const ClassDef*>& Associations() const noexcept { return m_associations; }

    // The references of an association class: those that may hold the source, and those that may hold a result besides
    // the one that holds the source. Indexes of its property table.
    std::vector<std::size_t> SourceRoles(const ClassDef& association) const;
    std::vector<std::size_t> ResultRoles(const ClassDef& association, std::size_t sourceRole) const;

    // Whether the keywords let the role of this name hold the source, or a result.
    bool IsSourceRole(const PropertyDef& reference) const;
    bool IsResultRole(const PropertyDef& reference) const;
    // Whether the keywords let an object of this class be a result of ASSOCIATORS OF.
    bool AdmitsResult(const ClassDef& ofClass) const;

private:
    bool AdmitsAssociation(const ClassDef& ofClass) const;

    const wbem::WqlQuery& m_query;
    const ClassDef& m_source;
    const ClassDef* m_resultClass = nullptr;
    std::vector<const ClassDef*> m_associations;
};

// The class that a reference is declared to hold; null for one that may hold any, and for one that the schema lacks.
const ClassDef* ReferencedClass(const PropertyDef& reference);

} // namespace orl
