// What is wrong with the settings of an inventory, where, and why: each message whole.

#include "Inventories.h"

#include "agentlibs/BackendError.h"
#include "winport/portable/Utf8.h"

#include <gtest/gtest.h>

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
        return ToUtf8(error.Text());
    }
    return "accepted";
}

// The settings begin at column 1 of line 2.
std::string WithSettings(const std::string& settings)
{
    return "{\"hbas\": [{\"deviceId\": \"eth0\", \"settings\": [\n" + settings + "]}]}";
}

std::string Integer(const std::string& more)
{
    return WithSettings(R"({"kind": "integer", "name": "a", "min": 0, "max": 9, )" + more + "}");
}

std::string Enumeration(const std::string& values)
{
    return WithSettings(R"({"kind": "enumeration", "name": "a", "default": 1, "values": [)" + values + "]}");
}

} // namespace

TEST(SettingErrors, NameTheFileThePlaceAndTheReason)
{
    const struct
    {
        std::string text;
        std::string error;
    } cases[] = {
        {R"({"hbas": [{"deviceId": "a", "settings": {}}]})",
         "1:41: /hbas/0/settings: expected a list, found an object"},
        {WithSettings("7"), "2:1: /hbas/0/settings/0: expected an object, found a number"},
        {WithSettings(R"({"name": "a", "min": 0})"),
         "2:1: /hbas/0/settings/0: the key \"kind\" is missing; it decides which others there may be"},
        {WithSettings(R"({"kind": "text"})"),
         "2:10: /hbas/0/settings/0/kind: \"text\" is none of enumeration, integer, other"},
        {WithSettings(R"({"kind": "other"})"), "2:1: /hbas/0/settings/0: the key \"name\" is missing"},
        {WithSettings(R"({"kind": "other", "name": ""})"), "2:27: /hbas/0/settings/0/name: the name is empty"},
        {WithSettings(R"({"kind": "other", "name": "a", "caption": ""})"),
         "2:43: /hbas/0/settings/0/caption: the caption is empty"},
        {WithSettings(R"({"kind": "other", "name": "a", "writable": 1})"),
         "2:44: /hbas/0/settings/0/writable: expected a boolean, found a number"},
        {WithSettings(R"({"kind": "other", "name": "a", "group": 65536})"),
         "2:41: /hbas/0/settings/0/group: expected a whole number from 0 to 65535, found 65536"},
        {WithSettings(R"({"kind": "other", "name": "a", "typeCode": 2})"),
         "2:44: /hbas/0/settings/0/typeCode: a setting of another kind has neither type code 0 nor 2"},
        {WithSettings(R"({"kind": "other", "name": "a", "min": 0})"),
         "2:32: /hbas/0/settings/0: unknown key \"min\"; the nearest known key is \"kind\""},
        {WithSettings("{\"kind\": \"other\", \"name\": \"Ab\"},\n{\"kind\": \"other\", \"name\": \"aB\"}"),
         "3:27: /hbas/0/settings/1/name: another setting has this name or caption, at line 2, column 27"},
        {WithSettings(
             "{\"kind\": \"other\", \"name\": \"a\", \"caption\": \"b\"},\n{\"kind\": \"other\", \"name\": \"B\"}"),
         "3:27: /hbas/0/settings/1/name: another setting has this name or caption, at line 2, column 43"},
        {WithSettings(
             "{\"kind\": \"other\", \"name\": \"a\"},\n{\"kind\": \"other\", \"name\": \"b\", \"caption\": \"A\"}"),
         "3:43: /hbas/0/settings/1/caption: another setting has this name or caption, at line 2, column 27"},
        {WithSettings(R"({"kind": "integer", "name": "a", "max": 9, "default": 1})"),
         "2:1: /hbas/0/settings/0: the key \"min\" is missing"},
        {WithSettings(R"({"kind": "integer", "name": "a", "min": 9, "default": 9})"),
         "2:1: /hbas/0/settings/0: the key \"max\" is missing"},
        {WithSettings(R"({"kind": "integer", "name": "a", "min": 1, "max": 0, "default": 1})"),
         "2:51: /hbas/0/settings/0/max: the highest value is below the lowest"},
        {WithSettings(R"({"kind": "integer", "name": "a", "min": -2147483649, "max": 0, "default": 0})"),
         "2:41: /hbas/0/settings/0/min: expected a whole number from -2147483648 to 2147483647, found -2147483649"},
        {Integer(R"("step": 0)"),
         "2:62: /hbas/0/settings/0/step: expected a whole number from 1 to 2147483647, found 0"},
        {Integer(R"("base": 8, "default": 1)"), "2:62: /hbas/0/settings/0/base: expected 10 or 16, found 8"},
        {Integer(R"("scale": 1)"), "2:1: /hbas/0/settings/0: the key \"default\" is missing"},
        {Integer(R"("default": 10)"), "2:65: /hbas/0/settings/0/default: 10 does not lie between 0 and 9"},
        {Integer(R"("default": 1.5)"), "2:65: /hbas/0/settings/0/default: expected a whole number from -2147483648 to "
                                       "2147483647, found 1.5"},
        {Integer(R"("default": "0xFFFFFFFF")"),
         "2:65: /hbas/0/settings/0/default: expected a whole number from -2147483648 to 2147483647, found "
         "\"0xFFFFFFFF\""},
        {Integer(R"("default": "-1")"), "2:65: /hbas/0/settings/0/default: expected a whole number from -2147483648 to "
                                        "2147483647, found \"-1\""},
        {Integer(R"("step": 4, "default": 4, "current": 7)"),
         "2:90: /hbas/0/settings/0/current: 7 is not 0 plus a multiple of 4"},
        {Integer(R"("default": 1, "values": [])"),
         "2:68: /hbas/0/settings/0: unknown key \"values\"; the nearest known key is \"name\""},
        {WithSettings(R"({"kind": "enumeration", "name": "a", "default": 1})"),
         "2:1: /hbas/0/settings/0: the key \"values\" is missing"},
        {Enumeration(""), "2:62: /hbas/0/settings/0/values: a setting has at least one value"},
        {Enumeration(R"({"value": 1})"), "2:63: /hbas/0/settings/0/values/0: the key \"text\" is missing"},
        {Enumeration(R"({"text": "x"})"), "2:63: /hbas/0/settings/0/values/0: the key \"value\" is missing"},
        {Enumeration(R"({"value": 1, "text": ""})"), "2:84: /hbas/0/settings/0/values/0/text: the text is empty"},
        {Enumeration(R"({"value": 1, "text": "x"}, {"value": 1, "text": "y"})"),
         "2:100: /hbas/0/settings/0/values/1/value: another choice has this value, at line 2, column 73"},
        {Enumeration(R"({"value": 1, "text": "x"}, {"value": 2, "text": "X"})"),
         "2:111: /hbas/0/settings/0/values/1/text: another choice has this text, at line 2, column 84"},
        {Enumeration(R"({"value": 2, "text": "x"})"),
         "2:49: /hbas/0/settings/0/default: 1 is none of the setting's values"},
        {R"({"generate": {"hbas": 1, "settingsPerHba": 1025}})",
         "1:44: /generate/settingsPerHba: expected a whole number from 0 to 1024, found 1025"},
        {R"({"generate": {"hbas": 10000000, "settingsPerHba": 2, "targetsPerHba": 0, "statisticsPerHba": 0}})",
         "1:14: /generate: 10000000 HBAs with 2 settings each are more than 10000000 settings"},
    };
    for (const auto& wrong : cases)
        EXPECT_EQ(ErrorOf(wrong.text), "san.json:" + wrong.error) << wrong.text;
}

} // namespace orl::test
