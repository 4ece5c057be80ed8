// WHERE over the objects of a class: which of them a client gets, whatever types their properties have.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

#include <algorithm>

namespace orl::test
{
namespace
{

using Texts = std::vector<std::wstring>;

// "full" has every value, "empty" none but its key, "odd" the ends of some types.
constexpr const wchar_t* kThingMof = LR"(
#pragma namespace("\\\\.\\root\\KESTA")

class Test_Part { string Material; uint64 Mass; };
class Test_Thing
{
    [key] string Name;
    sint8 S8; uint8 U8; sint16 S16; uint16 U16; sint32 S32; uint32 U32; sint64 S64; uint64 U64;
    real32 R32; real64 R64; boolean Yes; char16 Letter; string Text; datetime Moment;
    string Texts[]; uint64 Numbers[]; Test_Part Part; Test_Thing ref Other;
};
class Test_Gadget : Test_Thing { string Maker; };

instance of Test_Thing { Name = "empty"; };
instance of Test_Thing
{
    Name = "full";
    S8 = -5; U8 = 5; S16 = -500; U16 = 500; S32 = -50000; U32 = 50000;
    S64 = 9007199254740993; U64 = 9007199254740993;
    R32 = 0.5; R64 = 2.5; Yes = TRUE; Letter = 88; Text = "Eth0.1002"; Moment = "20260101120000.000000+060";
    Texts = { "a", "b" }; Numbers = { 1, 2 };
    Part = instance of Test_Part { Material = "Silk"; Mass = 18446744073709551615; };
    Other = "Test_Thing.Name=\"odd\"";
};
instance of Test_Gadget
{
    Name = "odd";
    S8 = -128; U8 = 255; S64 = -9223372036854775808; U64 = 18446744073709551615; R64 = -1e300; Yes = FALSE;
    Text = ""; Texts = { }; Part = instance of Test_Part { }; Maker = "Nobody";
};
)";

class Where : public HostTest
{
protected:
    Where() { Use(kThingMof); }

    // The names of what the query finds, sorted, or the code that it fails with.
    Texts Find(const std::wstring& where, const wchar_t* ofClass = L"Test_Thing")
    {
        const std::wstring query = std::wstring(L"SELECT * FROM ") + ofClass + L" WHERE " + where;
        CComPtr<IEnumWbemClassObject> found;
        const HRESULT code = Service().ExecQuery(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, &found);
        if (FAILED(code))
            return {HexText(code)};
        HRESULT end = WBEM_E_FAILED;
        Texts names = Drain(found, L"Name", &end);
        EXPECT_EQ(HexText(WBEM_S_FALSE), HexText(end));
        std::sort(names.begin(), names.end());
        return names;
    }
};

struct WhereRow
{
    const wchar_t* where;
    Texts found;
};

TEST_F(Where, AnUnknownIsNeitherAdmittedNorExcludedByNot)
{
    const WhereRow rows[] = {
        {L"U8 = 5", {L"full"}},
        {L"U8 <> 5", {L"odd"}},
        {L"NOT U8 = 5", {L"odd"}},
        {L"NOT U8 <> 5", {L"full"}},
        {L"U8 = 5 OR NOT U8 = 5", {L"full", L"odd"}},
        {L"U8 IS NULL", {L"empty"}},
        {L"U8 = NULL", {L"empty"}},
        {L"NULL = U8", {L"empty"}},
        {L"U8 IS NOT NULL", {L"full", L"odd"}},
        {L"NOT U8 IS NULL", {L"full", L"odd"}},
        {L"U8 <> NULL", {L"full", L"odd"}},
        {L"U8 = 5 OR U8 IS NULL", {L"empty", L"full"}},
        {L"NOT (U8 = 5 OR S8 = 5)", {L"odd"}},
        {L"NOT (U8 = 5 AND Name = 'full')", {L"empty", L"odd"}},
        {L"U16 = U16", {L"full"}},
        {L"U16 = U32", {}},
        {L"U16 <> U32", {L"full"}},
        {L"NOT U16 = U32", {L"full"}},
        {L"S16 > 0 OR Name = 'empty'", {L"empty"}},
        {L"S16 > 0 AND Name = 'empty'", {}},
        {L"NOT (S16 > 0 AND Name = 'empty')", {L"full", L"odd"}},
        {L"Text = ''", {L"odd"}},
        {L"Text <> ''", {L"full"}},
        {L"Text LIKE '%'", {L"full", L"odd"}},
        {L"Text NOT LIKE '%x%'", {L"full", L"odd"}},
        {L"NOT Text LIKE 'eth%'", {L"odd"}},
        {L"Texts IS NULL", {L"empty"}},
        {L"Texts IS NOT NULL", {L"full", L"odd"}},
        {L"Texts = 'a' OR NOT Texts = 'a'", {}},
        {L"Part IS NULL", {L"empty"}},
        {L"Part.Material IS NULL", {L"empty", L"odd"}},
        {L"Part.Material = 'SILK'", {L"full"}},
        {L"NOT Part.Material = 'wool'", {L"full"}},
    };
    for (const WhereRow& row : rows)
        EXPECT_EQ(Find(row.where), row.found) << ::testing::PrintToString(row.where);
}

TEST_F(Where, NumbersOfEveryTypeCompareByValue)
{
    const WhereRow rows[] = {
        {L"S8 = -5 AND U8 = 5 AND S16 = -500 AND U16 = 500 AND S32 = -50000 AND U32 = 50000", {L"full"}},
        {L"S8 = -128 AND U8 = 0xFF", {L"odd"}},
        {L"S8 < U8", {L"full", L"odd"}},
        {L"U8 > -1", {L"full", L"odd"}},
        {L"U16 < '1000'", {L"full"}},
        {L"U64 = 9007199254740993", {L"full"}},
        {L"U64 = 9007199254740992", {}},
        {L"U64 > 9007199254740992", {L"full", L"odd"}},
        {L"U64 > '9007199254740993'", {L"odd"}},
        {L"U64 = '18446744073709551615'", {L"odd"}},
        {L"U64 = 0xFFFFFFFFFFFFFFFF", {L"odd"}},
        {L"U64 < 18446744073709551616.0", {L"full", L"odd"}},
        {L"U64 > '9'", {L"full", L"odd"}},
        {L"U64 < S64", {}},
        {L"U64 = S64", {L"full"}},
        {L"S64 < 0", {L"odd"}},
        {L"S64 = '-9223372036854775808'", {L"odd"}},
        {L"S64 = '-0x8000000000000000'", {L"odd"}},
        {L"S64 >= -9223372036854775807", {L"full"}},
        {L"S64 = 9007199254740992", {}},
        {L"Part.Mass = 18446744073709551615", {L"full"}},
        {L"Part.Mass > 18446744073709551614", {L"full"}},
        {L"R32 = 0.5 AND R64 = 2.5 AND R64 > 2", {L"full"}},
        {L"R64 < -1e299", {L"odd"}},
        {L"U64 = 'many' OR NOT U64 = 'many'", {}},
        {L"U64 = '18446744073709551616' OR NOT U64 = '18446744073709551616'", {}},
        {L"Numbers = 1 OR Numbers <> 1", {}},
        {L"Yes = TRUE", {L"full"}},
        {L"Yes = 0", {L"odd"}},
        {L"Yes <> 'FALSE'", {L"full"}},
        {L"Letter = 'x'", {L"full"}},
    };
    for (const WhereRow& row : rows)
        EXPECT_EQ(Find(row.where), row.found) << ::testing::PrintToString(row.where);
}

TEST_F(Where, NamesAndTextsHaveNoCase)
{
    const WhereRow rows[] = {
        {L"NAME = 'FULL'", {L"full"}},
        {L"name = 'Full' and TEXT = 'ETH0.1002' AND part.MATERIAL = 'silk'", {L"full"}},
        {L"text LIKE 'ETH_.[0-9]%'", {L"full"}},
        {L"text like 'eth[^0].%'", {}},
        {L"__class = 'TEST_GADGET'", {L"odd"}},
        {L"__RelPath = 'test_thing.name=\"FULL\"'", {L"full"}},
        {L"__THIS isa 'TEST_gadget'", {L"odd"}},
        {L"__this ISA Test_Thing", {L"empty", L"full", L"odd"}},
        {L"Part isa 'test_PART'", {L"full", L"odd"}},
        {L"Other = \"TEST_THING='ODD'\"", {L"full"}},
        {L"Other = '\\\\\\\\.\\root\\kesta:test_thing.NAME=\"odd\"'", {L"full"}},
        {L"Moment = '20260101110000.000000+000'", {L"full"}},
        {L"Moment < '20260101110000.000001+000'", {L"full"}},
    };
    for (const WhereRow& row : rows)
    {
        EXPECT_EQ(Find(row.where), row.found) << ::testing::PrintToString(row.where);
        EXPECT_EQ(Find(row.where, L"TEST_THING"), row.found) << ::testing::PrintToString(row.where);
    }
    EXPECT_EQ(Find(L"NAME = 'FULL'", L"test_gadget"), Texts{});
}

TEST_F(Where, WhatTheClassHasNotIsToldByName)
{
    const struct
    {
        const wchar_t* where;
        const wchar_t* ofClass;
        HRESULT code;
        const wchar_t* description;
    } rows[] = {
        {L"Colour = 'red'", L"Test_Thing", WBEM_E_INVALID_QUERY, L"the class Test_Thing has no property Colour"},
        {L"Name = 'x' OR Colour IS NULL", L"test_thing", WBEM_E_INVALID_QUERY,
         L"the class Test_Thing has no property Colour"},
        {L"NOT (Name = 'x' AND U8 < Colour)", L"Test_Thing", WBEM_E_INVALID_QUERY,
         L"the class Test_Thing has no property Colour"},
        {L"Maker = 'x'", L"Test_Thing", WBEM_E_INVALID_QUERY, L"the class Test_Thing has no property Maker"},
        {L"__NAMES = 'x'", L"Test_Thing", WBEM_E_INVALID_QUERY, L"the class Test_Thing has no property __NAMES"},
        {L"Colour.Depth = 1", L"Test_Thing", WBEM_E_INVALID_QUERY, L"the class Test_Thing has no property Colour"},
        {L"Texts.Count = 1", L"Test_Thing", WBEM_E_INVALID_QUERY,
         L"the property Texts of Test_Thing is no object that could have a property Count"},
        {L"Name = 'x'", L"Test_Nothing", WBEM_E_INVALID_CLASS, L"there is no class Test_Nothing in root\\KESTA"},
        {L"Colour = 'x'", L"Test_Nothing", WBEM_E_INVALID_CLASS, L"there is no class Test_Nothing in root\\KESTA"},
    };
    for (const auto& row : rows)
    {
        EXPECT_EQ(Find(row.where, row.ofClass), Texts{HexText(row.code)}) << ::testing::PrintToString(row.where);
        const Told told = TakeTold();
        EXPECT_EQ(told.description, row.description);
        EXPECT_EQ(told.code, HexText(row.code));
        EXPECT_EQ(told.parameter, std::wstring(L"SELECT * FROM ") + row.ofClass + L" WHERE " + row.where);
    }
    EXPECT_EQ(Find(L"Maker = 'NOBODY'", L"Test_Gadget"), Texts{L"odd"});
}

} // namespace
} // namespace orl::test
