// settings: what can be set on the adapters, and how it stands.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/settings/Settings.h"

namespace orl::client
{
namespace
{

Value NullIfEmpty(const std::string& text)
{
    return text.empty() ? Value() : Value(text);
}

Value NumberOrNull(const std::string& literal)
{
    return literal.empty() ? Value() : Value(Number{literal});
}

Record RowOf(const Setting& setting)
{
    Record row;
    row.properties = {{"Adapter", setting.adapter},
                      {"Setting", setting.name},
                      {"Current", ValueText(setting, setting.value)},
                      {"Default", ValueText(setting, setting.defaultValue)},
                      {"Allowed", AllowedText(setting)},
                      {"Writable", setting.isWritable ? "yes" : "no"},
                      {"Name", setting.displayName}};
    return row;
}

Record ListOf(const Setting& setting)
{
    Record list = RowOf(setting);
    list.properties.push_back({"Help", NullIfEmpty(setting.help)});
    list.properties.push_back({"Description", NullIfEmpty(setting.description)});
    list.properties.push_back({"Path", setting.path});
    return list;
}

Value ChoicesOf(const Setting& setting)
{
    Array choices;
    for (const auto& [value, text] : setting.choices)
    {
        auto choice = std::make_shared<Record>();
        choice->properties = {{"Value", Number{value}}, {"Text", NullIfEmpty(text)}};
        choices.emplace_back(std::shared_ptr<const Record>(std::move(choice)));
    }
    return setting.isEnumeration ? Value(std::move(choices)) : Value();
}

// Raw values under the names that the classes have for them.
Record DataOf(const Setting& setting)
{
    Record data;
    data.properties = {{"Adapter", setting.adapter},
                       {"Setting", setting.name},
                       {"DisplayName", NullIfEmpty(setting.displayName)},
                       {"CurrentValue", NumberOrNull(setting.value)},
                       {"DisplayValue", NullIfEmpty(setting.text)},
                       {"DefaultValue", NumberOrNull(setting.defaultValue)},
                       {"Choices", ChoicesOf(setting)},
                       {"Min", NumberOrNull(setting.min)},
                       {"Max", NumberOrNull(setting.max)},
                       {"Step", NumberOrNull(setting.step)},
                       {"Base", NumberOrNull(setting.base)},
                       {"Writable", setting.isWritable},
                       {"Help", NullIfEmpty(setting.help)},
                       {"Description", NullIfEmpty(setting.description)},
                       {"Path", setting.path}};
    return data;
}

} // namespace

void RunSettings(const Options& options, Session& session)
{
    const AdapterChoice choice(options.operands, session);
    const auto settings = ReadSettings(choice, session);
    const Format format = options.format.value_or(Format::Table);
    const auto writer = MakeResultWriter(format, Shape::Many, session.output);
    for (const auto& setting : settings)
    {
        writer->Write(format == Format::Table  ? RowOf(setting)
                      : format == Format::List ? ListOf(setting)
                                               : DataOf(setting));
    }
    writer->End();
    if (settings.empty() && (format == Format::Table || format == Format::List))
    {
        session.output.Write("No setting. Whether the agents can see one: orlwmi doctor\n");
    }
}

} // namespace orl::client
