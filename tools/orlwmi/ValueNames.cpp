// Two lists side by side, and the ranges in them.
#include "tools/orlwmi/ValueNames.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Qualifiers.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

constexpr std::string_view Range = "..";

std::string TextAt(const Array& items, size_t index)
{
    const auto* text = index < items.size() ? std::get_if<std::string>(&items[index]) : nullptr;
    return text == nullptr ? std::string() : *text;
}

bool HasNumbers(const Value& value)
{
    const auto* items = std::get_if<Array>(&value);
    return items == nullptr ? std::holds_alternative<Number>(value)
                            : std::any_of(items->begin(), items->end(), HasNumbers);
}

void Explain(Value& value, const ValueMap& map)
{
    if (auto* number = std::get_if<Number>(&value))
    {
        number->meaning = map.NameOf(*number);
    }
    else if (auto* items = std::get_if<Array>(&value))
    {
        std::for_each(items->begin(), items->end(), [&map](Value& item) { Explain(item, map); });
    }
}

// Whether the service has answered: it would not, or could not, hand out the definition.
bool IsRefusal(const Failure& failure)
{
    return failure.Code() == ExitCode::NotFound || failure.Code() == ExitCode::Failed;
}

} // namespace

ValueMap::ValueMap(const Value& valueMap, const Value& values)
{
    const auto* names = std::get_if<Array>(&values);
    const auto* numbers = std::get_if<Array>(&valueMap);
    for (size_t i = 0; names != nullptr && i < names->size(); ++i)
    {
        Add(numbers == nullptr ? std::to_string(i) : TextAt(*numbers, i), TextAt(*names, i));
    }
}

void ValueMap::Add(std::string_view text, std::string name)
{
    if (text == Range)
    {
        m_rest = std::move(name);
        return;
    }
    const auto range = text.find(Range);
    const auto fromText = text.substr(0, range);
    const auto toText = range == std::string_view::npos ? text : text.substr(range + Range.size());
    const auto from = ParseInteger(fromText);
    const auto to = ParseInteger(toText);
    if ((from || fromText.empty()) && (to || toText.empty()) && (from || to))
    {
        m_entries.push_back({from, to, std::move(name)});
    }
}

std::string ValueMap::NameOf(const Number& number) const
{
    const auto value = ParseInteger(number.literal);
    if (!value)
    {
        return {};
    }
    const auto entry =
        std::find_if(m_entries.begin(), m_entries.end(),
                     [&value](const Entry& known)
                     { return (!known.from || *known.from <= *value) && (!known.to || *value <= *known.to); });
    return entry == m_entries.end() ? m_rest : entry->name;
}

void ValueNames::Explain(Record& record)
{
    for (auto& [name, value] : record.properties)
    {
        if (HasNumbers(value))
        {
            client::Explain(value, MapOf(record.className, name));
        }
    }
}

ValueNames::KnownClass& ValueNames::Find(const std::string& className)
{
    const auto [place, isNew] = m_classes.try_emplace(Lower(className));
    if (isNew && !className.empty())
    {
        try
        {
            place->second.definition = GetObjectAt(m_session.services, className, m_session.deadline);
        }
        catch (const Failure& failure)
        {
            // Without names the numbers are still what was asked for.
            if (!IsRefusal(failure))
            {
                throw;
            }
        }
    }
    return place->second;
}

const ValueMap& ValueNames::MapOf(const std::string& className, const std::string& property)
{
    KnownClass& known = Find(className);
    const auto [place, isNew] = known.properties.try_emplace(Lower(property));
    if (isNew && known.definition)
    {
        place->second = ValueMap(PropertyQualifier(known.definition, property, "ValueMap"),
                                 PropertyQualifier(known.definition, property, "Values"));
    }
    return place->second;
}

} // namespace orl::client
