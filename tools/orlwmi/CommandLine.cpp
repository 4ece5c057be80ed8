// What the client can be asked, declared once: parsing and help come from the same lines.
#include "tools/orlwmi/CommandLine.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/HelpTexts.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>

namespace orl::client
{
namespace
{

constexpr double LongestTime = 365.0 * 24 * 3600; // seconds

// The options as the parser fills them, before they are checked.
struct Raw
{
    Options options;
    std::string format;
    std::string select;
    std::vector<std::string> keys;
    std::vector<std::string> parameters;
    double timeout = 0;
    double watch = 0;
    CLI::Option* timeoutOption = nullptr;
};

const std::vector<std::pair<std::string, Format>>& FormatNames()
{
    static const std::vector<std::pair<std::string, Format>> names = {{"table", Format::Table},
                                                                      {"list", Format::List},
                                                                      {"json", Format::Json},
                                                                      {"csv", Format::Csv},
                                                                      {"mof", Format::Mof}};
    return names;
}

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

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    for (size_t begin = 0; begin <= text.size();)
    {
        const size_t end = std::min(text.find(separator, begin), text.size());
        parts.push_back(CLI::detail::trim_copy(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return parts;
}

void AddConnectionOptions(CLI::App& command, Raw& raw)
{
    command.add_option("--namespace", raw.options.nameSpace, "Namespace of the classes")
        ->type_name("NAME")
        ->capture_default_str();
    command.add_option("--server", raw.options.server, "Machine to ask, this one when not given")->type_name("NAME");
    auto* timeout = command.add_option("--timeout", raw.timeout, "Give up when the answer is not there in time")
                        ->type_name("SECONDS");
    raw.timeoutOption = timeout;
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

void Declare(CLI::App& app, Raw& raw)
{
    app.require_subcommand(1);
    app.footer(ProgramHelp);
    app.set_version_flag("--version", std::string("orlwmi ") + ORL_VERSION, "Print the version and end");
    // A path may begin with a slash, which is no option on any platform.
    app.allow_windows_style_options(false);

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
    get.add_option("PATH", raw.options.subject, "Path of the instance, or its class when --key is given")->required();
    get.add_option("--key", raw.keys, "A key of the instance; once for each key")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
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

    auto& call = AddCommand(app, raw, Command::Call, "call", "Run a method of an object", CallHelp);
    call.add_option("PATH", raw.options.subject, "Path of the instance, or of the class for a static method")
        ->required();
    call.add_option("METHOD", raw.options.method, "Name of the method")->required();
    call.add_option("PARAMETER", raw.parameters, "In-parameters of the method, as NAME=VALUE");
    AddFormat(call, raw, FormatList(true), "list");
    AddConnectionOptions(call, raw);

    auto& remove = AddCommand(app, raw, Command::Delete, "delete", "Delete instances", DeleteHelp);
    remove.add_option("PATH", raw.options.operands, "Paths of the instances")->required();
    AddConnectionOptions(remove, raw);

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

[[noreturn]] void Refuse(const std::string& message)
{
    throw Failure(ExitCode::Usage, message);
}

std::pair<std::string, std::string> ParseAssignment(const std::string& what, const std::string& text)
{
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
    {
        Refuse(what + " wants NAME=VALUE, not " + text);
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

std::vector<std::string> ParseSelect(const std::string& text)
{
    auto names = Split(text, ',');
    for (const auto& name : names)
    {
        if (name.empty() || name.find_first_of(" \t\"'*()") != std::string::npos)
        {
            Refuse("--select wants names of properties with commas between, not " + text);
        }
    }
    return names;
}

std::chrono::milliseconds ParseSeconds(const std::string& option, double seconds)
{
    if (!(seconds > 0) || seconds > LongestTime)
    {
        Refuse(option + " wants a number of seconds greater than 0 and not more than a year");
    }
    return std::chrono::milliseconds(static_cast<LONGLONG>(std::ceil(seconds * 1000)));
}

Format ParseFormat(const std::string& name)
{
    for (const auto& [known, format] : FormatNames())
    {
        if (CLI::detail::to_lower(name) == known)
        {
            return format;
        }
    }
    Refuse("--format does not know " + name);
}

// Whether the command is about one thing that must be named.
bool NeedsSubject(Command command)
{
    switch (command)
    {
    case Command::Enum:
    case Command::Get:
    case Command::Query:
    case Command::Call:
    case Command::Class:
        return true;
    default:
        return false;
    }
}

Options Checked(Raw raw, const CLI::App& command)
{
    Options options = std::move(raw.options);
    for (const auto& key : raw.keys)
    {
        options.keys.push_back(ParseAssignment("--key", key));
    }
    for (const auto& parameter : raw.parameters)
    {
        options.parameters.push_back(ParseAssignment("a parameter", parameter));
    }
    if (!raw.select.empty())
    {
        options.select = ParseSelect(raw.select);
    }
    if (command.count("--timeout") != 0)
    {
        options.timeout = ParseSeconds("--timeout", raw.timeout);
    }
    if (options.command == Command::Stats && command.count("--watch") != 0)
    {
        options.watch = ParseSeconds("--watch", raw.watch);
    }
    if (options.samples && !options.watch)
    {
        Refuse("--count goes with --watch");
    }
    if (options.samples == 0U)
    {
        Refuse("--count wants a number of samples greater than 0");
    }
    if (!raw.format.empty())
    {
        options.format = ParseFormat(raw.format);
    }
    const auto& operands = options.operands;
    if ((NeedsSubject(options.command) && options.subject.empty()) ||
        std::find(operands.begin(), operands.end(), "") != operands.end())
    {
        Refuse("the name, path or query is empty");
    }
    if (options.format == Format::Mof && !options.select.empty())
    {
        Refuse("--select does not go with --format mof: an object's text is always whole");
    }
    return options;
}

// The same complaint with a pointer to the help that is nearest to it.
[[noreturn]] void RefuseWithHint(const std::string& message, const CLI::App& app)
{
    const auto chosen = app.get_subcommands();
    const std::string command = chosen.empty() ? "" : chosen.front()->get_name() + " ";
    throw Failure(ExitCode::Usage, message, {{"Try", "orlwmi " + command + "--help"}});
}

// The first word that is no option is the command. The parser would only say that one is missing.
void CheckCommand(const CLI::App& app, const std::vector<std::string>& arguments)
{
    const auto word = std::find_if(arguments.begin(), arguments.end(),
                                   [](const std::string& argument) { return argument.compare(0, 1, "-") != 0; });
    if (word == arguments.end())
    {
        return;
    }
    const auto named = app.get_subcommands([&word](const CLI::App* command) { return command->get_name() == *word; });
    if (named.empty())
    {
        Refuse("there is no command " + *word);
    }
}

} // namespace

std::variant<Options, Help> ParseCommandLine(const std::vector<std::string>& arguments)
{
    CLI::App app("Asks WMI about the Fibre Channel over Ethernet of a machine.", "orlwmi");
    Raw raw;
    Declare(app, raw);
    try
    {
        CheckCommand(app, arguments);
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return Checked(raw, *app.get_subcommands().front());
    }
    catch (const CLI::CallForHelp&)
    {
        return Help{app.help()};
    }
    catch (const CLI::CallForVersion& version)
    {
        return Help{std::string(version.what()) + "\n"};
    }
    catch (const CLI::ParseError& error)
    {
        RefuseWithHint(error.what(), app);
    }
    catch (const Failure& failure)
    {
        RefuseWithHint(failure.what(), app);
    }
}

} // namespace orl::client
