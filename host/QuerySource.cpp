// The properties of an object, as the WHERE of a query asks for them.
#include "host/QuerySource.h"

#include "host/CallStatus.h"
#include "host/Repository.h"
#include "wbem/Text.h"

namespace orl
{
namespace
{

using wbem::CimValue;

std::vector<std::wstring> SplitAtPoints(std::wstring_view name)
{
    std::vector<std::wstring> parts;
    for (std::size_t point = name.find(L'.'); point != name.npos; point = name.find(L'.'))
    {
        parts.emplace_back(name.substr(0, point));
        name.remove_prefix(point + 1);
    }
    parts.emplace_back(name);
    return parts;
}

[[noreturn]] void RefuseName(std::wstring_view name, const std::wstring& where)
{
    throw CallFailure(WBEM_E_INVALID_QUERY, where + L" has no property " + std::wstring(name));
}

[[noreturn]] void RefuseOfClasses(std::wstring_view name)
{
    RefuseName(name, L"a query over classes knows system properties only: meta_class");
}

} // namespace

TestedProperties::Place TestedProperties::PlaceOf(const std::wstring& name, const ClassDef* ofClass)
{
    Place place;
    if (wbem::EqualNoCase(name, L"__this"))
    {
        place.isThis = true;
        return place;
    }
    place.system = FindSystemProperty(name);
    if (place.system)
        return place;
    if (!ofClass)
        RefuseOfClasses(name);
    NeedProperty(*ofClass, name);
    place.inside = SplitAtPoints(name);
    place.index = ofClass->FindProperty(place.inside.front());
    place.inside.erase(place.inside.begin());
    return place;
}

TestedProperties::TestedProperties(const wbem::WqlQuery& query, const ClassDef& ofClass)
{
    for (const std::wstring& name : query.testedProperties)
        m_places.push_back(PlaceOf(name, &ofClass));
}

TestedProperties TestedProperties::OfForeign(const wbem::WqlQuery& query, const ClassDef& ofClass)
{
    TestedProperties tested;
    for (const std::wstring& name : query.testedProperties)
    {
        const bool isLacking = !wbem::EqualNoCase(name, L"__this") && !FindSystemProperty(name) &&
                               ofClass.FindProperty(SplitAtPoints(name).front()) == ClassDef::kNotFound;
        if (isLacking)
            tested.m_places.emplace_back().isLacking = true;
        else
            tested.m_places.push_back(PlaceOf(name, &ofClass));
    }
    return tested;
}

TestedProperties::TestedProperties(const wbem::WqlQuery& query)
{
    for (const std::wstring& name : query.testedProperties)
        m_places.push_back(PlaceOf(name, nullptr));
}

void NeedProperty(const ClassDef& ofClass, std::wstring_view name)
{
    if (FindSystemProperty(name))
        return;
    const std::vector<std::wstring> parts = SplitAtPoints(name);
    const std::size_t index = ofClass.FindProperty(parts.front());
    if (index == ClassDef::kNotFound)
        RefuseName(parts.front(), L"the class " + ofClass.Name());
    if (parts.size() > 1 && ofClass.Properties()[index].Type() != wbem::CimType::Object)
        throw CallFailure(WBEM_E_INVALID_QUERY, L"the property " + parts.front() + L" of " + ofClass.Name() +
                                                    L" is no object that could have a property " + parts[1]);
}

void NeedSystemProperty(std::wstring_view name)
{
    if (!FindSystemProperty(name))
        RefuseOfClasses(name);
}

CimValue QuerySource::Value(const wbem::WqlProperty& property) const
{
    const TestedProperties::Place& place = m_tested.m_places[property.index];
    if (place.isThis || place.isLacking)
        return {};
    if (place.system)
        return place.system->value(m_body, m_body.Count());
    const CimValue* value = &m_body[place.index];
    for (const std::wstring& name : place.inside)
    {
        value = value->AsObject() ? value->AsObject()->Find(name) : nullptr;
        if (!value)
            return {};
    }
    return *value;
}

wbem::Truth QuerySource::IsA(const wbem::WqlProperty& property, std::wstring_view className) const
{
    const ClassDef* ofClass = &m_body.Class();
    if (!m_tested.m_places[property.index].isThis)
    {
        const CimValue value = Value(property);
        if (!value.AsObject())
            return wbem::Truth::Unknown;
        ofClass = ofClass->InNamespace().FindClass(value.AsObject()->className);
    }
    return ofClass && ofClass->DerivesFrom(className) ? wbem::Truth::True : wbem::Truth::False;
}

} // namespace orl
