// Running another program over a text. The programs are in a folder that PATH names alone.
#include "tools/orlwmi/Filter.h"

#include "tests/client/ClientRun.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>

using namespace orl::client;
using namespace orl::test;

namespace
{

// A text file's line ends are the platform's own.
std::string WithoutReturns(std::string text)
{
    std::erase(text, '\r');
    return text;
}

class ClientFilter : public testing::Test
{
protected:
    TestFolder folder;
    EnvironmentSetting path{L"PATH", std::filesystem::absolute(folder.Path()).wstring().c_str()};
    std::optional<EnvironmentSetting> behaviour;
    const Deadline forever{std::nullopt};

    // The program by this name does what TestFilter.cpp says.
    void Install(const std::string& name, const wchar_t* what)
    {
        const std::filesystem::path built = ORL_TEST_FILTER;
        std::filesystem::copy_file(built, folder / (name + built.extension().string()));
        behaviour.emplace(L"ORL_TEST_FILTER", what);
    }
};

TEST_F(ClientFilter, GivesWhatTheProgramMakesOfTheInput)
{
    Install("orltest", L"sort");
    const Filtered result = RunFilter("orltest", {}, "b\nc\na\n", forever);
    EXPECT_EQ(result.end, FilterEnd::Finished) << result.reason;
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(WithoutReturns(result.output), "arguments:\na\nb\nc\n");
}

TEST_F(ClientFilter, DoesNotBlockOnMoreThanAPipeHolds)
{
    Install("orltest", L"sort");
    std::string lines;
    for (int i = 100000; i < 200000; ++i)
    {
        lines += std::to_string(i) + "\n";
    }
    EXPECT_TRUE(WithoutReturns(RunFilter("orltest", {}, lines, forever).output) == "arguments:\n" + lines);
}

TEST_F(ClientFilter, HandsArgumentsOnAsTheyAre)
{
    Install("orltest", L"sort");
    const Filtered result = RunFilter("orltest", {"-a", "b c", "", "d\"e\\\"", "f\\", "$HOME *"}, "", forever);
    EXPECT_EQ(WithoutReturns(result.output), "arguments: [-a] [b c] [] [d\"e\\\"] [f\\] [$HOME *]\n");
}

TEST_F(ClientFilter, TellsTheExitCode)
{
    Install("orltest", L"fail");
    const Filtered result = RunFilter("orltest", {}, "x", forever);
    EXPECT_EQ(result.end, FilterEnd::Finished);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.output, "");
}

TEST_F(ClientFilter, KnowsWhenThereIsNoSuchProgram)
{
    EXPECT_EQ(RunFilter("orltest", {}, "x", forever).end, FilterEnd::NotInstalled);
}

TEST_F(ClientFilter, EndsAProgramThatTakesTooLong)
{
    Install("orltest", L"hang");
    const auto start = std::chrono::steady_clock::now();
    try
    {
        static_cast<void>(RunFilter("orltest", {}, "x", Deadline(std::chrono::milliseconds(200))));
        FAIL() << "it was waited for";
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ(failure.Code(), ExitCode::TimedOut);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

class ClientGraphDrawn : public ClientFilter
{
protected:
    FakeServices services;
};

TEST_F(ClientGraphDrawn, IsWhatDotMakesOfTheGraph)
{
    Install("dot", L"sort");
    const Ran ran = RunOn(services, {"graph", "--format", "SVG"});
    EXPECT_EQ(ran.errors, "");
    EXPECT_EQ(ran.code, ExitCode::Done);
    EXPECT_EQ(WithoutReturns(ran.output), "arguments: [-Tsvg]\n"
                                          "    node [fontname=\"sans-serif\"];\n"
                                          "    rankdir=LR;\n"
                                          "digraph FCoE {\n"
                                          "}\n");
}

TEST_F(ClientGraphDrawn, SaysThatDotIsMissingAndPrintsNothing)
{
    const Ran ran = RunOn(services, {"graph", "--format", "svg"});
    EXPECT_EQ(ran.code, ExitCode::NoOutput);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.errors, "orlwmi: cannot draw the graph: the program dot is not in a folder of PATH\n"
                          "  Try: install Graphviz, or use --format dot\n");
}

TEST_F(ClientGraphDrawn, SaysThatDotFailed)
{
    Install("dot", L"fail");
    const Ran ran = RunOn(services, {"graph", "--format", "svg"});
    EXPECT_EQ(ran.code, ExitCode::NoOutput);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.errors, "orlwmi: cannot draw the graph: dot ended with exit code 3 and drew nothing\n");
}

TEST_F(ClientGraphDrawn, NeedsNoDotForItsText)
{
    EXPECT_EQ(RunOn(services, {"graph", "--format", "dot"}).output, RunOn(services, {"graph"}).output);
}

} // namespace
