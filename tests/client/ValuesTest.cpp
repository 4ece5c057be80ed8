// VARIANTs as values: how each CIM type travels, and what an object reads as.
#include "tools/orlwmi/Objects.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Wmi.h"
#include "tools/orlwmi/format/ResultWriter.h"
#include "tests/client/FakeWmi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace orl::client;
using namespace orl::test;

namespace
{

std::string Json(const VARIANT& variant, LONG type)
{
    std::string json;
    AppendJson(json, ReadValue(variant, type), OneLine);
    return json;
}

CComVariant Of(VARTYPE type, LONGLONG bits)
{
    CComVariant value;
    value.vt = type;
    value.llVal = bits;
    return value;
}

CComVariant Text(const wchar_t* text)
{
    return CComVariant(text);
}

TEST(ClientValues, ReadsEachTypeAsItTravels)
{
    struct Case
    {
        CComVariant variant;
        LONG type;
        std::string json;
    };
    const Case cases[] = {
        {CComVariant(), CIM_STRING, "null"},
        {Of(VT_NULL, 0), CIM_UINT32, "null"},
        {Of(VT_UI1, 255), CIM_UINT8, "255"},
        {Of(VT_I2, -128), CIM_SINT8, "-128"},
        {Of(VT_I2, -2), CIM_SINT16, "-2"},
        {Of(VT_I4, 65535), CIM_UINT16, "65535"},
        {Of(VT_I4, -1), CIM_SINT32, "-1"},
        {Of(VT_I4, -1), CIM_UINT32, "4294967295"},
        {Of(VT_UI4, 4294967295LL), CIM_UINT32, "4294967295"},
        {Of(VT_UI2, 65535), CIM_UINT16, "65535"},
        {Of(VT_I1, -1), CIM_SINT8, "-1"},
        {Text(L"18446744073709551615"), CIM_UINT64, "18446744073709551615"},
        {Text(L"-9223372036854775808"), CIM_SINT64, "-9223372036854775808"},
        {Of(VT_UI8, -1), CIM_UINT64, "18446744073709551615"},
        {Of(VT_I8, -1), CIM_SINT64, "-1"},
        {Text(L"007"), CIM_UINT64, "7"},
        {Of(VT_BOOL, VARIANT_TRUE), CIM_BOOLEAN, "true"},
        {Of(VT_BOOL, VARIANT_FALSE), CIM_BOOLEAN, "false"},
        {Of(VT_I2, 0x20AC), CIM_CHAR16, "\"\xE2\x82\xAC\""},
        {CComVariant(0.1F), CIM_REAL32, "0.1"},
        {CComVariant(0.1), CIM_REAL64, "0.1"},
        {CComVariant(-2.5e300), CIM_REAL64, "-2.5e+300"},
        {CComVariant(std::numeric_limits<double>::infinity()), CIM_REAL64, "\"Infinity\""},
        {CComVariant(-std::numeric_limits<double>::infinity()), CIM_REAL64, "\"-Infinity\""},
        {CComVariant(std::nan("")), CIM_REAL64, "\"NaN\""},
        {Text(L""), CIM_STRING, "\"\""},
        {Text(L"12"), CIM_STRING, "\"12\""},
        {Text(L"20240229120000.000000+060"), CIM_DATETIME, "\"20240229120000.000000+060\""},
        {Text(L"Zarn_FCOEHBA.DeviceID=\"a\""), CIM_REFERENCE, "\"Zarn_FCOEHBA.DeviceID=\\\"a\\\"\""},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(Json(c.variant, c.type), c.json) << "VARIANT type " << c.variant.vt << ", CIM type " << c.type;
    }
}

TEST(ClientValues, KeepsATextThatIsNoNumberOf64Bits)
{
    for (const wchar_t* text : {L"", L"-", L"12x", L"1.5", L"99999999999999999999999", L"-1"})
    {
        EXPECT_EQ(ReadValue(Text(text), CIM_UINT64).index(), Value(std::string()).index()) << text;
    }
}

TEST(ClientValues, ReadsArraysElementByElement)
{
    const SAFEARRAYBOUND bound{3, 0};
    SAFEARRAY* numbers = SafeArrayCreate(VT_I4, 1, const_cast<SAFEARRAYBOUND*>(&bound));
    SAFEARRAY* texts = SafeArrayCreate(VT_BSTR, 1, const_cast<SAFEARRAYBOUND*>(&bound));
    for (LONG i = 0; i < 3; ++i)
    {
        LONG number = -i;
        ASSERT_EQ(SafeArrayPutElement(numbers, &i, &number), S_OK);
        CComBSTR text(i == 1 ? L"" : L"x");
        ASSERT_EQ(SafeArrayPutElement(texts, &i, text.m_str), S_OK);
    }
    CComVariant variant;
    variant.vt = VT_ARRAY | VT_I4;
    variant.parray = numbers;
    EXPECT_EQ(Json(variant, CIM_UINT32 | CIM_FLAG_ARRAY), "[0, 4294967295, 4294967294]");
    CComVariant other;
    other.vt = VT_ARRAY | VT_BSTR;
    other.parray = texts;
    EXPECT_EQ(Json(other, CIM_STRING | CIM_FLAG_ARRAY), "[\"x\", \"\", \"x\"]");
}

TEST(ClientValues, ReadsAnEmptyArray)
{
    CComVariant variant;
    variant.vt = VT_ARRAY | VT_BSTR;
    variant.parray = SafeArrayCreateVector(VT_BSTR, 0, 0);
    EXPECT_EQ(Json(variant, CIM_STRING | CIM_FLAG_ARRAY), "[]");
}

CComVariant ObjectVariant(FakeContent content)
{
    return CComVariant(static_cast<IUnknown*>(MakeFakeObject(std::move(content)).p));
}

TEST(ClientValues, ReadsEmbeddedObjects)
{
    const auto warning = ObjectVariant(Instance(L"Zarn_WarningMessage", {{L"Message", Text(L"no")}}));
    EXPECT_EQ(Json(warning, CIM_OBJECT), "{\"Message\": \"no\"}");
    EXPECT_EQ(DisplayText(ReadValue(warning, CIM_OBJECT)), "Zarn_WarningMessage {Message = no}");
}

TEST(ClientValues, GivesUpOnObjectsThatAreNestedWithoutEnd)
{
    FakeContent content = Instance(L"Inner", {{L"Depth", Text(L"0")}});
    for (int i = 0; i < 50; ++i)
    {
        FakeContent outer = Instance(L"Outer", {});
        outer.properties.push_back({L"In", ObjectVariant(content), CIM_OBJECT, {}});
        content = outer;
    }
    const std::string json = Json(ObjectVariant(content), CIM_OBJECT);
    EXPECT_THAT(json, testing::HasSubstr("{\"In\": \"(object)\"}"));
    EXPECT_THAT(json, testing::Not(testing::HasSubstr("Depth")));
}

TEST(ClientValues, RefusesATypeThatNothingTravelsIn)
{
    CComVariant date;
    date.vt = VT_DATE;
    date.dblVal = 1;
    try
    {
        static_cast<void>(ReadValue(date, CIM_DATETIME));
        FAIL();
    }
    catch (const Failure& failure)
    {
        EXPECT_STREQ(failure.what(), "a value has the VARIANT type 7, which no CIM type travels in");
        EXPECT_EQ(failure.Code(), ExitCode::Failed);
    }
}

TEST(ClientObjects, ReadPropertiesInTheObjectsOrder)
{
    const auto object =
        MakeFakeObject(Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(L"eth0")}, {L"Model", Text(L"")}}));
    const Record record = ReadRecord(object);
    EXPECT_EQ(record.className, "Zarn_FCOEHBA");
    ASSERT_EQ(record.properties.size(), 2U);
    EXPECT_EQ(record.properties[0].name, "DeviceID");
    EXPECT_EQ(record.properties[1].name, "Model");
    EXPECT_EQ(TextOf(record, "deviceid"), "eth0");
    EXPECT_EQ(TextOf(record, "Nothing"), "");
}

TEST(ClientObjects, ReadChosenPropertiesInTheOrderAskedFor)
{
    const auto object =
        MakeFakeObject(Instance(L"Zarn_FCOEHBA", {{L"DeviceID", Text(L"eth0")}, {L"Model", Text(L"m")}}));
    const Record record = ReadProperties(object, {"model", "__CLASS"});
    ASSERT_EQ(record.properties.size(), 2U);
    EXPECT_EQ(record.properties[0].name, "model");
    EXPECT_EQ(TextOf(record, "Model"), "m");
    EXPECT_EQ(TextOf(record, "__CLASS"), "Zarn_FCOEHBA");
}

TEST(ClientObjects, SayWhichPropertyIsMissing)
{
    const auto object = MakeFakeObject(Instance(L"Zarn_FCOEHBA", {}));
    try
    {
        static_cast<void>(ReadProperties(object, {"Colour"}));
        FAIL();
    }
    catch (const Failure& failure)
    {
        EXPECT_STREQ(failure.what(), "Zarn_FCOEHBA has no property Colour");
        EXPECT_EQ(failure.Code(), ExitCode::NotFound);
    }
}

TEST(ClientObjects, TellWhenTheyCannotBeRead)
{
    FakeContent content = Instance(L"Zarn_FCOEHBA", {});
    content.unreadable = E_FAIL;
    EXPECT_THROW(static_cast<void>(ReadRecord(MakeFakeObject(content))), Failure);
}

TEST(ClientObjects, AreClassesOrInstances)
{
    EXPECT_TRUE(IsClass(MakeFakeObject(Definition(L"Zarn_FCOEHBA"))));
    EXPECT_FALSE(IsClass(MakeFakeObject(Instance(L"Zarn_FCOEHBA", {}))));
}

} // namespace
