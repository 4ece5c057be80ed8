// From arguments to checked options.
#include "tools/orlwmi/CommandLine.h"

#include "tools/orlwmi/Declarations.h"
#include "tools/orlwmi/Failure.h"

#include <algorithm>
#include <cmath>

namespace orl::client
{
namespace
{

constexpr double LongestTime = 365.0 * 24 * 3600; // seconds

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
    case Command::Assoc:
    case Command::Refs:
    case Command::Call:
    case Command::Class:
        return true;
    default:
        return false;
    }
}

// `set` and `reset` name a setting by its adapter and name, or by its path.
void CheckSettingOperands(Options& options, bool isNamed)
{
    auto& operands = options.operands;
    if (isNamed && (options.hba.empty() || options.setting.empty()))
    {
        Refuse("--hba and --setting want names");
    }
    if (options.command == Command::Reset && (operands.size() == 1) == isNamed)
    {
        Refuse("reset wants one PATH, or --hba and --setting");
    }
    if (options.command != Command::Set)
    {
        return;
    }
    if (isNamed ? operands.size() != 1 : operands.size() < 2)
    {
        Refuse("set wants PATH NAME=VALUE..., or --hba, --setting and one VALUE");
    }
    for (size_t i = 1; i < operands.size(); ++i)
    {
        options.parameters.push_back(ParseAssignment("a property", operands[i]));
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
    if (options.command == Command::Graph)
    {
        options.drawn = CLI::detail::to_lower(raw.format) == "svg";
    }
    else if (!raw.format.empty())
    {
        options.format = ParseFormat(raw.format);
    }
    const auto& operands = options.operands;
    if ((NeedsSubject(options.command) && options.subject.empty()) ||
        std::find(operands.begin(), operands.end(), "") != operands.end())
    {
        Refuse("the name, path or query is empty");
    }
    if (options.command == Command::Set || options.command == Command::Reset)
    {
        CheckSettingOperands(options, command.count("--setting") != 0);
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
