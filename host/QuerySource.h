// The properties of an object, as the WHERE of a query asks for them.
#pragma once

#include "host/ObjectBody.h"
#include "host/SystemProperties.h"
#include "wbem/Wql.h"

#include <string>
#include <vector>

namespace orl
{

class ClassDef;

// Where the properties lie that a query tests: looked up once a query, good for the class and all below it.
class TestedProperties
{
public:
    // Throws CallFailure WBEM_E_INVALID_QUERY for a name that the class has not got.
    TestedProperties(const wbem::WqlQuery& query, const ClassDef& ofClass);
    // For objects of a class that the query does not name: a property that the class lacks reads as NULL.
    static TestedProperties OfForeign(const wbem::WqlQuery& query, const ClassDef& ofClass);
    // For queries over classes, which have system properties only.
    explicit TestedProperties(const wbem::WqlQuery& query);

private:
    friend class QuerySource;

    TestedProperties() = default;

    struct Place
    {
        std::size_t index = 0;                  // of the class's property table
        const SystemProperty* system = nullptr; // instead of it
        bool isThis = false;                    // the object itself: __this
        bool isLacking = false;                 // always NULL
        std::vector<std::wstring> inside;       // names within embedded objects: Target.Name
    };

    static Place PlaceOf(const std::wstring& name, const ClassDef* ofClass);

    std::vector<Place> m_places; // by WqlProperty::index
};

// Throws CallFailure WBEM_E_INVALID_QUERY unless the class has the property; of a name with points its first part.
void NeedProperty(const ClassDef& ofClass, std::wstring_view name);
// The same for a query over classes: unless it is a system property.
void NeedSystemProperty(std::wstring_view name);

// One object.
class QuerySource final : public wbem::WqlSource
{
public:
    QuerySource(const TestedProperties& tested, const ObjectBody& body) : m_tested(tested), m_body(body) {}

    wbem::CimValue Value(const wbem::WqlProperty& property) const override;
    wbem::Truth IsA(const wbem::WqlProperty& property, std::wstring_view className) const override;

private:
    const TestedProperties& m_tested;
    const ObjectBody& m_body;
};

} // namespace orl
