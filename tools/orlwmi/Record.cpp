// Looking up properties of a record.
#include "tools/orlwmi/Record.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{

const Value* Find(const Record& record, const std::string& name)
{
    const auto property = std::find_if(record.properties.begin(), record.properties.end(),
                                       [&name](const Property& p) { return SameName(p.name, name); });
    return property == record.properties.end() ? nullptr : &property->value;
}

std::string TextOf(const Record& record, const std::string& name)
{
    const auto* value = Find(record, name);
    if (value == nullptr)
    {
        return {};
    }
    if (const auto* text = std::get_if<std::string>(value))
    {
        return *text;
    }
    const auto* number = std::get_if<Number>(value);
    return number == nullptr ? std::string() : number->literal;
}

} // namespace orl::client
