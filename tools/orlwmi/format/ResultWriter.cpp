// What the formats share.
#include "tools/orlwmi/format/ResultWriter.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

std::string Joined(const Array& items)
{
    std::string text;
    for (const auto& item : items)
    {
        text += (text.empty() ? "" : ", ") + DisplayText(item);
    }
    return "{" + text + "}";
}

std::string Joined(const Record& record)
{
    std::string text;
    for (const auto& [name, value] : record.properties)
    {
        text += (text.empty() ? "" : ", ") + Printable(name) + " = " + DisplayText(value);
    }
    return Printable(record.className) + " {" + text + "}";
}

struct Display
{
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(const Number& number) const
    {
        return number.meaning.empty() ? number.literal : number.literal + " (" + Printable(number.meaning) + ")";
    }
    std::string operator()(const std::string& text) const { return Printable(text); }
    std::string operator()(const Array& items) const { return Joined(items); }
    std::string operator()(const std::shared_ptr<const Record>& record) const { return Joined(*record); }
};

} // namespace

std::string DisplayText(const Value& value)
{
    return std::visit(Display(), static_cast<const Value::variant&>(value));
}

bool SameColumns(const std::vector<std::string>& columns, const Record& record)
{
    return std::equal(columns.begin(), columns.end(), record.properties.begin(), record.properties.end(),
                      [](const std::string& name, const Property& property) { return name == property.name; });
}

std::unique_ptr<ResultWriter> MakeResultWriter(Format format, Shape shape, Output& output)
{
    switch (format)
    {
    case Format::List:
        return MakeListWriter(output);
    case Format::Json:
        return MakeJsonWriter(output, shape);
    case Format::Csv:
        return MakeCsvWriter(output);
    case Format::Mof:
        return MakeMofWriter(output);
    case Format::Table:
        break;
    }
    return MakeTableWriter(output);
}

} // namespace orl::client
