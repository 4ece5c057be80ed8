// What is wrong with an inventory, where, and why: each message whole.

#include "Inventories.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/ObjectReader.h"
#include "agentlibs/inventory/StateFile.h"
#include "winport/portable/Utf8.h"

#include <gmock/gmock.h>

namespace orl::test
{

namespace
{

std::string ErrorOf(const std::string& text)
{
    try
    {
        ReadInventory(text);
    }
    catch (const BackendError& error)
    {
        EXPECT_EQ(error.Code(), static_cast<ULONG>(ERROR_INVALID_DATA));
        return ToUtf8(error.Text());
    }
    return "accepted";
}

struct BadInventory
{
    const char* name;
    std::string text;
    std::string error;
};

void PrintTo(const BadInventory& bad, std::ostream* out)
{
    *out << bad.name;
}

const std::string Deep = R"({"hbas":)" + std::string(16, '[') + std::string(16, ']') + "}";

const BadInventory Table[] = {
    {"Empty", "", "san.json: is empty"},
    {"Blank", " \r\n\t ", "san.json: is empty"},
    {"Utf16LittleEndian", std::string("\xFF\xFE{\0}\0", 6), "san.json: is UTF-16; an inventory is UTF-8"},
    {"Utf16BigEndian", std::string("\xFE\xFF\0{\0}", 6), "san.json: is UTF-16; an inventory is UTF-8"},
    {"NotJson", "hbas: []",
     "san.json:1:1: not JSON: syntax error while parsing value - invalid literal; last read: 'h'"},
    {"Cut", "{\n  \"hbas\": [",
     "san.json:2:12: not JSON: syntax error while parsing value - unexpected end of input; expected '[', '{', or a "
     "literal"},
    {"TrailingComma", R"({"hbas": [],})",
     "san.json:1:13: not JSON: syntax error while parsing object key - unexpected '}'; expected string literal"},
    {"TwoDocuments", "{}\n{}",
     "san.json:2:1: not JSON: syntax error while parsing value - unexpected '{'; expected end of input"},
    {"NumberBeyondAll", R"({"hbas": 1e999})", "san.json:1:14: not JSON: number overflow parsing '1e999'"},
    {"NotUtf8", "{\"description\": \"a\xC3\x28\"}",
     "san.json:1:20: not JSON: syntax error while parsing value - invalid string: ill-formed UTF-8 byte; last read: "
     "'\"a\xEF\xBF\xBD('"},
    {"ZeroByte", std::string("{\0}", 3), "san.json:1:2: not JSON: a byte of value 0"},
    {"ZeroByteBehindTheEnd", std::string("{}\n\0{", 5), "san.json:2:1: not JSON: a byte of value 0"},
    {"TooDeep", Deep, "san.json:1:24: /hbas/0/0/0/0/0/0/0/0/0/0/0/0/0/0: nested deeper than 16 levels"},
    {"RootIsList", "[]", "san.json:1:1: expected an object, found a list"},
    {"RootIsText", "\n  \"hbas\"", "san.json:2:3: expected an object, found a text"},
    {"KeyTwice", "{\"hbas\": [],\n \"hbas\": []}",
     "san.json:2:2: the key \"hbas\" stands twice in this object, first at line 1, column 2"},
    {"KeyTwiceBelow", R"({"hbas": [{"deviceId": "a"}, {"deviceId": "b", "name": "", "deviceId": "b"}]})",
     "san.json:1:60: /hbas/1: the key \"deviceId\" stands twice in this object, first at line 1, column 31"},
    {"UnknownKey", R"({"hba": []})", "san.json:1:2: unknown key \"hba\"; the nearest known key is \"hbas\""},
    {"UnknownKeyCase", "{\"hbas\": [\n{\"deviceID\": \"eth0\"}]}",
     "san.json:2:2: /hbas/0: unknown key \"deviceID\"; the nearest known key is \"deviceId\""},
    {"UnknownKeyFarOff", OneHba(R"("colour": "red")"),
     "san.json:1:32: /hbas/0: unknown key \"colour\"; the nearest known key is \"model\""},
    {"UnknownKeyDeep", OneHba(R"("targets": [{"luns": [{"id": 0}, {"lunId": 1}]}])"),
     "san.json:1:66: /hbas/0/targets/0/luns/1: unknown key \"lunId\"; the nearest known key is \"id\""},
    {"UnknownKeyUnprintable", R"({"a\nb": 1})", "san.json:1:2: unknown key \"a?b\"; the nearest known key is \"hbas\""},
    {"UnknownKeyLong", "{\"" + std::string(59, 'x') + "\xC3\xA4yy\": 1}",
     "san.json:1:2: unknown key \"" + std::string(59, 'x') + "...\"; the nearest known key is \"description\""},
    {"HbasNoList", R"({"hbas": {}})", "san.json:1:10: /hbas: expected a list, found an object"},
    {"HbaNoObject", R"({"hbas": [null]})", "san.json:1:11: /hbas/0: expected an object, found null"},
    {"DeviceIdMissing", R"({"hbas": [{"name": "x"}]})", "san.json:1:11: /hbas/0: the key \"deviceId\" is missing"},
    {"DeviceIdEmpty", R"({"hbas": [{"deviceId": ""}]})", "san.json:1:24: /hbas/0/deviceId: the device id is empty"},
    {"DeviceIdNumber", R"({"hbas": [{"deviceId": 7}]})",
     "san.json:1:24: /hbas/0/deviceId: expected a text, found a number"},
    {"DeviceIdTwice", "{\"hbas\": [{\"deviceId\": \"eth0\"},\n{\"deviceId\": \"ETH0\"}]}",
     "san.json:2:14: /hbas/1/deviceId: another HBA has this device id, at line 1, column 24"},
    {"TextBoolean", OneHba(R"("name": true)"), "san.json:1:40: /hbas/0/name: expected a text, found a boolean"},
    {"TextControl", OneHba(R"("name": "a\u0007b")"),
     "san.json:1:40: /hbas/0/name: the text holds the control character U+0007"},
    {"TextZero", OneHba(R"("name": "\u0000")"),
     "san.json:1:40: /hbas/0/name: the text holds the control character U+0000"},
    {"TextLong", OneHba(R"("name": ")" + std::string(1025, 'x') + "\""),
     "san.json:1:40: /hbas/0/name: the text is 1025 bytes long; at most 1024 are read"},
    {"ColumnsCountCharacters", OneHba("\"name\": \"\xC3\xA4\xC3\xB6\xF0\x9F\x98\x80\", \"fcid\": -1"),
     "san.json:1:55: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found -1"},
    {"NumberNegative", OneHba(R"("fcid": -1)"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found -1"},
    {"NumberTooLarge", OneHba(R"("fcid": 4294967296)"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found 4294967296"},
    {"NumberBroken", OneHba(R"("fcid": 1.5)"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found 1.5"},
    {"NumberExponent", OneHba(R"("fcid": 1e3)"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found 1e3"},
    {"NumberText", OneHba(R"("fcid": "66304")"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found \"66304\""},
    {"NumberHexEmpty", OneHba(R"("fcid": "0x")"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found \"0x\""},
    {"NumberHexTooLarge", OneHba(R"("fcid": "0x100000000")"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found \"0x100000000\""},
    {"NumberHexBad", OneHba(R"("fcid": "0x12G")"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found \"0x12G\""},
    {"NumberNull", OneHba(R"("fcid": null)"),
     "san.json:1:40: /hbas/0/fcid: expected a whole number from 0 to 4294967295, found null"},
    {"CounterTooLarge", OneHba(R"("statistics": [{"statistic": "a", "value": 18446744073709551616}])"),
     "san.json:1:75: /hbas/0/statistics/0/value: expected a whole number from 0 to 18446744073709551615, found "
     "18446744073709551616"},
    {"StatisticWithoutName", OneHba(R"("statistics": [{"value": 1}])"),
     "san.json:1:47: /hbas/0/statistics/0: the key \"statistic\" is missing"},
    {"RateNegative", OneHba(R"("statistics": [{"statistic": "a", "perSecond": -0.5}])"),
     "san.json:1:79: /hbas/0/statistics/0/perSecond: expected a number from 0 to 10000000000, found -0.5"},
    {"RateTooHigh", OneHba(R"("statistics": [{"statistic": "a", "perSecond": 1e11}])"),
     "san.json:1:79: /hbas/0/statistics/0/perSecond: expected a number from 0 to 10000000000, found 1e11"},
    {"RateText", OneHba(R"("statistics": [{"statistic": "a", "perSecond": "fast"}])"),
     "san.json:1:79: /hbas/0/statistics/0/perSecond: expected a number, found a text"},
    {"NameShort", OneHba(R"("worldWidePortName": "200052540fc0001")"),
     "san.json:1:53: /hbas/0/worldWidePortName: \"200052540fc0001\" is no world wide name: 16 hexadecimal digits, not "
     "all 0"},
    {"NameLetters", OneHba(R"("worldWidePortName": "2000525400fc00g1")"),
     "san.json:1:53: /hbas/0/worldWidePortName: \"2000525400fc00g1\" is no world wide name: 16 hexadecimal digits, not "
     "all 0"},
    {"NameColons", OneHba(R"("worldWidePortName": "20:00:52:54:00-fc:00:01")"),
     "san.json:1:53: /hbas/0/worldWidePortName: \"20:00:52:54:00-fc:00:01\" is no world wide name: 16 hexadecimal "
     "digits, not all 0"},
    {"NameZero", OneHba(R"("worldWidePortName": "0x0000000000000000")"),
     "san.json:1:53: /hbas/0/worldWidePortName: \"0x0000000000000000\" is no world wide name: 16 hexadecimal digits, "
     "not all 0"},
    {"NameNumber", OneHba(R"("worldWidePortName": 2000525400)"),
     "san.json:1:53: /hbas/0/worldWidePortName: expected a text, found a number"},
    {"GenerateNoCount", R"({"generate": {"seed": 1}})", "san.json:1:14: /generate: the key \"hbas\" is missing"},
    {"GenerateNothing", R"({"generate": {"hbas": 0}})",
     "san.json:1:23: /generate/hbas: expected a whole number from 1 to 10000000, found 0"},
    {"GenerateUnknown", R"({"generate": {"hbas": 1, "lunsPerHba": 5}})",
     "san.json:1:26: /generate: unknown key \"lunsPerHba\"; the nearest known key is \"vlansPerHba\""},
    {"GenerateTooMany", R"({"generate": {"hbas": 1000, "targetsPerHba": 100, "lunsPerTarget": 101}})",
     "san.json:1:14: /generate: 1000 HBAs with 10100 LUNs each are more than 10000000 LUNs"},
    {"GenerateTooManyByFar", R"({"generate": {"hbas": 10000000, "targetsPerHba": 65536, "lunsPerTarget": 65536}})",
     "san.json:1:14: /generate: 10000000 HBAs with 65536 targets each are more than 10000000 targets"},
    {"GenerateListed", R"({"hbas": [{"deviceId": "SIM3"}], "generate": {"hbas": 4}})",
     "san.json:1:46: /generate: an HBA that this generates has the device id \"SIM3\", which is listed at line 1, "
     "column 24"},
    {"FaultUnknownOperation", R"({"faults": [{"operation": "EnumerateHBA", "effect": "fail"}]})",
     "san.json:1:27: /faults/0/operation: \"EnumerateHBA\" is none of EnumerateHBAs, EnumerateFabrics, "
     "EnumeratePorts, EnumerateTargets, EnumerateVLANs, EnumerateLUNs, EnumerateStatistics, Uninstall, "
     "CreateVirtualPort, DeleteVirtualPort, GenerateVirtualPortWWPN, RefreshTargets, GetSetting, SetSetting, "
     "SetSettingToDefault, GetAdapter, ValidateSettingModification, EnumerateSettings, *"},
    {"FaultWithoutOperation", R"({"faults": [{"effect": "fail"}]})",
     "san.json:1:13: /faults/0: the key \"operation\" is missing"},
    {"FaultWithoutEffect", R"({"faults": [{"operation": "*"}]})",
     "san.json:1:13: /faults/0: the key \"effect\" is missing"},
    {"FaultUnknownEffect", R"({"faults": [{"operation": "*", "effect": "explode"}]})",
     "san.json:1:42: /faults/0/effect: \"explode\" is none of fail, throw, wait"},
    {"FaultCallZero", R"({"faults": [{"operation": "*", "effect": "fail", "call": 0}]})",
     "san.json:1:58: /faults/0/call: expected a whole number from 1 to 4294967295, found 0"},
    {"FaultCodeZero", R"({"faults": [{"operation": "*", "effect": "fail", "code": 0}]})",
     "san.json:1:58: /faults/0/code: expected a whole number from 1 to 4294967295, found 0"},
    {"FaultWaitsForHowLong", R"({"faults": [{"operation": "*", "effect": "wait"}]})",
     "san.json:1:13: /faults/0: the key \"milliseconds\" is missing"},
    {"FaultWaitsTooLong", R"({"faults": [{"operation": "*", "effect": "wait", "milliseconds": 600001}]})",
     "san.json:1:66: /faults/0/milliseconds: expected a whole number from 0 to 600000, found 600001"},
    {"FaultWaitsWithText", R"({"faults": [{"operation": "*", "effect": "wait", "milliseconds": 1, "text": "x"}]})",
     "san.json:1:69: /faults/0: unknown key \"text\"; the nearest known key is \"call\""},
};

class BadInventories : public testing::TestWithParam<BadInventory>
{
};

TEST_P(BadInventories, AreRefusedWithPlaceAndReason)
{
    EXPECT_EQ(ErrorOf(GetParam().text), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(Inventory, BadInventories, testing::ValuesIn(Table),
                         [](const auto& test) { return test.param.name; });

} // namespace

TEST(InventoryErrors, ThousandsOfUnknownKeysAreRefusedAtOnce)
{
    std::string text = "{";
    for (int i = 0; i < 200000; ++i)
        text += "\"key" + std::to_string(i) + "\": 0,\n";
    text += "\"hbas\": []}";
    EXPECT_EQ(ErrorOf(text), "san.json:1:2: unknown key \"key0\"; the nearest known key is \"hbas\"");
}

TEST(InventoryErrors, WhatIsAtALimitIsTaken)
{
    EXPECT_EQ(ErrorOf(OneHba("\"name\": \"" + std::string(ObjectReader::MaxTextBytes, 'x') + "\"")), "accepted");
    EXPECT_NE(ErrorOf(OneHba("\"name\": \"" + std::string(ObjectReader::MaxTextBytes + 1, 'x') + "\"")), "accepted");
    EXPECT_EQ(ErrorOf(R"({"generate": {"hbas": 10000000, "targetsPerHba": 0, "statisticsPerHba": 0}})"), "accepted");
    EXPECT_NE(ErrorOf(R"({"generate": {"hbas": 10000001, "targetsPerHba": 0, "statisticsPerHba": 0}})"), "accepted");
    // The outermost of a state file's levels are its own; what stands in a section that nobody knows is not looked at.
    const auto state = [](std::size_t depth)
    { return "{\"version\": 1, \"other\": " + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}"; };
    EXPECT_NO_THROW(StateDocument(L"san.json.state", state(JsonText::MaxDepth)));
    EXPECT_THROW(StateDocument(L"san.json.state", state(JsonText::MaxDepth + 1)), BackendError);
}

TEST(InventoryErrors, DeepNestingEndsAtTheLimitWhateverFollows)
{
    const std::string text(1000000, '[');
    EXPECT_EQ(ErrorOf(text), "san.json:1:17: /0/0/0/0/0/0/0/0/0/0/0/0/0/0/0: nested deeper than 16 levels");
}

} // namespace orl::test
