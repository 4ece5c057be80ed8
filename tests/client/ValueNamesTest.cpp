// What numbers stand for, and where it is shown.
#include "tools/orlwmi/ValueNames.h"

#include "tests/client/ClientRun.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orl::client;
using namespace orl::test;
using testing::ElementsAre;

namespace
{

Value List(const std::vector<std::string>& texts)
{
    Array items;
    for (const auto& text : texts)
    {
        items.emplace_back(text);
    }
    return items;
}

TEST(ValueNames, NameEachNumberAsTheQualifiersPairThem)
{
    struct Case
    {
        const char* about;
        Value valueMap;
        Value values;
        const char* number;
        const char* name;
    };
    const Case cases[] = {
        {"one of the list", List({"1", "5"}), List({"Unknown", "N_Port"}), "5", "N_Port"},
        {"none of the list", List({"1", "5"}), List({"Unknown", "N_Port"}), "2", ""},
        {"a range, its begin", List({"1", "3..5"}), List({"one", "few"}), "3", "few"},
        {"a range, its end", List({"1", "3..5"}), List({"one", "few"}), "5", "few"},
        {"past a range", List({"1", "3..5"}), List({"one", "few"}), "6", ""},
        {"open to the left", List({"..2"}), List({"low"}), "-7", "low"},
        {"open to the right", List({"6.."}), List({"high"}), "18446744073709551615", "high"},
        {"below what is open to the right", List({"6.."}), List({"high"}), "5", ""},
        {"the rest", List({"1", ".."}), List({"Error", "Advice"}), "4294967295", "Advice"},
        {"what is named is not the rest", List({"..", "1"}), List({"Advice", "Error"}), "1", "Error"},
        {"negative", List({"-1", "-5..-3"}), List({"none", "odd"}), "-4", "odd"},
        {"hexadecimal", List({"0x10"}), List({"sixteen"}), "16", "sixteen"},
        {"without a map, by place", Value(), List({"zero", "one"}), "1", "one"},
        {"without a map, past the end", Value(), List({"zero", "one"}), "2", ""},
        {"without names", List({"1"}), Value(), "1", ""},
        {"more names than numbers", List({"1"}), List({"one", "two"}), "2", ""},
        {"fewer names than numbers", List({"1", "2"}), List({"one"}), "2", ""},
        {"an entry that is no number", List({"x", "1..y", ""}), List({"a", "b", "c"}), "1", ""},
        {"a real number", List({".."}), List({"rest"}), "1.5", ""},
        {"neither qualifier", Value(), Value(), "0", ""},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(ValueMap(c.valueMap, c.values).NameOf({c.number}), c.name) << c.about;
    }
}

CComVariant Texts(const std::vector<const wchar_t*>& texts)
{
    CComVariant list;
    list.parray = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(texts.size()));
    list.vt = VT_ARRAY | VT_BSTR;
    for (size_t i = 0; i < texts.size(); ++i)
    {
        auto index = static_cast<LONG>(i);
        EXPECT_EQ(SafeArrayPutElement(list.parray, &index, CComBSTR(texts[i]).m_str), S_OK);
    }
    return list;
}

FakeContent Port(const wchar_t* name, int type)
{
    FakeContent port = Instance(L"Port", {{L"Name", CComVariant(name)}});
    port.properties.push_back({L"Type", CComVariant(type), CIM_UINT32, {}});
    port.properties.push_back({L"Speed", CComVariant(10), CIM_UINT32, {}});
    port.mof = L"instance of Port\n{\n};\n";
    return port;
}

class ClientValueNames : public testing::Test
{
protected:
    FakeServices services;

    void SetUp() override
    {
        FakeContent definition = Definition(L"Port");
        definition.properties = {{L"Name", CComVariant(), CIM_STRING, {}},
                                 {L"Type",
                                  CComVariant(),
                                  CIM_UINT32,
                                  {{L"ValueMap", Texts({L"1", L"5"})}, {L"Values", Texts({L"Unknown\n", L"N_Port"})}}},
                                 {L"Speed", CComVariant(), CIM_UINT32, {}}};
        services.OnGetObject(L"Port", Objects({definition}));
        services.OnEnumerate(L"Port", Objects({Port(L"a", 5), Port(L"b", 1), Port(L"c", 7)}));
        services.OnGetObject(L"Port.Name=\"a\"", Objects({Port(L"a", 5)}));
    }

    std::string Output(const std::vector<std::string>& arguments)
    {
        const Ran ran = RunOn(services, arguments);
        EXPECT_EQ(ran.errors, "");
        EXPECT_EQ(ran.code, ExitCode::Done);
        return ran.output;
    }
};

TEST_F(ClientValueNames, StandInTablesAfterOneLookAtTheClass)
{
    EXPECT_EQ(Output({"enum", "Port"}), "Name  Type           Speed\n"
                                        "----  -------------  -----\n"
                                        "a     5 (N_Port)        10\n"
                                        "b     1 (Unknown\\n)     10\n"
                                        "c     7                 10\n");
    EXPECT_THAT(services.Calls(), ElementsAre(L"CreateInstanceEnum(Port)", L"GetObject(Port)"));
}

TEST_F(ClientValueNames, StandInLists)
{
    EXPECT_EQ(Output({"get", "Port.Name=\"a\""}), "Name  : a\nType  : 5 (N_Port)\nSpeed : 10\n");
    EXPECT_EQ(Output({"get", "Port.Name=\"a\"", "--select", "type"}), "type : 5 (N_Port)\n");
}

TEST_F(ClientValueNames, DoNotStandWhereTheyAreNotWantedNorIsTheClassLookedAt)
{
    EXPECT_EQ(Output({"get", "Port.Name=\"a\"", "--raw"}), "Name  : a\nType  : 5\nSpeed : 10\n");
    EXPECT_EQ(Output({"get", "Port.Name=\"a\"", "--format", "csv"}), "Name,Type,Speed\r\na,5,10\r\n");
    EXPECT_EQ(Output({"get", "Port.Name=\"a\"", "--format", "json", "--select", "Type"}), "{\n  \"Type\": 5\n}\n");
    EXPECT_EQ(Output({"get", "Port.Name=\"a\"", "--format", "mof"}), "instance of Port\n{\n};\n");
    EXPECT_EQ(Output({"get", "Port.Name=\"a\"", "--select", "Name"}), "Name : a\n");
    EXPECT_EQ(services.Calls(), std::vector<std::wstring>(5, L"GetObject(Port.Name=\"a\")"));
}

TEST_F(ClientValueNames, AreLeftOutWhereTheClassCannotBeRead)
{
    services.OnGetObject(L"Port", Refusal(WBEM_E_ACCESS_DENIED));
    EXPECT_EQ(Output({"get", "Port.Name=\"a\""}), "Name  : a\nType  : 5\nSpeed : 10\n");
}

TEST_F(ClientValueNames, AreNotWaitedForBeyondTheTimeout)
{
    FakeAnswer never;
    never.never = true;
    services.OnGetObject(L"Port", never);
    EXPECT_EQ(RunOn(services, {"get", "Port.Name=\"a\"", "--timeout", "0.05"}).code, ExitCode::TimedOut);
}

} // namespace
