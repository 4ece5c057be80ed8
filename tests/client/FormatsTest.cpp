// The output formats, whole.
#include "tools/orlwmi/format/ResultWriter.h"

#include "tests/client/ClientRun.h"

#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;

namespace
{

Record MakeRecord(std::vector<Property> properties, const std::string& className = "C")
{
    Record record;
    record.className = className;
    record.properties = std::move(properties);
    return record;
}

std::string Printed(Format format, const std::vector<Record>& records, Shape shape = Shape::Many)
{
    MemoryOutput output;
    const auto writer = MakeResultWriter(format, shape, output);
    for (const auto& record : records)
    {
        writer->Write(record);
    }
    writer->End();
    output.Flush();
    return output.Text();
}

Value Object(const std::string& className, std::vector<Property> properties)
{
    return std::make_shared<const Record>(MakeRecord(std::move(properties), className));
}

// One record with a value of each kind.
Record Sampler()
{
    return MakeRecord({{"Text", "say \"hi\", you\\"},
                       {"Number", Number{"18446744073709551615"}},
                       {"Flag", true},
                       {"Nothing", Value()},
                       {"Empty", ""},
                       {"List", Array{"a", Number{"1"}}},
                       {"NoItems", Array{}},
                       {"Message", Object("M", {{"Kind", Number{"1"}}, {"Message", "x\ny"}})}});
}

TEST(TableFormat, AlignsByWidthAndLeavesNoTrailingBlank)
{
    EXPECT_EQ(
        Printed(
            Format::Table,
            {MakeRecord({{"Name", "eth0"}, {"Speed", Number{"10"}}, {"State", "up"}}),
             MakeRecord({{"Name", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"}, {"Speed", Number{"1000"}}, {"State", ""}})}),
        "Name    Speed  State\n"
        "------  -----  -----\n"
        "eth0       10  up\n"
        "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E   1000\n");
}

TEST(TableFormat, ShowsEveryKindOfValueOnOneLine)
{
    EXPECT_EQ(
        Printed(Format::Table, {Sampler()}),
        "Text                          Number  Flag  Nothing  Empty  List    NoItems  Message\n"
        "--------------  --------------------  ----  -------  -----  ------  -------  ----------------------------\n"
        "say \"hi\", you\\  18446744073709551615  true  -               {a, 1}  {}       M {Kind = 1, Message = "
        "x\\ny}\n");
}

TEST(TableFormat, AlignsAColumnOfNumbersAndNullsToTheRight)
{
    EXPECT_EQ(Printed(Format::Table, {MakeRecord({{"Count", Number{"7"}}}), MakeRecord({{"Count", Value()}})}),
              "Count\n-----\n    7\n    -\n");
    EXPECT_EQ(Printed(Format::Table, {MakeRecord({{"Count", Number{"7"}}}), MakeRecord({{"Count", "many"}})}),
              "Count\n-----\n7\nmany\n");
}

TEST(TableFormat, PrintsNothingForNothing)
{
    EXPECT_EQ(Printed(Format::Table, {}), "");
}

TEST(TableFormat, BeginsATableOfItsOwnForOtherColumns)
{
    EXPECT_EQ(Printed(Format::Table, {MakeRecord({{"A", "1"}}), MakeRecord({{"B", "22"}}), MakeRecord({{"B", "3"}})}),
              "A\n-\n1\n\nB\n--\n22\n3\n");
}

TEST(TableFormat, EscapesControlCharactersOfNamesAndValues)
{
    EXPECT_EQ(Printed(Format::Table, {MakeRecord({{"A\n", "\x1B[31m"}})}), "A\\n\n--------\n\\x1B[31m\n");
}

TEST(TableFormat, StreamsAfterASampleAndLetsALongerValuePush)
{
    MemoryOutput output;
    const auto writer = MakeTableWriter(output);
    for (int i = 0; i < 499; ++i)
    {
        writer->Write(MakeRecord({{"A", "x"}, {"B", "y"}}));
    }
    output.Flush();
    EXPECT_EQ(output.Text(), "");
    writer->Write(MakeRecord({{"A", "x"}, {"B", "y"}}));
    output.Flush();
    const std::string sample = output.Text();
    EXPECT_EQ(sample.substr(0, 15), "A  B\n-  -\nx  y\n");
    EXPECT_EQ(sample.size(), 10U + 500 * 5);
    writer->Write(MakeRecord({{"A", "longer"}, {"B", "y"}}));
    output.Flush();
    EXPECT_EQ(output.Text().substr(sample.size()), "longer  y\n");
    writer->End();
    output.Flush();
    EXPECT_EQ(output.Text().substr(sample.size()), "longer  y\n");
}

TEST(ListFormat, PutsOnePropertyOnALineAndAnEmptyLineBetweenRecords)
{
    EXPECT_EQ(Printed(Format::List, {MakeRecord({{"DeviceID", "eth0"}, {"Model", ""}, {"FCID", Value()}}),
                                     MakeRecord({{"A", Number{"1"}}})}),
              "DeviceID : eth0\n"
              "Model    :\n"
              "FCID     : -\n"
              "\n"
              "A : 1\n");
}

TEST(ListFormat, EscapesControlCharacters)
{
    EXPECT_EQ(Printed(Format::List, {MakeRecord({{"A", "1\n2"}, {"\xE6\x97\xA5", "\x07"}})}),
              "A  : 1\\n2\n\xE6\x97\xA5 : \\x07\n");
}

TEST(JsonFormat, IsTyped)
{
    EXPECT_EQ(Printed(Format::Json, {Sampler()}, Shape::One), R"({
  "Text": "say \"hi\", you\\",
  "Number": 18446744073709551615,
  "Flag": true,
  "Nothing": null,
  "Empty": "",
  "List": [
    "a",
    1
  ],
  "NoItems": [],
  "Message": {
    "Kind": 1,
    "Message": "x\ny"
  }
}
)");
}

TEST(JsonFormat, IsAnArrayForAnyNumberOfRecords)
{
    EXPECT_EQ(Printed(Format::Json, {}), "[]\n");
    EXPECT_EQ(Printed(Format::Json, {MakeRecord({{"A", "1"}})}), "[\n  {\n    \"A\": \"1\"\n  }\n]\n");
    EXPECT_EQ(Printed(Format::Json, {MakeRecord({}), MakeRecord({{"A", Array{Array{Value()}}}})}),
              "[\n  {},\n  {\n    \"A\": [\n      [\n        null\n      ]\n    ]\n  }\n]\n");
}

TEST(JsonFormat, EscapesWhatJsonMustAndATerminalWouldObey)
{
    EXPECT_EQ(Printed(Format::Json, {MakeRecord({{"A", std::string("\0\x01\x1F\x7F\t\r\xC2\x9B", 8)}})}, Shape::One),
              "{\n  \"A\": \"\\u0000\\u0001\\u001F\\u007F\\t\\r\\u009B\"\n}\n");
    EXPECT_EQ(
        Printed(Format::Json, {MakeRecord({{"A", "\xE2\x80\xA8\xE2\x80\xAE\xC3\xA9\xF0\x9F\x98\x80"}})}, Shape::One),
        "{\n  \"A\": \"\\u2028\\u202E\xC3\xA9\xF0\x9F\x98\x80\"\n}\n");
}

TEST(JsonFormat, PrintsNothingForOneRecordThatNeverCame)
{
    EXPECT_EQ(Printed(Format::Json, {}, Shape::One), "");
}

TEST(CsvFormat, FollowsRfc4180)
{
    EXPECT_EQ(Printed(Format::Csv, {Sampler()}),
              "Text,Number,Flag,Nothing,Empty,List,NoItems,Message\r\n"
              "\"say \"\"hi\"\", you\\\",18446744073709551615,true,,\"\",\"[\"\"a\"\", 1]\",[],"
              "\"{\"\"Kind\"\": 1, \"\"Message\"\": \"\"x\\ny\"\"}\"\r\n");
    EXPECT_EQ(Printed(Format::Csv, {MakeRecord({{"A,B", "1\r\n2"}, {"C", Value()}})}), "\"A,B\",C\r\n\"1\r\n2\",\r\n");
}

TEST(CsvFormat, TellsNullFromTheEmptyText)
{
    EXPECT_EQ(Printed(Format::Csv, {MakeRecord({{"A", Value()}, {"B", ""}, {"C", Value()}})}), "A,B,C\r\n,\"\",\r\n");
}

TEST(CsvFormat, BeginsWithAHeaderOfItsOwnForOtherColumns)
{
    EXPECT_EQ(Printed(Format::Csv, {MakeRecord({{"A", "1"}}), MakeRecord({{"B", "2"}})}), "A\r\n1\r\n\r\nB\r\n2\r\n");
}

Record Mof(const std::string& text)
{
    Record record;
    record.mof = text;
    return record;
}

TEST(MofFormat, PrintsTheObjectsOwnTexts)
{
    EXPECT_EQ(Printed(Format::Mof, {Mof("\r\ninstance of A\r\n{\r\n\tB = 1;\r\n};\r\n"), Mof("instance of C\n{\n};")}),
              "instance of A\n{\n\tB = 1;\n};\n\ninstance of C\n{\n};\n");
    EXPECT_EQ(Printed(Format::Mof, {Mof("")}), "");
}

TEST(MofFormat, EscapesControlCharactersAsMofDoes)
{
    EXPECT_EQ(Printed(Format::Mof, {Mof("a = \"\x1B[2J\xC2\x9B\";")}), "a = \"\\x001B[2J\\x009B\";\n");
}

} // namespace
