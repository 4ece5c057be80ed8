// The table of CIM types.
#include "tools/orlwmi/TypeNames.h"

#include "tools/orlwmi/Wmi.h"

#include <algorithm>
#include <iterator>

namespace orl::client
{
namespace
{

struct Named
{
    LONG type;
    const char* name;
};

constexpr Named Names[] = {
    {CIM_SINT8, "sint8"},   {CIM_UINT8, "uint8"},       {CIM_SINT16, "sint16"},   {CIM_UINT16, "uint16"},
    {CIM_SINT32, "sint32"}, {CIM_UINT32, "uint32"},     {CIM_SINT64, "sint64"},   {CIM_UINT64, "uint64"},
    {CIM_REAL32, "real32"}, {CIM_REAL64, "real64"},     {CIM_BOOLEAN, "boolean"}, {CIM_STRING, "string"},
    {CIM_CHAR16, "char16"}, {CIM_DATETIME, "datetime"}, {CIM_REFERENCE, "ref"},   {CIM_OBJECT, "object"}};

} // namespace

std::string TypeName(LONG cimType)
{
    const LONG element = cimType & ~static_cast<LONG>(CIM_FLAG_ARRAY);
    const auto* named = std::find_if(std::begin(Names), std::end(Names),
                                     [element](const Named& candidate) { return candidate.type == element; });
    const std::string name = named == std::end(Names) ? "type " + std::to_string(element) : std::string(named->name);
    return element == cimType ? name : name + "[]";
}

} // namespace orl::client
