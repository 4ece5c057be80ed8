// MOF: a standard schema's worth of files, and how long they take.
#include "Shown.h"
#include "wbem/MofReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace wbem
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t kFiles = 1500;
constexpr std::size_t kProperties = 12;
constexpr std::size_t kMethods = 3;

// One class in the manner of the large schemas: mostly descriptions, over many lines.
std::string ClassText(std::size_t number)
{
    std::ostringstream text;
    text << "// File " << number << "\n"
         << "[Version (\"2." << number % 40 << ".0\"), UMLPackagePath (\"Model::Part" << number % 17 << "\"),\n"
         << "   Description (\"A managed element of kind " << number << ". It stands for one thing that \"\n"
         << "      \"somebody administers, and says in words what that is, at some length, \"\n"
         << "      \"because that is what such texts do.\" )]\n"
         << "class Model_Element" << number;
    if (number > 0)
        text << " : Model_Element" << (number - 1) / 2;
    text << " {\n\n";
    for (std::size_t i = 0; i < kProperties; ++i)
    {
        text << "      [" << (i == 0 ? "Key, " : "") << "Description (\"Property number " << i
             << " of the element, \"\n"
             << "          \"with a sentence or two on what its values mean.\\n\"\n"
             << "          \"And on \\\"units\\\".\" ),\n"
             << "       ValueMap { \"0\", \"1\", \"2\", \"3..65535\" }, \n"
             << "       Values { \"Unknown\", \"Other\", \"OK\", \"Reserved\" },\n"
             << "       MappingStrings { \"MIF.Group|Part." << i << "\" }]\n"
             << "   " << (i % 3 == 0 ? "uint16" : "string") << " Property" << i << (i % 4 == 3 ? "[]" : "") << ";\n\n";
    }
    for (std::size_t i = 0; i < kMethods; ++i)
    {
        text << "      [Description (\"Requests something.\" ), ValueMap { \"0\", \"1\" }, Values { \"Done\", "
                "\"Failed\" }]\n"
             << "   uint32 Method" << i << "(\n"
             << "         [IN, Description (\"What is asked.\" )]\n"
             << "      uint16 Request, \n"
             << "         [IN ( false ), OUT, Description (\"What came of it.\" )]\n"
             << "      Model_Element0 REF Job, \n"
             << "         [IN]\n"
             << "      datetime Timeout);\n\n";
    }
    text << "};\n";
    return text.str();
}

TEST(MofSchema, AStandardSchemaOfFifteenHundredFilesIsReadInSeconds)
{
    const fs::path folder = fs::path(ORL_TEST_TMP) / "mof-schema";
    fs::remove_all(folder);
    fs::create_directories(folder / "Core");
    std::ofstream root(folder / "schema.mof");
    root << "#pragma locale (\"en_US\")\n"
         << "Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);\n";
    std::size_t lines = 0;
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < kFiles; ++i)
    {
        const std::string name = "Core/Model_Element" + std::to_string(i) + ".mof";
        const std::string text = ClassText(i);
        lines += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
        bytes += text.size();
        std::ofstream(folder / name, std::ios::binary) << text;
        root << "#pragma include (\"" << name << "\")\n";
    }
    root.close();
    ASSERT_GE(lines / kFiles, 100u) << "files of a realistic size";

    const auto start = std::chrono::steady_clock::now();
    const auto result = ReadMofFile(folder / "schema.mof");
    const auto time = std::chrono::steady_clock::now() - start;
    ASSERT_TRUE(result) << Utf8(result.Error().Text());
    EXPECT_EQ(result->declarations.size(), kFiles + 2);
    EXPECT_EQ(result->files.size(), kFiles + 1);
    const auto& last = std::get<MofClass>(result->declarations.back());
    EXPECT_EQ(last.properties.size(), kProperties);
    EXPECT_EQ(last.methods.size(), kMethods);
    EXPECT_LT(time, std::chrono::milliseconds(2500) * ORL_TEST_SLOWDOWN);
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
    RecordProperty("milliseconds", static_cast<int>(milliseconds));
    std::cout << kFiles << " files, " << lines << " lines, " << bytes / 1024 << " KiB in " << milliseconds << " ms\n";
    fs::remove_all(folder);
}

} // namespace
} // namespace wbem
