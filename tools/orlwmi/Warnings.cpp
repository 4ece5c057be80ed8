// Messages out of embedded objects.
#include "tools/orlwmi/Warnings.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

constexpr const char* ErrorKind = "1";

const Record* MessageIn(const Value& value)
{
    const auto* record = std::get_if<std::shared_ptr<const Record>>(&value);
    return record != nullptr && SameName((*record)->className, "Zarn_WarningMessage") ? record->get() : nullptr;
}

bool HoldsWarnings(const Property& property)
{
    if (const auto* items = std::get_if<Array>(&property.value))
    {
        // An array without messages says by its name what would stand in it.
        return items->empty() ? SameName(property.name, "WarningMessages")
                              : std::all_of(items->begin(), items->end(),
                                            [](const Value& item) { return MessageIn(item) != nullptr; });
    }
    return property.value.IsNull() ? SameName(property.name, "WarningMessages") : MessageIn(property.value) != nullptr;
}

void Append(std::vector<Warning>& warnings, const Value& value)
{
    const Record* message = MessageIn(value);
    if (message == nullptr)
    {
        return;
    }
    const std::string id = TextOf(*message, "MessageID");
    warnings.push_back({TextOf(*message, "Kind") == ErrorKind, id == "0" ? "" : id, TextOf(*message, "Message")});
}

} // namespace

std::vector<Warning> WarningsIn(const Record& out)
{
    std::vector<Warning> warnings;
    for (const auto& property : out.properties)
    {
        if (const auto* items = std::get_if<Array>(&property.value))
        {
            for (const auto& item : *items)
            {
                Append(warnings, item);
            }
        }
        else
        {
            Append(warnings, property.value);
        }
    }
    return warnings;
}

Record WithoutWarnings(const Record& out)
{
    Record rest;
    rest.className = out.className;
    std::copy_if(out.properties.begin(), out.properties.end(), std::back_inserter(rest.properties),
                 [](const Property& property) { return !HoldsWarnings(property); });
    return rest;
}

std::string LineOf(const Warning& warning)
{
    return std::string(warning.isError ? "error: " : "warning: ") + Printable(warning.message) +
           (warning.id.empty() ? "" : " (message " + warning.id + ")") + "\n";
}

} // namespace orl::client
