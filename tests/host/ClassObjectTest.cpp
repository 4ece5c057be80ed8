// IWbemClassObject: properties, names, copies and texts.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"
#include "host/ClassObject.h"
#include "host/ObjectNames.h"

#include <limits>

namespace orl::test
{
namespace
{

class HostObject : public HostTest
{
protected:
    HRESULT Put(IWbemClassObject* object, const wchar_t* name, CComVariant value, CIMTYPE type = 0)
    {
        return object->Put(name, 0, &value, type);
    }
    std::vector<std::wstring> Names(IWbemClassObject* object, LONG flags, const wchar_t* qualifier = nullptr,
                                    VARIANT* value = nullptr)
    {
        SAFEARRAY* names = nullptr;
        EXPECT_EQ(WBEM_S_NO_ERROR, object->GetNames(qualifier, flags, value, &names));
        return NamesIn(names);
    }
    std::vector<std::wstring> Enumerated(IWbemClassObject* object, LONG flags)
    {
        std::vector<std::wstring> names;
        EXPECT_EQ(WBEM_S_NO_ERROR, object->BeginEnumeration(flags));
        CComBSTR name;
        while (object->Next(0, &name, nullptr, nullptr, nullptr) == WBEM_S_NO_ERROR)
        {
            names.push_back(TextOf(name));
            name.Empty();
        }
        EXPECT_EQ(WBEM_S_NO_MORE_DATA, object->Next(0, &name, nullptr, nullptr, nullptr));
        EXPECT_EQ(WBEM_S_NO_ERROR, object->EndEnumeration());
        return names;
    }
};

// A value that is put, and what a get then answers: its type, and its text or the failure's reason.
struct PutCase
{
    const char* what;
    const wchar_t* property;
    CComVariant put;
    VARTYPE type;
    const wchar_t* shown;
};

void PrintTo(const PutCase& putCase, std::ostream* stream)
{
    *stream << putCase.what;
}

constexpr const wchar_t* kTypesMof = LR"(
class T
{
    sint8 S8; uint8 U8; sint16 S16; uint16 U16; sint32 S32; uint32 U32; sint64 S64; uint64 U64;
    real32 R32; real64 R64; boolean B; string S; datetime D; char16 C; T ref R; uint16 A[]; string SA[];
};)";

class HostObjectTypes : public HostObject, public ::testing::WithParamInterface<PutCase>
{
};

TEST_P(HostObjectTypes, TakesTheValueOrSaysWhyNot)
{
    Use(kTypesMof);
    const CComPtr<IWbemClassObject> object = Spawn(L"T");
    const PutCase& given = GetParam();
    const HRESULT code = Put(object, given.property, given.put);
    CComVariant value;
    EXPECT_EQ(WBEM_S_NO_ERROR, object->Get(given.property, 0, &value, nullptr, nullptr));
    if (given.type == VT_ERROR)
    {
        EXPECT_EQ(HexText(WBEM_E_TYPE_MISMATCH), HexText(code));
        EXPECT_EQ(given.shown, TakeTold().description);
        EXPECT_EQ(VT_NULL, value.vt);
        return;
    }
    EXPECT_EQ(HexText(WBEM_S_NO_ERROR), HexText(code)) << TakeTold();
    EXPECT_EQ(given.type, value.vt);
    EXPECT_EQ(given.shown, Shown(value));
}

INSTANTIATE_TEST_SUITE_P(
    All, HostObjectTypes,
    ::testing::Values(
        PutCase{"the smallest sint8", L"S8", short{-128}, VT_I2, L"-128"},
        PutCase{"too small for sint8", L"S8", short{-129}, VT_ERROR,
                L"the property S8 of T is sint8: -129 does not fit sint8"},
        PutCase{"the largest uint8", L"U8", BYTE{255}, VT_UI1, L"255"},
        PutCase{"too large for uint8", L"U8", 300, VT_ERROR, L"the property U8 of T is uint8: 300 does not fit uint8"},
        PutCase{"negative for uint8", L"U8", -1, VT_ERROR, L"the property U8 of T is uint8: -1 does not fit uint8"},
        PutCase{"sint16", L"S16", -32768, VT_I2, L"-32768"}, PutCase{"uint16 as VT_I4", L"U16", 65535, VT_I4, L"65535"},
        PutCase{"negative for uint16", L"U16", -1, VT_ERROR,
                L"the property U16 of T is uint16: -1 does not fit uint16"},
        PutCase{"sint32", L"S32", std::numeric_limits<int>::min(), VT_I4, L"-2147483648"},
        PutCase{"the bits of a large uint32", L"U32", -1, VT_I4, L"-1"},
        PutCase{"uint32 as VT_UI4, as script clients send it", L"U32", 4294967295u, VT_I4, L"-1"},
        PutCase{"uint32 as VT_UI8", L"U32", 7ull, VT_I4, L"7"},
        PutCase{"too large for uint32", L"U32", 4294967296ull, VT_ERROR,
                L"the property U32 of T is uint32: 4294967296 does not fit uint32"},
        PutCase{"uint32 as an integral double", L"U32", 12.0, VT_I4, L"12"},
        PutCase{"sint64 as text", L"S64", L"-9223372036854775808", VT_BSTR, L"-9223372036854775808"},
        PutCase{"sint64 as VT_I8", L"S64", -5ll, VT_BSTR, L"-5"},
        PutCase{"the largest uint64 as text", L"U64", L"18446744073709551615", VT_BSTR, L"18446744073709551615"},
        PutCase{"the largest uint64 as VT_UI8", L"U64", 18446744073709551615ull, VT_BSTR, L"18446744073709551615"},
        PutCase{"real32", L"R32", 1.5f, VT_R4, L"1.500000"},
        PutCase{"real64 of an integer", L"R64", 2, VT_R8, L"2.000000"},
        PutCase{"boolean", L"B", true, VT_BOOL, L"TRUE"}, PutCase{"string", L"S", L"text", VT_BSTR, L"text"},
        PutCase{"empty string", L"S", L"", VT_BSTR, L""},
        PutCase{"datetime", L"D", L"20240229123456.000000+060", VT_BSTR, L"20240229123456.000000+060"},
        PutCase{"char16", L"C", short{65}, VT_I2, L"65"},
        PutCase{"reference", L"R", L"T.X=\"1\"", VT_BSTR, L"T.X=\"1\""},
        PutCase{"one value for an array", L"A", 7, VT_ARRAY | VT_I4, L"{7}"},
        PutCase{"null", L"U32", CComVariant(), VT_NULL, L"NULL"}));

TEST_F(HostObject, AValueOfAnotherKindIsRefusedAndTheOldOneStays)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(lamp, L"Watts", 5));
    EXPECT_EQ(WBEM_E_TYPE_MISMATCH, Put(lamp, L"watts", L"bright"));
    const std::wstring told = TakeTold().description;
    EXPECT_TRUE(told.starts_with(L"the property Watts of Test_Lamp is uint32: ")) << ::testing::PrintToString(told);
    EXPECT_EQ(L"5", Show(lamp, L"WATTS"));
    EXPECT_EQ(WBEM_E_TYPE_MISMATCH, Put(lamp, L"Name", 5));
    EXPECT_EQ(WBEM_E_TYPE_MISMATCH, Put(lamp, L"Installed", L"yesterday"));
    EXPECT_EQ(L"NULL", Show(lamp, L"Installed"));
}

TEST_F(HostObject, ATypeThatIsPutWithAValueMustBeThePropertys)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    EXPECT_EQ(WBEM_S_NO_ERROR, Put(lamp, L"Watts", 5, CIM_UINT32));
    EXPECT_EQ(WBEM_E_TYPE_MISMATCH, Put(lamp, L"Watts", 5, CIM_SINT32));
    EXPECT_EQ(L"the property Watts of Test_Lamp is uint32: it was put as type 3", TakeTold().description);
}

TEST_F(HostObject, AnUnknownPropertyIsNotFoundAndNamed)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    EXPECT_EQ(WBEM_E_NOT_FOUND, Put(lamp, L"Volts", 5));
    EXPECT_EQ((Told{L"0x80041002", L"the class Test_Lamp has no property Volts", L"", L"", L""}), TakeTold());
    CComVariant value;
    EXPECT_EQ(WBEM_E_NOT_FOUND, lamp->Get(L"Volts", 0, &value, nullptr, nullptr));
    EXPECT_EQ(L"the class Test_Lamp has no property Volts", TakeTold().description);
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, lamp->Get(nullptr, 0, &value, nullptr, nullptr));
}

TEST_F(HostObject, ArraysComeFromTheirOwnTypeAndFromVariants)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 1, 2);
    for (LONG i = 1; i <= 2; ++i)
    {
        CComVariant text(i == 1 ? L"red" : L"green");
        ASSERT_EQ(S_OK, SafeArrayPutElement(array, &i, &text));
    }
    CComVariant value;
    value.vt = VT_ARRAY | VT_VARIANT;
    value.parray = array;
    EXPECT_EQ(WBEM_S_NO_ERROR, Put(lamp, L"Colors", value)) << TakeTold();
    EXPECT_EQ(L"{red, green}", Show(lamp, L"Colors"));
    CComVariant back;
    ASSERT_EQ(S_OK, lamp->Get(L"Colors", 0, &back, nullptr, nullptr));
    EXPECT_EQ(VT_ARRAY | VT_BSTR, back.vt);
    EXPECT_EQ(WBEM_S_NO_ERROR, Put(lamp, L"Colors", back));
    EXPECT_EQ(L"{red, green}", Show(lamp, L"Colors"));
    EXPECT_EQ(WBEM_E_TYPE_MISMATCH, Put(lamp, L"Name", back));
    EXPECT_EQ(L"the property Name of Test_Lamp is string: an array is no single string", TakeTold().description);
}

TEST_F(HostObject, VariantsByReferenceAreLookedThrough)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    CComBSTR name(L"desk");
    VARIANT inner;
    VariantInit(&inner);
    inner.vt = VT_BSTR | VT_BYREF;
    inner.byref = &name.m_str;
    EXPECT_EQ(WBEM_S_NO_ERROR, lamp->Put(L"Name", 0, &inner, 0)) << TakeTold();
    VARIANT number;
    VariantInit(&number);
    number.vt = VT_I4;
    number.lVal = 40;
    VARIANT outer;
    VariantInit(&outer);
    outer.vt = VT_VARIANT | VT_BYREF;
    outer.byref = &number;
    EXPECT_EQ(WBEM_S_NO_ERROR, lamp->Put(L"Watts", 0, &outer, 0)) << TakeTold();
    EXPECT_EQ(L"desk", Show(lamp, L"Name"));
    EXPECT_EQ(L"40", Show(lamp, L"Watts"));
}

TEST_F(HostObject, EmbeddedObjectsAreCopiesOfTheirClass)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    const CComPtr<IWbemClassObject> shade = Spawn(L"Test_Shade");
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(shade, L"Material", L"silk"));
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(lamp, L"Shade", CComVariant(static_cast<IUnknown*>(shade.p)))) << TakeTold();
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(shade, L"Material", L"paper"));
    EXPECT_EQ(L"Test_Shade{Material=silk, Layers=NULL}", Show(lamp, L"Shade"));

    CComVariant first;
    ASSERT_EQ(S_OK, lamp->Get(L"Shade", 0, &first, nullptr, nullptr));
    const CComQIPtr<IWbemClassObject> taken(first.punkVal);
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(taken, L"Layers", 2));
    EXPECT_EQ(L"Test_Shade{Material=silk, Layers=NULL}", Show(lamp, L"Shade"));

    EXPECT_EQ(WBEM_E_TYPE_MISMATCH, Put(lamp, L"Shade", CComVariant(static_cast<IUnknown*>(Spawn(L"Test_Room").p))));
    EXPECT_EQ(L"the property Shade of Test_Lamp takes objects of Test_Shade, not of Test_Room", TakeTold().description);
}

TEST_F(HostObject, GetAnswersTypeAndOrigin)
{
    const CComPtr<IWbemClassObject> bulb = Spawn(L"Test_Bulb");
    const auto typeOf = [&](const wchar_t* name)
    {
        CIMTYPE type = 0;
        LONG flavor = 0;
        EXPECT_EQ(WBEM_S_NO_ERROR, bulb->Get(name, 0, nullptr, &type, &flavor));
        return std::pair<LONG, LONG>(type, flavor);
    };
    using Answer = std::pair<LONG, LONG>;
    EXPECT_EQ((Answer{CIM_STRING, WBEM_FLAVOR_ORIGIN_LOCAL}), typeOf(L"Socket"));
    EXPECT_EQ((Answer{CIM_STRING, WBEM_FLAVOR_ORIGIN_PROPAGATED}), typeOf(L"Name"));
    EXPECT_EQ((Answer{CIM_STRING | CIM_FLAG_ARRAY, WBEM_FLAVOR_ORIGIN_PROPAGATED}), typeOf(L"Colors"));
    EXPECT_EQ((Answer{CIM_REFERENCE, WBEM_FLAVOR_ORIGIN_PROPAGATED}), typeOf(L"Room"));
    EXPECT_EQ((Answer{CIM_OBJECT, WBEM_FLAVOR_ORIGIN_PROPAGATED}), typeOf(L"Shade"));
    EXPECT_EQ((Answer{CIM_STRING | CIM_FLAG_ARRAY, WBEM_FLAVOR_ORIGIN_SYSTEM}), typeOf(L"__DERIVATION"));
    CComBSTR origin;
    EXPECT_EQ(WBEM_S_NO_ERROR, bulb->GetPropertyOrigin(L"watts", &origin));
    EXPECT_EQ(L"Test_Lamp", TextOf(origin));
}

TEST_F(HostObject, SystemPropertiesOfAnInstance)
{
    const CComPtr<IWbemClassObject> bulb = Spawn(L"Test_Bulb");
    EXPECT_EQ(L"NULL", Show(bulb, L"__RELPATH"));
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(bulb, L"Name", L"a \"b\" \\c"));
    EXPECT_EQ(L"2", Show(bulb, L"__GENUS"));
    EXPECT_EQ(L"Test_Bulb", Show(bulb, L"__CLASS"));
    EXPECT_EQ(L"Test_Lamp", Show(bulb, L"__superclass"));
    EXPECT_EQ(L"Test_Lamp", Show(bulb, L"__DYNASTY"));
    EXPECT_EQ(L"Test_Bulb.Name=\"a \\\"b\\\" \\\\c\"", Show(bulb, L"__RELPATH"));
    EXPECT_EQ(L"11", Show(bulb, L"__PROPERTY_COUNT"));
    EXPECT_EQ(L"{Test_Lamp}", Show(bulb, L"__DERIVATION"));
    EXPECT_EQ(ServerName(), Show(bulb, L"__SERVER"));
    EXPECT_EQ(L"root\\KESTA", Show(bulb, L"__NAMESPACE"));
    const std::wstring path = Show(bulb, L"__PATH");
    EXPECT_EQ(L"\\\\" + ServerName() + L"\\root\\KESTA:Test_Bulb.Name=\"a \\\"b\\\" \\\\c\"", path);
    const auto parsed = wbem::ObjectPath::Parse(path);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(L"a \"b\" \\c", parsed->keys.front().value.AsText());
    EXPECT_EQ(WBEM_E_SYSTEM_PROPERTY, Put(bulb, L"__CLASS", L"X"));
    EXPECT_EQ(L"<0x80041002>", Show(bulb, L"__NOTHING"));
}

TEST_F(HostObject, HasNoPathThatNobodyCouldRead)
{
    const CComPtr<IWbemClassObject> bulb = Spawn(L"Test_Bulb");
    CComVariant null;
    null.vt = VT_BSTR;
    null.bstrVal = OrlAllocBstr(L"a\0b", 3);
    ASSERT_EQ(WBEM_S_NO_ERROR, bulb->Put(L"Name", 0, &null, 0));
    EXPECT_EQ(L"NULL", Show(bulb, L"__RELPATH"));
    EXPECT_EQ(L"NULL", Show(bulb, L"__PATH"));

    const std::wstring around = L"Test_Bulb.Name=\"\"";
    std::wstring name(wbem::kMaxPathLength - around.size(), L'n');
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(bulb, L"Name", name.c_str()));
    const std::wstring longest = Show(bulb, L"__RELPATH");
    EXPECT_EQ(wbem::kMaxPathLength, longest.size());
    EXPECT_TRUE(wbem::ObjectPath::Parse(longest));
    EXPECT_EQ(L"NULL", Show(bulb, L"__PATH")) << "with the server and the namespace it is too long";
    ASSERT_EQ(WBEM_S_NO_ERROR, Put(bulb, L"Name", (name + L"n").c_str()));
    EXPECT_EQ(L"NULL", Show(bulb, L"__RELPATH"));
}

TEST_F(HostObject, SystemPropertiesOfAClass)
{
    const CComPtr<IWbemClassObject> lamp = GetClass(L"test_lamp");
    EXPECT_EQ(L"1", Show(lamp, L"__GENUS"));
    EXPECT_EQ(L"NULL", Show(lamp, L"__SUPERCLASS"));
    EXPECT_EQ(L"{}", Show(lamp, L"__DERIVATION"));
    EXPECT_EQ(L"Test_Lamp", Show(lamp, L"__RELPATH"));
    EXPECT_EQ(L"\\\\" + ServerName() + L"\\root\\KESTA:Test_Lamp", Show(lamp, L"__PATH"));
}

TEST_F(HostObject, KeysStandInThePathInTheOrderOfTheClassAndNumbersBare)
{
    const CComPtr<IWbemClassObject> room = Spawn(L"Test_Room");
    Put(room, L"Floor", 7);
    Put(room, L"Name", L"Study");
    EXPECT_EQ(L"Test_Room.Name=\"Study\",Floor=7", Show(room, L"__RELPATH"));
    EXPECT_EQ(L"NULL", Show(Spawn(L"Test_Shade"), L"__PATH"));
}

TEST_F(HostObject, EnumerationYieldsTheClassesPropertiesWithoutSystemOnes)
{
    const CComPtr<IWbemClassObject> bulb = Spawn(L"Test_Bulb");
    const std::vector<std::wstring> all{L"Name", L"Watts",     L"Hours", L"Balance", L"IsOn",  L"Colors",
                                        L"Dim",  L"Installed", L"Room",  L"Shade",   L"Socket"};
    EXPECT_EQ(all, Enumerated(bulb, 0));
    EXPECT_EQ(all, Enumerated(bulb, WBEM_FLAG_NONSYSTEM_ONLY));
    EXPECT_EQ((std::vector<std::wstring>{L"Socket"}), Enumerated(bulb, WBEM_FLAG_LOCAL_ONLY));
    EXPECT_EQ(10u, Enumerated(bulb, WBEM_FLAG_PROPAGATED_ONLY).size());
    EXPECT_EQ((std::vector<std::wstring>{L"__GENUS", L"__CLASS", L"__SUPERCLASS", L"__DYNASTY", L"__RELPATH",
                                         L"__PROPERTY_COUNT", L"__DERIVATION", L"__SERVER", L"__NAMESPACE", L"__PATH"}),
              Enumerated(bulb, WBEM_FLAG_SYSTEM_ONLY));
    EXPECT_EQ((std::vector<std::wstring>{L"Name"}), Enumerated(bulb, WBEM_FLAG_KEYS_ONLY));
    EXPECT_EQ((std::vector<std::wstring>{L"Room"}), Enumerated(bulb, WBEM_FLAG_REFS_ONLY));
}

TEST_F(HostObject, NextWithoutBeginIsUnexpected)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    CComBSTR name;
    EXPECT_EQ(WBEM_E_UNEXPECTED, lamp->Next(0, &name, nullptr, nullptr, nullptr));
    EXPECT_EQ(WBEM_E_UNEXPECTED, lamp->NextMethod(0, &name, nullptr, nullptr));
    EXPECT_EQ(nullptr, name.m_str);
}

TEST_F(HostObject, NextAnswersNameValueTypeAndOrigin)
{
    const CComPtr<IWbemClassObject> room = Spawn(L"Test_Room");
    Put(room, L"Name", L"Study");
    room->BeginEnumeration(0);
    CComBSTR name;
    CComVariant value;
    CIMTYPE type = 0;
    LONG flavor = -1;
    ASSERT_EQ(WBEM_S_NO_ERROR, room->Next(0, &name, &value, &type, &flavor));
    EXPECT_EQ(L"Name", TextOf(name));
    EXPECT_EQ(L"Study", Shown(value));
    EXPECT_EQ(CIM_STRING, type);
    EXPECT_EQ(WBEM_FLAVOR_ORIGIN_LOCAL, flavor);
}

TEST_F(HostObject, GetNamesFiltersByQualifierKindAndOrigin)
{
    const CComPtr<IWbemClassObject> bulb = GetClass(L"Test_Bulb");
    EXPECT_EQ(21u, Names(bulb, WBEM_FLAG_ALWAYS).size());
    EXPECT_EQ(11u, Names(bulb, WBEM_FLAG_ALWAYS | WBEM_FLAG_NONSYSTEM_ONLY).size());
    EXPECT_EQ(10u, Names(bulb, WBEM_FLAG_SYSTEM_ONLY).size());
    EXPECT_EQ((std::vector<std::wstring>{L"Name"}), Names(bulb, WBEM_FLAG_KEYS_ONLY));
    EXPECT_EQ((std::vector<std::wstring>{L"Watts"}), Names(bulb, WBEM_FLAG_ONLY_IF_TRUE, L"read"));
    EXPECT_EQ((std::vector<std::wstring>{L"Socket"}),
              Names(bulb, WBEM_FLAG_ONLY_IF_FALSE | WBEM_FLAG_LOCAL_ONLY, L"read"));
    CComVariant watt(L"watt");
    EXPECT_EQ((std::vector<std::wstring>{L"Watts"}), Names(bulb, WBEM_FLAG_ONLY_IF_IDENTICAL, L"Units", &watt));
    CComVariant volt(L"volt");
    EXPECT_TRUE(Names(bulb, WBEM_FLAG_ONLY_IF_IDENTICAL, L"Units", &volt).empty());
    SAFEARRAY* names = nullptr;
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, bulb->GetNames(nullptr, WBEM_FLAG_ONLY_IF_TRUE, nullptr, &names));
    EXPECT_EQ(nullptr, names);
}

TEST_F(HostObject, ACopyGoesItsOwnWay)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    Put(lamp, L"Name", L"one");
    CComPtr<IWbemClassObject> copy;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->Clone(&copy));
    EXPECT_EQ(WBEM_S_SAME, lamp->CompareTo(0, copy));
    Put(copy, L"Name", L"two");
    EXPECT_EQ(L"one", Show(lamp, L"Name"));
    EXPECT_EQ(L"two", Show(copy, L"Name"));
    EXPECT_EQ(WBEM_S_DIFFERENT, lamp->CompareTo(0, copy));
    Put(copy, L"Name", L"ONE");
    EXPECT_EQ(WBEM_S_DIFFERENT, lamp->CompareTo(0, copy));
    EXPECT_EQ(WBEM_S_SAME, lamp->CompareTo(WBEM_FLAG_IGNORE_CASE, copy));
    EXPECT_EQ(WBEM_S_DIFFERENT, lamp->CompareTo(0, GetClass(L"Test_Lamp")));
    EXPECT_EQ(WBEM_E_INVALID_PARAMETER, lamp->CompareTo(0, nullptr));
}

TEST_F(HostObject, InstancesBeginWithTheClassesDefaultsAndDeleteRestoresThem)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    EXPECT_EQ(L"0.500000", Show(lamp, L"Dim"));
    EXPECT_EQ(L"NULL", Show(lamp, L"Watts"));
    Put(lamp, L"Dim", 0.25);
    Put(lamp, L"Watts", 5);
    EXPECT_EQ(WBEM_S_RESET_TO_DEFAULT, lamp->Delete(L"dim"));
    EXPECT_EQ(WBEM_S_RESET_TO_DEFAULT, lamp->Delete(L"Watts"));
    EXPECT_EQ(L"0.500000", Show(lamp, L"Dim"));
    EXPECT_EQ(L"NULL", Show(lamp, L"Watts"));
    EXPECT_EQ(WBEM_E_NOT_FOUND, lamp->Delete(L"Volts"));
    EXPECT_EQ(WBEM_E_SYSTEM_PROPERTY, lamp->Delete(L"__PATH"));
}

TEST_F(HostObject, AClassIsACopyWhoseDefaultsMayBeSetAndPassToItsInstances)
{
    const CComPtr<IWbemClassObject> definition = GetClass(L"Test_Lamp");
    EXPECT_EQ(WBEM_S_NO_ERROR, Put(definition, L"Watts", 40));
    CComPtr<IWbemClassObject> instance;
    ASSERT_EQ(WBEM_S_NO_ERROR, definition->SpawnInstance(0, &instance));
    EXPECT_EQ(L"40", Show(instance, L"Watts"));
    EXPECT_EQ(L"NULL", Show(GetClass(L"Test_Lamp"), L"Watts"));
}

TEST_F(HostObject, TheSchemaItselfDoesNotChange)
{
    const CComPtr<IWbemClassObject> definition = GetClass(L"Test_Lamp");
    CComPtr<IWbemClassObject> derived;
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, definition->SpawnDerivedClass(0, &derived));
    EXPECT_EQ(L"classes change in their MOF files only", TakeTold().description);
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, definition->PutMethod(L"X", 0, nullptr, nullptr));
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, definition->DeleteMethod(L"Switch"));
    EXPECT_EQ(WBEM_E_INVALID_OPERATION, Spawn(L"Test_Lamp")->SpawnInstance(0, &derived));
}

TEST_F(HostObject, InheritsFromKnowsTheClassItselfAndAllAboveIt)
{
    const CComPtr<IWbemClassObject> bulb = Spawn(L"Test_Bulb");
    EXPECT_EQ(WBEM_S_NO_ERROR, bulb->InheritsFrom(L"TEST_LAMP"));
    EXPECT_EQ(WBEM_S_NO_ERROR, bulb->InheritsFrom(L"Test_Bulb"));
    EXPECT_EQ(WBEM_S_FALSE, bulb->InheritsFrom(L"Test_Room"));
}

TEST_F(HostObject, TextOfAnInstanceIsMofWithItsValues)
{
    const CComPtr<IWbemClassObject> room = Spawn(L"Test_Room");
    Put(room, L"Name", L"The \"hall\"");
    CComBSTR text;
    ASSERT_EQ(WBEM_S_NO_ERROR, room->GetObjectText(0, &text));
    const auto read = wbem::ReadMofText(TextOf(text));
    ASSERT_TRUE(read) << ::testing::PrintToString(TextOf(text));
    const auto& instance = std::get<wbem::MofInstance>(read->declarations.front());
    EXPECT_EQ(L"Test_Room", instance.className);
    ASSERT_EQ(2u, instance.properties.size());
    EXPECT_EQ(L"Name", instance.properties[0].name);
    EXPECT_EQ(L"The \"hall\"", instance.properties[0].value.AsText());
    EXPECT_EQ(L"HasWindow", instance.properties[1].name);
}

TEST_F(HostObject, TextOfAClassReadsBackToTheClass)
{
    CComBSTR text;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Lamp")->GetObjectText(0, &text));
    const auto again = Repository::FromText(std::wstring(kLampMof) + L"\n#pragma namespace(\"root\\\\Again\")\n" +
                                            L"class Test_Room {}; class Test_Shade {};" + TextOf(text));
    const ClassDef& lamp = *again->FindNamespace({L"root", L"Again"})->FindClass(L"Test_Lamp");
    EXPECT_EQ(10u, lamp.Properties().size());
    EXPECT_EQ(5u, lamp.Methods().size());
    EXPECT_EQ(0.5, (*lamp.Prototype())[lamp.FindProperty(L"Dim")].AsReal());
    EXPECT_NE(nullptr, wbem::FindQualifier(lamp.Declaration().qualifiers, L"Description"));
}

TEST_F(HostObject, TextWithoutFlavorsHasNone)
{
    Use(L"[Description(\"d\") : ToSubclass] class A { [key : DisableOverride] string X; };");
    CComBSTR with;
    CComBSTR without;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"A")->GetObjectText(0, &with));
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"A")->GetObjectText(WBEM_FLAG_NO_FLAVORS, &without));
    EXPECT_NE(std::wstring::npos, TextOf(with).find(L"ToSubclass"));
    EXPECT_EQ(std::wstring::npos, TextOf(without).find(L"ToSubclass"));
    EXPECT_EQ(std::wstring::npos, TextOf(without).find(L"DisableOverride"));
}

// Methods
// ---------------------------------------------------------------------------------------------------------------

TEST_F(HostObject, MethodsAreEnumeratedWithTheirSignatures)
{
    const CComPtr<IWbemClassObject> bulb = GetClass(L"Test_Bulb");
    const auto names = [&](LONG flags)
    {
        std::vector<std::wstring> found;
        bulb->BeginMethodEnumeration(flags);
        CComBSTR name;
        while (bulb->NextMethod(0, &name, nullptr, nullptr) == WBEM_S_NO_ERROR)
        {
            found.push_back(TextOf(name));
            name.Empty();
        }
        bulb->EndMethodEnumeration();
        return found;
    };
    EXPECT_EQ((std::vector<std::wstring>{L"Switch", L"CountAll", L"Polish", L"Unwired", L"Broken", L"Unscrew"}),
              names(0));
    EXPECT_EQ((std::vector<std::wstring>{L"Unscrew"}), names(WBEM_FLAG_LOCAL_ONLY));
    EXPECT_EQ(5u, names(WBEM_FLAG_PROPAGATED_ONLY).size());

    CComPtr<IWbemClassObject> in;
    CComPtr<IWbemClassObject> out;
    ASSERT_EQ(WBEM_S_NO_ERROR, bulb->GetMethod(L"switch", 0, &in, &out));
    EXPECT_EQ(L"__PARAMETERS", Show(in, L"__CLASS"));
    EXPECT_EQ((std::vector<std::wstring>{L"On", L"Reason"}), Enumerated(in, 0));
    EXPECT_EQ((std::vector<std::wstring>{L"WasOn", L"ReturnValue"}), Enumerated(out, 0));
    CComBSTR origin;
    ASSERT_EQ(WBEM_S_NO_ERROR, bulb->GetMethodOrigin(L"Switch", &origin));
    EXPECT_EQ(L"Test_Lamp", TextOf(origin));
}

TEST_F(HostObject, AMethodWithoutParametersOrResultsHasNoSignature)
{
    CComPtr<IWbemClassObject> in;
    CComPtr<IWbemClassObject> out;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Lamp")->GetMethod(L"Polish", 0, &in, &out));
    EXPECT_EQ(nullptr, in.p);
    EXPECT_EQ(nullptr, out.p);
    EXPECT_EQ(WBEM_E_NOT_FOUND, GetClass(L"Test_Lamp")->GetMethod(L"Explode", 0, &in, &out));
    EXPECT_EQ(L"the class Test_Lamp has no method Explode", TakeTold().description);
}

TEST_F(HostObject, ParametersAreCountedByTheQualifierId)
{
    CComPtr<IWbemClassObject> in;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Lamp")->GetMethod(L"Switch", 0, &in, nullptr));
    CComPtr<IWbemQualifierSet> set;
    ASSERT_EQ(WBEM_S_NO_ERROR, in->GetPropertyQualifierSet(L"Reason", &set));
    CComVariant id;
    ASSERT_EQ(WBEM_S_NO_ERROR, set->Get(L"ID", 0, &id, nullptr));
    EXPECT_EQ(L"1", Shown(id));
}

// Qualifiers
// ------------------------------------------------------------------------------------------------------------

TEST_F(HostObject, QualifierSetsAreReadByNameAndInTurn)
{
    const CComPtr<IWbemClassObject> lamp = GetClass(L"Test_Lamp");
    CComPtr<IWbemQualifierSet> set;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->GetQualifierSet(&set));
    CComVariant value;
    LONG flavor = -1;
    ASSERT_EQ(WBEM_S_NO_ERROR, set->Get(L"PROVIDER", 0, &value, &flavor));
    EXPECT_EQ(L"LampProvider", Shown(value));
    value.Clear();
    EXPECT_EQ(WBEM_FLAVOR_FLAG_PROPAGATE_TO_INSTANCE, flavor);
    EXPECT_EQ(WBEM_E_NOT_FOUND, set->Get(L"Color", 0, &value, nullptr));
    EXPECT_EQ(L"there is no qualifier Color", TakeTold().description);

    SAFEARRAY* names = nullptr;
    ASSERT_EQ(WBEM_S_NO_ERROR, set->GetNames(0, &names));
    EXPECT_EQ((std::vector<std::wstring>{L"dynamic", L"provider", L"Description"}), NamesIn(names));

    CComBSTR name;
    EXPECT_EQ(WBEM_E_UNEXPECTED, set->Next(0, &name, nullptr, nullptr));
    ASSERT_EQ(WBEM_S_NO_ERROR, set->BeginEnumeration(0));
    ASSERT_EQ(WBEM_S_NO_ERROR, set->Next(0, &name, &value, nullptr));
    EXPECT_EQ(L"dynamic", TextOf(name));
    EXPECT_EQ(WBEM_S_NO_ERROR, set->Next(0, nullptr, nullptr, nullptr));
    EXPECT_EQ(WBEM_S_NO_ERROR, set->Next(0, nullptr, nullptr, nullptr));
    EXPECT_EQ(WBEM_S_NO_MORE_DATA, set->Next(0, nullptr, nullptr, nullptr));
    EXPECT_EQ(WBEM_S_NO_ERROR, set->EndEnumeration());
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, set->Put(L"X", &value, 0));
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, set->Delete(L"provider"));
}

TEST_F(HostObject, PropertyQualifiersTellTheTypeAndWhatIsInherited)
{
    CComPtr<IWbemQualifierSet> set;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Bulb")->GetPropertyQualifierSet(L"room", &set));
    CComVariant type;
    ASSERT_EQ(WBEM_S_NO_ERROR, set->Get(L"CIMTYPE", 0, &type, nullptr));
    EXPECT_EQ(L"ref:Test_Room", Shown(type));
    set = nullptr;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Bulb")->GetPropertyQualifierSet(L"Name", &set));
    LONG flavor = 0;
    ASSERT_EQ(WBEM_S_NO_ERROR, set->Get(L"key", 0, nullptr, &flavor));
    EXPECT_EQ(WBEM_FLAVOR_FLAG_PROPAGATE_TO_INSTANCE | WBEM_FLAVOR_FLAG_PROPAGATE_TO_DERIVED_CLASS |
                  WBEM_FLAVOR_NOT_OVERRIDABLE | WBEM_FLAVOR_ORIGIN_PROPAGATED,
              flavor);
    SAFEARRAY* names = nullptr;
    ASSERT_EQ(WBEM_S_NO_ERROR, set->GetNames(WBEM_FLAG_PROPAGATED_ONLY, &names));
    EXPECT_EQ((std::vector<std::wstring>{L"key", L"Description"}), NamesIn(names));
    set = nullptr;
    EXPECT_EQ(WBEM_E_SYSTEM_PROPERTY, GetClass(L"Test_Bulb")->GetPropertyQualifierSet(L"__PATH", &set));
    EXPECT_EQ(WBEM_E_NOT_FOUND, GetClass(L"Test_Bulb")->GetPropertyQualifierSet(L"Volts", &set));
}

TEST_F(HostObject, AnInstanceShowsTheQualifiersThatPassToInstances)
{
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    CComPtr<IWbemQualifierSet> set;
    SAFEARRAY* names = nullptr;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->GetQualifierSet(&set));
    ASSERT_EQ(WBEM_S_NO_ERROR, set->GetNames(0, &names));
    EXPECT_EQ((std::vector<std::wstring>{L"dynamic", L"provider"}), NamesIn(names));
    set = nullptr;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->GetPropertyQualifierSet(L"Name", &set));
    ASSERT_EQ(WBEM_S_NO_ERROR, set->GetNames(0, &names));
    EXPECT_EQ((std::vector<std::wstring>{L"key", L"CIMTYPE"}), NamesIn(names));
}

} // namespace
} // namespace orl::test
