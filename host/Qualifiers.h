// Qualifiers as they hold for one class, property or method: its own and those that it inherits.
#pragma once

#include "host/ClassDef.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

struct Qualifier
{
    std::wstring name;
    wbem::CimValue value;
    std::int32_t flavor = 0; // WBEM_FLAVOR_TYPE
};

// Own ones first, then what passes down, nearest class first; an own one hides an inherited one of its name. A property
// has CIMTYPE besides. Qualifiers pass down unless their flavor, or the flavor that the schema declares for them, says
// Restricted or ToInstance only.
std::vector<Qualifier> ClassQualifiers(const ClassDef& ofClass);
std::vector<Qualifier> PropertyQualifiers(const ClassDef& ofClass, const PropertyDef& property);
std::vector<Qualifier> MethodQualifiers(const ClassDef& ofClass, const MethodDef& method);

// What an instance shows of its class's, or its property's, qualifiers: those with the flavor ToInstance.
std::vector<Qualifier> ForInstance(std::vector<Qualifier> qualifiers);

// Null when there is none of that name.
const Qualifier* FindQualifier(const std::vector<Qualifier>& qualifiers, std::wstring_view name) noexcept;
// The qualifier is there and is neither FALSE nor null.
bool IsTrue(const wbem::MofQualifier* qualifier) noexcept;

// The value of a qualifier that holds for the class, without making the whole list; null when it has none.
const wbem::CimValue* FindClassQualifier(const ClassDef& ofClass, std::wstring_view name) noexcept;

} // namespace orl
