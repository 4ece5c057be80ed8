// The command line: what is understood, what is refused, what help says.
#include "tools/orlwmi/CommandLine.h"

#include "tools/orlwmi/Failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace
{

Options Parsed(const std::vector<std::string>& arguments)
{
    return std::get<Options>(ParseCommandLine(arguments));
}

std::string HelpFor(const std::vector<std::string>& arguments)
{
    return std::get<Help>(ParseCommandLine(arguments)).text;
}

TEST(CommandLine, KnowsEachCommand)
{
    struct Case
    {
        std::vector<std::string> arguments;
        Command command;
        std::string subject;
    };
    const Case cases[] = {
        {{"tree"}, Command::Tree, ""},
        {{"stats"}, Command::Stats, ""},
        {{"enum", "Zarn_FCOEHBA"}, Command::Enum, "Zarn_FCOEHBA"},
        {{"get", "Zarn_FCOEHBA.DeviceID=\"eth0.1002\""}, Command::Get, "Zarn_FCOEHBA.DeviceID=\"eth0.1002\""},
        {{"query", "SELECT * FROM A"}, Command::Query, "SELECT * FROM A"},
        {{"call", "A.B=1", "Run"}, Command::Call, "A.B=1"},
        {{"delete", "A.B=1"}, Command::Delete, ""},
        {{"class", "A"}, Command::Class, "A"},
        {{"classes"}, Command::Classes, ""},
        {{"doctor"}, Command::Doctor, ""},
    };
    for (const auto& c : cases)
    {
        const Options options = Parsed(c.arguments);
        EXPECT_EQ(options.command, c.command) << c.arguments[0];
        EXPECT_EQ(options.subject, c.subject) << c.arguments[0];
    }
}

TEST(CommandLine, HasDefaults)
{
    const Options options = Parsed({"enum", "A"});
    EXPECT_EQ(options.nameSpace, "root/KESTA");
    EXPECT_EQ(options.server, "");
    EXPECT_FALSE(options.timeout);
    EXPECT_FALSE(options.format);
    EXPECT_TRUE(options.select.empty());
    EXPECT_FALSE(options.count);
    EXPECT_FALSE(options.timing);
    EXPECT_FALSE(options.all);
}

TEST(CommandLine, TakesOptionsBeforeAndAfterTheSubject)
{
    const Options options =
        Parsed({"enum", "--format", "JSON", "--select=B, A", "Zarn_FCOEHBA", "--where", "A = 'x'", "--timeout", "1.5",
                "--timing", "--count", "--namespace", "root/cimv2", "--server", "storage7"});
    EXPECT_EQ(options.subject, "Zarn_FCOEHBA");
    EXPECT_EQ(options.format, Format::Json);
    EXPECT_THAT(options.select, ElementsAre("B", "A"));
    EXPECT_EQ(options.where, "A = 'x'");
    EXPECT_EQ(options.timeout, std::chrono::milliseconds(1500));
    EXPECT_TRUE(options.timing);
    EXPECT_TRUE(options.count);
    EXPECT_EQ(options.nameSpace, "root/cimv2");
    EXPECT_EQ(options.server, "storage7");
}

TEST(CommandLine, RoundsATimeoutUp)
{
    EXPECT_EQ(Parsed({"tree", "--timeout", "0.0001"}).timeout, std::chrono::milliseconds(1));
}

TEST(CommandLine, TakesKeysOneByOne)
{
    const Options options = Parsed({"get", "--key", "DeviceID=eth0=x", "--key=ID=", "Zarn_FCoeLUN"});
    EXPECT_EQ(options.subject, "Zarn_FCoeLUN");
    EXPECT_THAT(options.keys, ElementsAre(Pair("DeviceID", "eth0=x"), Pair("ID", "")));
}

TEST(CommandLine, TakesAPathThatBeginsWithASlash)
{
    EXPECT_EQ(Parsed({"get", "//./root/KESTA:A.B=\"c\""}).subject, "//./root/KESTA:A.B=\"c\"");
    EXPECT_EQ(Parsed({"get", R"(\\.\root\KESTA:A.B="c")"}).subject, R"(\\.\root\KESTA:A.B="c")");
}

TEST(CommandLine, KeepsBracketsAndCommasOfASubject)
{
    EXPECT_EQ(Parsed({"query", "[a,b]"}).subject, "[a,b]");
    EXPECT_EQ(Parsed({"get", "A", "--key", "B=[1,2]"}).keys[0].second, "[1,2]");
}

TEST(CommandLine, TakesAdaptersPathsAndParameters)
{
    EXPECT_THAT(Parsed({"tree", "eth0", "eth*", "--format", "json"}).operands, ElementsAre("eth0", "eth*"));
    EXPECT_THAT(Parsed({"delete", "A.B=1", "A.B=\"[c,d]\""}).operands, ElementsAre("A.B=1", "A.B=\"[c,d]\""));
    const Options call = Parsed({"call", "A.B=1", "Run", "C=[1,2]", "D=", "C=x=y", "--format", "csv"});
    EXPECT_EQ(call.method, "Run");
    EXPECT_THAT(call.parameters, ElementsAre(Pair("C", "[1,2]"), Pair("D", ""), Pair("C", "x=y")));
    const Options stats = Parsed({"stats", "eth0", "--watch", "0.5", "--count", "3", "--all"});
    EXPECT_EQ(stats.watch, std::chrono::milliseconds(500));
    EXPECT_EQ(stats.samples, 3U);
    EXPECT_TRUE(stats.all);
    EXPECT_FALSE(Parsed({"stats"}).watch);
}

TEST(CommandLine, RefusesWhatMakesNoSense)
{
    struct Case
    {
        std::vector<std::string> arguments;
        std::string message;
        std::string help;
    };
    const Case cases[] = {
        {{}, "A subcommand is required", "orlwmi --help"},
        {{"frob"}, "there is no command frob", "orlwmi --help"},
        {{"--frob"}, "A subcommand is required", "orlwmi --help"},
        {{"enum"}, "CLASS is required", "orlwmi enum --help"},
        {{"enum", ""}, "the name, path or query is empty", "orlwmi enum --help"},
        {{"enum", "A", "B"}, "The following argument was not expected: B", "orlwmi enum --help"},
        {{"enum", "A", "--frob"}, "The following argument was not expected: --frob", "orlwmi enum --help"},
        {{"enum", "A", "--format", "yaml"}, "--format: yaml not in {table,list,json,csv,mof}", "orlwmi enum --help"},
        {{"classes", "--format", "mof"}, "--format: mof not in {table,list,json,csv}", "orlwmi classes --help"},
        {{"tree", "--format", "csv"}, "--format: csv not in {json}", "orlwmi tree --help"},
        {{"tree", ""}, "the name, path or query is empty", "orlwmi tree --help"},
        {{"stats", "--format", "mof"}, "--format: mof not in {table,json,csv}", "orlwmi stats --help"},
        {{"stats", "--watch", "0"},
         "--watch wants a number of seconds greater than 0 and not more than a year",
         "orlwmi stats --help"},
        {{"stats", "--count", "3"}, "--count goes with --watch", "orlwmi stats --help"},
        {{"stats", "--watch", "1", "--count", "0"},
         "--count wants a number of samples greater than 0",
         "orlwmi stats --help"},
        {{"call", "A.B=1"}, "METHOD is required", "orlwmi call --help"},
        {{"call", "A.B=1", "Run", "C"}, "a parameter wants NAME=VALUE, not C", "orlwmi call --help"},
        {{"call", "A.B=1", "Run", "=C"}, "a parameter wants NAME=VALUE, not =C", "orlwmi call --help"},
        {{"delete"}, "PATH is required", "orlwmi delete --help"},
        {{"set"}, "ARGUMENT is required", "orlwmi set --help"},
        {{"set", "A.B=1"}, "set wants PATH NAME=VALUE..., or --hba, --setting and one VALUE", "orlwmi set --help"},
        {{"set", "A.B=1", "C"}, "a property wants NAME=VALUE, not C", "orlwmi set --help"},
        {{"set", "--hba", "a", "--setting", "b", "1", "2"},
         "set wants PATH NAME=VALUE..., or --hba, --setting and one VALUE",
         "orlwmi set --help"},
        {{"set", "--setting", "b", "1"}, "--setting requires --hba", "orlwmi set --help"},
        {{"set", "--hba", "a", "1"}, "--hba requires --setting", "orlwmi set --help"},
        {{"set", "--hba", "", "--setting", "b", "1"}, "--hba and --setting want names", "orlwmi set --help"},
        {{"reset"}, "reset wants one PATH, or --hba and --setting", "orlwmi reset --help"},
        {{"reset", "A.B=1", "C.D=1"}, "reset wants one PATH, or --hba and --setting", "orlwmi reset --help"},
        {{"reset", "A.B=1", "--hba", "a", "--setting", "b"},
         "reset wants one PATH, or --hba and --setting",
         "orlwmi reset --help"},
        {{"settings", "--format", "mof"}, "--format: mof not in {table,list,json,csv}", "orlwmi settings --help"},
        {{"delete", "A.B=1", ""}, "the name, path or query is empty", "orlwmi delete --help"},
        {{"enum", "A", "--select", "B,,C"},
         "--select wants names of properties with commas between, not B,,C",
         "orlwmi enum --help"},
        {{"enum", "A", "--select", "B C"},
         "--select wants names of properties with commas between, not B C",
         "orlwmi enum --help"},
        {{"enum", "A", "--select", "*"},
         "--select wants names of properties with commas between, not *",
         "orlwmi enum --help"},
        {{"enum", "A", "--select", "B", "--format", "mof"},
         "--select does not go with --format mof: an object's text is always whole",
         "orlwmi enum --help"},
        {{"enum", "A", "--timeout", "soon"}, "Could not convert: --timeout = soon", "orlwmi enum --help"},
        {{"enum", "A", "--timeout", "0"},
         "--timeout wants a number of seconds greater than 0 and not more than a year",
         "orlwmi enum --help"},
        {{"enum", "A", "--timeout", "nan"},
         "--timeout wants a number of seconds greater than 0 and not more than a year",
         "orlwmi enum --help"},
        {{"enum", "A", "--timeout=-1"},
         "--timeout wants a number of seconds greater than 0 and not more than a year",
         "orlwmi enum --help"},
        {{"get", "A", "--key", "B"}, "--key wants NAME=VALUE, not B", "orlwmi get --help"},
        {{"get", "A", "--key", "=B"}, "--key wants NAME=VALUE, not =B", "orlwmi get --help"},
        {{"get", "A", "--where", "B=1"}, "The following arguments were not expected: B=1 --where", "orlwmi get --help"},
    };
    for (const auto& c : cases)
    {
        const std::string shown = testing::PrintToString(c.arguments);
        try
        {
            static_cast<void>(ParseCommandLine(c.arguments));
            ADD_FAILURE() << shown;
        }
        catch (const Failure& failure)
        {
            EXPECT_EQ(failure.Lines(), "orlwmi: " + c.message + "\n  Try: " + c.help + "\n") << shown;
            EXPECT_EQ(failure.Code(), ExitCode::Usage) << shown;
        }
    }
}

TEST(CommandLine, HelpsWithExamplesForEachCommand)
{
    EXPECT_THAT(HelpFor({"--help"}), HasSubstr("Exit codes:"));
    for (const std::string command : {"tree", "stats", "enum", "get", "query", "assoc", "refs", "graph", "settings",
                                      "call", "set", "reset", "delete", "class", "classes", "doctor"})
    {
        const std::string help = HelpFor({command, "--help"});
        EXPECT_THAT(help, HasSubstr("Examples:\n  orlwmi " + command)) << command;
        EXPECT_THAT(HelpFor({"--help"}), HasSubstr("\n  " + command + " ")) << command;
    }
}

TEST(CommandLine, HelpListsEveryExitCode)
{
    for (const auto code :
         {ExitCode::Done, ExitCode::Failed, ExitCode::Usage, ExitCode::NotFound, ExitCode::TimedOut,
          ExitCode::NoConnection, ExitCode::Unhealthy, ExitCode::NoOutput, ExitCode::NotDone, ExitCode::Interrupted})
    {
        EXPECT_THAT(HelpFor({"--help"}), HasSubstr("\n  " + std::to_string(static_cast<int>(code)) + " "));
    }
}

TEST(CommandLine, TellsItsVersion)
{
    EXPECT_EQ(HelpFor({"--version"}), "orlwmi " ORL_VERSION "\n");
}

} // namespace
