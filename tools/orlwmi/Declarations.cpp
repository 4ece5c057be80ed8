// What the client can be asked, declared once: parsing and help come from the same lines.
#include "tools/orlwmi/Declarations.h"

#include "tools/orlwmi/HelpTexts.h"

namespace orl::client
{
namespace
{

std::vector<std::string> FormatList(bool withMof)
{
    std::vector<std::string> names;
    for (const auto& [name, format] : FormatNames())
    {
        if (withMof || format != Format::Mof)
        {
            names.push_back(name);
        }
    }
    return names;
}

void AddConnectionOptions(CLI::App& command, Raw& raw)
{
    command.add_option("--namespace", raw.options.nameSpace, "Namespace of the classes")
        ->type_name("NAME")
        ->capture_default_str();
    command.add_option("--server", raw.options.server, "Machine to ask, this one when not given")->type_name("NAME");
    command.add_option("--timeout", raw.timeout, "Give up when the answer is not there in time")->type_name("SECONDS");
    command.add_flag("--timing", raw.options.timing, "Say on standard error what took how long");
}

void AddFormat(CLI::App& command, Raw& raw, const std::vector<std::string>& formats, const std::string& preset)
{
    command.add_option("--format", raw.format, "How to print, " + preset + " when not given")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formats, CLI::ignore_case));
}

void AddSelect(CLI::App& command, Raw& raw)
{
    command.add_option("--select", raw.select, "Properties to print, in this order; __PATH and the like too")
        ->type_name("A,B,...");
}

void AddRaw(CLI::App& command, Raw& raw)
{
    command.add_flag("--raw", raw.options.raw, "Numbers alone, without what they stand for");
}

void AddAdapters(CLI::App& command, Raw& raw)
{
    command.add_option("HBA", raw.options.operands,
                       "Adapters by their DeviceID, * for any text and ? for one character; all when not given");
}

void AddCount(CLI::App& command, Raw& raw)
{
    command.add_flag("--count", raw.options.count, "Print how many there are and nothing else");
}

CLI::App& AddCommand(CLI::App& app, Raw& raw, Command command, const char* name, const char* what, const char* examples)
{
    auto* added = app.add_subcommand(name, what);
    added->footer(examples);
    added->callback([&raw, command] { raw.options.command = command; });
    return *added;
}

void AddKeys(CLI::App& command, Raw& raw)
{
    command.add_option("--key", raw.keys, "A key of the instance; once for each key")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

void AddSetting(CLI::App& command, Raw& raw)
{
    auto* hba = command.add_option("--hba", raw.options.hba, "Adapter of the setting; * and ? as in orlwmi tree");
    auto* setting =
        command.add_option("--setting", raw.options.setting, "Name of the setting, or its name for display");
    hba->type_name("HBA")->needs(setting);
    setting->type_name("NAME")->needs(hba);
}

// The object that a command is about, by its path or by its class and keys.
void AddSource(CLI::App& command, Raw& raw)
{
    command.add_option("PATH", raw.options.subject, "Path of the instance, or its class when --key is given")
        ->required();
    AddKeys(command, raw);
}

void AddResultClass(CLI::App& command, Raw& raw, const char* what)
{
    command.add_option("--result-class", raw.options.association.resultClass, what)->type_name("CLASS");
}

void AddResultOptions(CLI::App& command, Raw& raw)
{
    AddFormat(command, raw, FormatList(true), "table");
    AddSelect(command, raw);
    AddRaw(command, raw);
    AddCount(command, raw);
    AddConnectionOptions(command, raw);
}

void DeclareViews(CLI::App& app, Raw& raw)
{
    auto& tree =
        AddCommand(app, raw, Command::Tree, "tree", "Show the FCoE adapters and what belongs to them", TreeHelp);
    AddAdapters(tree, raw);
    AddFormat(tree, raw, {"json"}, "the tree");
    AddConnectionOptions(tree, raw);

    auto& stats = AddCommand(app, raw, Command::Stats, "stats", "Show the counters of the FCoE adapters", StatsHelp);
    AddAdapters(stats, raw);
    stats.add_option("--watch", raw.watch, "Show them again each so many seconds, with their rates")
        ->type_name("SECONDS");
    stats.add_option("--count", raw.options.samples, "End after so many samples")->type_name("NUMBER");
    stats.add_flag("--all", raw.options.all, "Counters that stand at 0 too");
    AddFormat(stats, raw, {"table", "json", "csv"}, "table");
    AddConnectionOptions(stats, raw);

    auto& graph =
        AddCommand(app, raw, Command::Graph, "graph", "Print the adapters as a graph for Graphviz", GraphHelp);
    AddAdapters(graph, raw);
    AddFormat(graph, raw, {"dot", "svg"}, "dot");
    AddConnectionOptions(graph, raw);

    auto& settings =
        AddCommand(app, raw, Command::Settings, "settings", "Show the settings of the adapters", SettingsHelp);
    AddAdapters(settings, raw);
    AddFormat(settings, raw, FormatList(false), "table");
    AddConnectionOptions(settings, raw);
}

void DeclareObjects(CLI::App& app, Raw& raw)
{
    auto& enumerate = AddCommand(app, raw, Command::Enum, "enum", "Print the instances of a class", EnumHelp);
    enumerate.add_option("CLASS", raw.options.subject, "Name of the class")->required();
    AddFormat(enumerate, raw, FormatList(true), "table");
    AddSelect(enumerate, raw);
    AddRaw(enumerate, raw);
    enumerate
        .add_option("--where", raw.options.where, "Only instances that meet this condition of the WMI query language")
        ->type_name("CONDITION");
    AddCount(enumerate, raw);
    AddConnectionOptions(enumerate, raw);

    auto& get = AddCommand(app, raw, Command::Get, "get", "Print one instance", GetHelp);
    AddSource(get, raw);
    AddFormat(get, raw, FormatList(true), "list");
    AddSelect(get, raw);
    AddRaw(get, raw);
    AddConnectionOptions(get, raw);

    auto& query = AddCommand(app, raw, Command::Query, "query", "Print the result of a query", QueryHelp);
    query.add_option("WQL", raw.options.subject, "The query, as one argument")->required();
    AddFormat(query, raw, FormatList(true), "table");
    AddSelect(query, raw);
    AddRaw(query, raw);
    AddCount(query, raw);
    AddConnectionOptions(query, raw);
}

void DeclareAssociations(CLI::App& app, Raw& raw)
{
    auto& assoc =
        AddCommand(app, raw, Command::Assoc, "assoc", "Print the objects that an object is associated with", AssocHelp);
    AddSource(assoc, raw);
    assoc.add_option("--assoc-class", raw.options.association.assocClass, "Only through associations of this class")
        ->type_name("CLASS");
    AddResultClass(assoc, raw, "Only objects of this class");
    assoc.add_option("--role", raw.options.association.role, "Only where the association refers to PATH by this name")
        ->type_name("NAME");
    assoc
        .add_option("--result-role", raw.options.association.resultRole,
                    "Only where the association refers to the other object by this name")
        ->type_name("NAME");
    assoc.add_flag("--keys-only", raw.options.association.keysOnly, "Keys, and no other property");
    AddResultOptions(assoc, raw);

    auto& refs =
        AddCommand(app, raw, Command::Refs, "refs", "Print the associations that refer to an object", RefsHelp);
    AddSource(refs, raw);
    AddResultClass(refs, raw, "Only associations of this class");
    refs.add_option("--role", raw.options.association.role, "Only where the association refers to PATH by this name")
        ->type_name("NAME");
    AddResultOptions(refs, raw);
}

void DeclareActions(CLI::App& app, Raw& raw)
{
    auto& call = AddCommand(app, raw, Command::Call, "call", "Run a method of an object", CallHelp);
    call.add_option("PATH", raw.options.subject, "Path of the instance, or of the class for a static method")
        ->required();
    call.add_option("METHOD", raw.options.method, "Name of the method")->required();
    call.add_option("PARAMETER", raw.parameters, "In-parameters of the method, as NAME=VALUE");
    AddFormat(call, raw, FormatList(true), "list");
    AddConnectionOptions(call, raw);

    auto& set = AddCommand(app, raw, Command::Set, "set", "Change an instance, or a setting of an adapter", SetHelp);
    set.add_option("ARGUMENT", raw.options.operands, "PATH NAME=VALUE..., or with --setting the VALUE")->required();
    AddSetting(set, raw);
    set.add_flag("--dry-run", raw.options.dryRun, "Ask whether the adapter would take the value; change nothing");
    AddConnectionOptions(set, raw);

    auto& reset = AddCommand(app, raw, Command::Reset, "reset", "Give a setting of an adapter its default", ResetHelp);
    reset.add_option("PATH", raw.options.operands, "Path of the setting, without --setting");
    AddSetting(reset, raw);
    AddConnectionOptions(reset, raw);

    auto& remove = AddCommand(app, raw, Command::Delete, "delete", "Delete instances", DeleteHelp);
    remove.add_option("PATH", raw.options.operands, "Paths of the instances")->required();
    AddConnectionOptions(remove, raw);
}

void DeclareSchema(CLI::App& app, Raw& raw)
{
    auto& definition = AddCommand(app, raw, Command::Class, "class", "Print the definition of a class", ClassHelp);
    definition.add_option("NAME", raw.options.subject, "Name of the class")->required();
    AddFormat(definition, raw, FormatList(true), "mof");
    AddConnectionOptions(definition, raw);

    auto& classes = AddCommand(app, raw, Command::Classes, "classes", "List the classes of the namespace", ClassesHelp);
    classes.add_flag("--all", raw.options.all, "System classes too");
    AddFormat(classes, raw, FormatList(false), "table");
    AddCount(classes, raw);
    AddConnectionOptions(classes, raw);

    auto& doctor =
        AddCommand(app, raw, Command::Doctor, "doctor", "Check the installation and say what to do", DoctorHelp);
    AddFormat(doctor, raw, FormatList(false), "plain lines");
    AddConnectionOptions(doctor, raw);
}

} // namespace

const std::vector<std::pair<std::string, Format>>& FormatNames()
{
    static const std::vector<std::pair<std::string, Format>> names = {{"table", Format::Table},
                                                                      {"list", Format::List},
                                                                      {"json", Format::Json},
                                                                      {"csv", Format::Csv},
                                                                      {"mof", Format::Mof}};
    return names;
}

void Declare(CLI::App& app, Raw& raw)
{
    app.require_subcommand(1);
    app.footer(ProgramHelp);
    app.set_version_flag("--version", std::string("orlwmi ") + ORL_VERSION, "Print the version and end");
    // A path may begin with a slash, which is no option on any platform.
    app.allow_windows_style_options(false);

    DeclareViews(app, raw);
    DeclareObjects(app, raw);
    DeclareAssociations(app, raw);
    DeclareActions(app, raw);
    DeclareSchema(app, raw);
}

} // namespace orl::client
