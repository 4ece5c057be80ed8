// Queries and enumerations: which classes are asked, what is admitted and what is shown.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

namespace orl::test
{
namespace
{

using Texts = std::vector<std::wstring>;

class HostQuery : public HostTest
{
protected:
    HRESULT Start(const std::wstring& query, LONG flags = 0)
    {
        m_found = nullptr;
        const CComBSTR text(static_cast<int>(query.size()), query.c_str());
        return Service().ExecQuery(CComBSTR(L"WQL"), text, flags, nullptr, &m_found);
    }
    // One property of all results.
    Texts Query(const std::wstring& query, const wchar_t* property = L"Name")
    {
        const HRESULT code = Start(query);
        if (FAILED(code))
            return {HexText(code)};
        HRESULT end = WBEM_E_FAILED;
        Texts found = Drain(m_found, property, &end);
        EXPECT_EQ(HexText(WBEM_S_FALSE), HexText(end)) << TakeTold();
        return found;
    }
    Texts Names(IWbemClassObject* object)
    {
        SAFEARRAY* names = nullptr;
        EXPECT_EQ(WBEM_S_NO_ERROR, object->GetNames(nullptr, WBEM_FLAG_NONSYSTEM_ONLY, nullptr, &names));
        return NamesIn(names);
    }
    CComPtr<IWbemClassObject> First(const std::wstring& query, LONG flags = 0)
    {
        EXPECT_EQ(WBEM_S_NO_ERROR, Start(query, flags)) << TakeTold();
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        m_found->Next(10000, 1, &object, &returned);
        return object;
    }

    CComPtr<IEnumWbemClassObject> m_found;
};

TEST_F(HostQuery, TheWhereFiltersWhateverTheProviderSends)
{
    ServeLamps({L"desk", L"floor", L"door"});
    EXPECT_EQ((Texts{L"desk", L"floor", L"door"}), Query(L"SELECT * FROM Test_Lamp"));
    EXPECT_EQ((Texts{L"floor"}), Query(L"SELECT * FROM Test_Lamp WHERE Name = 'FLOOR'"));
    EXPECT_EQ((Texts{L"floor", L"door"}), Query(L"SELECT * FROM Test_Lamp WHERE Watts >= 20"));
    EXPECT_EQ((Texts{L"desk", L"door"}), Query(L"SELECT * FROM Test_Lamp WHERE Name LIKE 'd%'"));
    EXPECT_EQ((Texts{L"desk"}), Query(L"SELECT * FROM Test_Lamp WHERE NOT (Watts > 10 OR Name = 'x')"));
    EXPECT_EQ((Texts{L"desk", L"floor", L"door"}), Query(L"SELECT * FROM Test_Lamp WHERE Hours IS NULL"));
    EXPECT_EQ((Texts{}), Query(L"SELECT * FROM Test_Lamp WHERE Hours > 0"));
    EXPECT_EQ((Texts{L"desk", L"floor", L"door"}), Query(L"SELECT * FROM Test_Lamp WHERE __CLASS = 'test_lamp'"));
    EXPECT_EQ((Texts{}), Query(L"SELECT * FROM Test_Lamp WHERE __THIS ISA 'Test_Bulb'"));
}

// Script layers make such texts.
TEST_F(HostQuery, NullCharactersAfterTheQueryAreNotPartOfIt)
{
    ServeLamps({L"desk", L"floor"});
    EXPECT_EQ((Texts{L"desk", L"floor"}), Query(std::wstring(L"SELECT * FROM Test_Lamp\0", 24)));
    EXPECT_EQ((Texts{L"floor"}), Query(std::wstring(L"SELECT * FROM Test_Lamp WHERE Watts = 20\0\0", 42)));
    EXPECT_EQ((Texts{HexText(WBEM_E_INVALID_QUERY)}), Query(std::wstring(L"SELECT * FROM Test_Lamp\0 WHERE", 30)));
    EXPECT_EQ((Texts{HexText(WBEM_E_INVALID_QUERY)}), Query(std::wstring(2, L'\0')));
}

TEST_F(HostQuery, TheProviderGetsTheQueryForEachClassThatMayHaveInstances)
{
    ServeLamps({L"desk"});
    EXPECT_EQ((Texts{L"desk"}), Query(L"select Name from Test_Lamp where Watts=10"));
    EXPECT_EQ((Texts{L"Initialize root\\KESTA", L"ExecQuery select Name from Test_Lamp where Watts=10",
                     L"ExecQuery SELECT Name FROM Test_Bulb WHERE Watts = 10"}),
              Provider().Calls());
}

TEST_F(HostQuery, AClassInAnotherSpellingReachesTheProviderAsDeclared)
{
    ServeLamps({L"desk"});
    EXPECT_EQ((Texts{L"desk"}), Query(L"SELECT * FROM TEST_LAMP"));
    EXPECT_EQ(L"ExecQuery SELECT * FROM Test_Lamp", Provider().Calls()[1]);
}

TEST_F(HostQuery, AProviderThatTakesNoQueriesIsEnumerated)
{
    ServeLamps({L"desk", L"floor"});
    Provider().query = nullptr; // answers WBEM_E_PROVIDER_NOT_CAPABLE
    EXPECT_EQ((Texts{L"floor"}), Query(L"SELECT * FROM Test_Lamp WHERE Watts = 20"));
    EXPECT_EQ(L"ExecQuery SELECT * FROM Test_Lamp WHERE Watts = 20", Provider().Calls()[1]);
    EXPECT_EQ(L"CreateInstanceEnum Test_Lamp", Provider().Calls()[2]);
}

TEST_F(HostQuery, AProviderThatIsNotRegisteredForQueriesIsNotAskedOne)
{
    std::wstring mof = kLampMof;
    const std::wstring levels = L"QuerySupportLevels = { \"WQL:UnarySelect\" };";
    mof.erase(mof.find(levels), levels.size());
    Use(mof);
    ServeLamps({L"desk", L"floor"});
    EXPECT_EQ((Texts{L"floor"}), Query(L"SELECT * FROM Test_Lamp WHERE Watts = 20"));
    EXPECT_EQ((Texts{L"Initialize root\\KESTA", L"CreateInstanceEnum Test_Lamp", L"CreateInstanceEnum Test_Bulb"}),
              Provider().Calls());
}

TEST_F(HostQuery, InstancesOfSubclassesBelongToTheAnswer)
{
    const auto send = [this](const std::wstring& what, IWbemObjectSink* sink)
    {
        const bool isBulb = what.find(L"Test_Bulb") != what.npos;
        CComPtr<IWbemClassObject> one =
            Provider().Make(isBulb ? L"Test_Bulb" : L"Test_Lamp", {{L"Name", isBulb ? L"bulb" : L"lamp"}});
        sink->Indicate(1, &one.p);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    Provider().query = send;
    Provider().enumerate = send;
    EXPECT_EQ((Texts{L"lamp", L"bulb"}), Query(L"SELECT * FROM Test_Lamp"));
    EXPECT_EQ((Texts{L"bulb"}), Query(L"SELECT * FROM Test_Lamp WHERE __THIS ISA \"Test_Bulb\""));
    EXPECT_EQ((Texts{L"bulb"}), Query(L"SELECT * FROM Test_Bulb"));

    const auto enumerated = [&](LONG flags)
    {
        CComPtr<IEnumWbemClassObject> found;
        EXPECT_EQ(WBEM_S_NO_ERROR, Service().CreateInstanceEnum(CComBSTR(L"Test_Lamp"), flags, nullptr, &found));
        return Drain(found, L"Name");
    };
    EXPECT_EQ((Texts{L"lamp", L"bulb"}), enumerated(WBEM_FLAG_DEEP));
    EXPECT_EQ((Texts{L"lamp"}), enumerated(WBEM_FLAG_SHALLOW));
}

TEST_F(HostQuery, InstancesOfAnotherClassThanAskedForDoNotCountTwice)
{
    const auto send = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> lamp = Lamp(L"lamp", 1);
        CComPtr<IWbemClassObject> bulb = Provider().Make(L"Test_Bulb", {{L"Name", L"bulb"}});
        CComPtr<IWbemClassObject> room = Provider().Make(L"Test_Room", {{L"Name", L"room"}});
        IWbemClassObject* all[] = {lamp, bulb, room};
        sink->Indicate(3, all);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    Provider().query = send;
    EXPECT_EQ((Texts{L"lamp", L"bulb"}), Query(L"SELECT * FROM Test_Lamp"));
}

TEST_F(HostQuery, WhatFailsForOneClassDoesNotKeepTheOthersFromTheClient)
{
    Provider().query = [this](const std::wstring& what, IWbemObjectSink* sink)
    {
        if (what.find(L"Test_Lamp") != what.npos)
            return sink->SetStatus(0, WBEM_E_ACCESS_DENIED, nullptr, nullptr);
        CComPtr<IWbemClassObject> bulb = Provider().Make(L"Test_Bulb", {{L"Name", L"bulb"}});
        sink->Indicate(1, &bulb.p);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    ASSERT_EQ(WBEM_S_NO_ERROR, Start(L"SELECT * FROM Test_Lamp"));
    HRESULT end = S_OK;
    EXPECT_EQ((Texts{L"bulb"}), Drain(m_found, L"Name", &end));
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(end));
    EXPECT_EQ((Told{L"0x80041003", L"the provider LampProvider answered 0x80041003", L"ExecQuery",
                    L"SELECT * FROM Test_Lamp", L"LampProvider"}),
              TakeTold());
}

TEST_F(HostQuery, TheSelectListIsWhatAnObjectShows)
{
    ServeLamps({L"desk"});
    const CComPtr<IWbemClassObject> lamp = First(L"SELECT watts, Dim FROM Test_Lamp");
    EXPECT_EQ((Texts{L"Watts", L"Dim"}), Names(lamp));
    EXPECT_EQ(L"10", Show(lamp, L"Watts"));
    EXPECT_EQ(L"<0x80041002>", Show(lamp, L"Name"));
    EXPECT_EQ(L"the query did not select the property Name", TakeTold().description);
    EXPECT_EQ(L"2", Show(lamp, L"__PROPERTY_COUNT"));
    EXPECT_EQ(L"Test_Lamp.Name=\"desk\"", Show(lamp, L"__RELPATH"));
    CComPtr<IWbemClassObject> copy;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->Clone(&copy));
    EXPECT_EQ((Texts{L"Watts", L"Dim"}), Names(copy));
    CComBSTR text;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->GetObjectText(0, &text));
    EXPECT_EQ(std::wstring::npos, TextOf(text).find(L"Name")) << ::testing::PrintToString(TextOf(text));
}

TEST_F(HostQuery, SystemPropertiesMayBeSelectedAndAddNothing)
{
    ServeLamps({L"desk"});
    const CComPtr<IWbemClassObject> lamp = First(L"SELECT __RELPATH FROM Test_Lamp");
    EXPECT_TRUE(Names(lamp).empty());
    EXPECT_EQ(L"Test_Lamp.Name=\"desk\"", Show(lamp, L"__RELPATH"));
}

TEST_F(HostQuery, PropertiesOfEmbeddedObjectsCanBeTested)
{
    Provider().query = [this](const std::wstring& what, IWbemObjectSink* sink)
    {
        for (const wchar_t* material : {L"silk", L"paper"})
        {
            CComPtr<IWbemClassObject> shade = Provider().Make(L"Test_Shade", {{L"Material", material}});
            CComPtr<IWbemClassObject> lamp =
                Provider().Make(L"Test_Lamp", {{L"Name", material}, {L"Shade", static_cast<IUnknown*>(shade.p)}});
            if (what.find(L"Test_Bulb") == what.npos)
                sink->Indicate(1, &lamp.p);
        }
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    EXPECT_EQ((Texts{L"silk"}), Query(L"SELECT * FROM Test_Lamp WHERE Shade.Material = 'Silk'"));
    EXPECT_EQ((Texts{L"silk", L"paper"}), Query(L"SELECT * FROM Test_Lamp WHERE Shade ISA 'Test_Shade'"));
}

TEST_F(HostQuery, DeclaredInstancesAreQueriedLikeOthers)
{
    EXPECT_EQ((Texts{L"Attic"}), Query(L"SELECT * FROM Test_Room WHERE HasWindow = FALSE"));
    EXPECT_EQ((Texts{L"Hall", L"Attic"}), Query(L"SELECT Name FROM Test_Room"));
    EXPECT_EQ((Texts{L"LampProvider"}), Query(L"SELECT * FROM __Provider"));
    EXPECT_EQ(0, m_loads);
}

TEST_F(HostQuery, ClassesAreFoundByASchemaQuery)
{
    EXPECT_EQ((Texts{L"Test_Lamp", L"Test_Bulb"}),
              Query(L"SELECT * FROM meta_class WHERE __THIS ISA 'Test_Lamp'", L"__CLASS"));
    EXPECT_EQ((Texts{L"Test_Bulb"}), Query(L"SELECT * FROM meta_class WHERE __SUPERCLASS = 'Test_Lamp'", L"__CLASS"));
    EXPECT_EQ((Texts{L"0x80041017"}), Query(L"SELECT * FROM meta_class WHERE Watts = 5"));
    EXPECT_EQ(L"a query over classes knows system properties only: meta_class has no property Watts",
              TakeTold().description);
}

TEST_F(HostQuery, APrototypeIsTheClassAsTheQueryWouldShowIt)
{
    const CComPtr<IWbemClassObject> prototype = First(L"SELECT Watts FROM Test_Lamp", WBEM_FLAG_PROTOTYPE);
    EXPECT_EQ(L"1", Show(prototype, L"__GENUS"));
    EXPECT_EQ((Texts{L"Watts"}), Names(prototype));
    EXPECT_EQ(0, m_loads);
}

TEST_F(HostQuery, BadQueriesAreRefusedAtOnceWithTheReason)
{
    struct
    {
        const wchar_t* query;
        HRESULT code;
        const wchar_t* description; // null: the parser's own words
    } const cases[] = {
        {L"", WBEM_E_INVALID_QUERY, nullptr},
        {L"SELECT FROM Test_Lamp", WBEM_E_INVALID_QUERY, nullptr},
        {L"SELECT * FROM Test_Lamp WHERE", WBEM_E_INVALID_QUERY, nullptr},
        {L"SELECT Volts FROM Test_Lamp", WBEM_E_INVALID_QUERY, L"the class Test_Lamp has no property Volts"},
        {L"SELECT * FROM Test_Lamp WHERE Volts = 5", WBEM_E_INVALID_QUERY,
         L"the class Test_Lamp has no property Volts"},
        {L"SELECT * FROM Test_Lamp WHERE Name.Length = 5", WBEM_E_INVALID_QUERY,
         L"the property Name of Test_Lamp is no object that could have a property Length"},
        {L"SELECT * FROM Test_Candle", WBEM_E_INVALID_CLASS, L"there is no class Test_Candle in root\\KESTA"},
    };
    for (const auto& each : cases)
    {
        for (const LONG flags : {LONG{0}, LONG{WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY}})
        {
            EXPECT_EQ(HexText(each.code), HexText(Start(each.query, flags)));
            EXPECT_EQ(nullptr, m_found.p);
            const Told told = TakeTold();
            EXPECT_EQ(HexText(each.code), told.code);
            EXPECT_EQ(L"ExecQuery", told.operation);
            EXPECT_EQ(each.query, told.parameter);
            if (each.description)
            {
                EXPECT_EQ(each.description, told.description);
            }
            else
            {
                EXPECT_NE(told.description.npos, told.description.find(L", at character "));
            }
        }
    }
    EXPECT_EQ(0, m_loads);
}

TEST_F(HostQuery, ThereIsOneQueryLanguage)
{
    CComPtr<IEnumWbemClassObject> found;
    EXPECT_EQ(WBEM_E_INVALID_QUERY_TYPE,
              Service().ExecQuery(CComBSTR(L"CQL"), CComBSTR(L"SELECT * FROM Test_Lamp"), 0, nullptr, &found));
    EXPECT_EQ(L"the query language is CQL; there is only WQL", TakeTold().description);
}

TEST_F(HostQuery, ASynchronousQueryAnswersItsFailureItself)
{
    Provider().query = [](const std::wstring&, IWbemObjectSink* sink)
    { return sink->SetStatus(0, WBEM_E_ACCESS_DENIED, nullptr, nullptr); };
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(Start(L"SELECT * FROM Test_Lamp")));
    EXPECT_EQ(nullptr, m_found.p);
    EXPECT_EQ(L"the provider LampProvider answered 0x80041003", TakeTold().description);
    EXPECT_EQ(WBEM_S_NO_ERROR, Start(L"SELECT * FROM Test_Lamp", WBEM_FLAG_RETURN_IMMEDIATELY));
    HRESULT end = S_OK;
    EXPECT_EQ((Texts{}), Drain(m_found, L"Name", &end));
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(end));
    EXPECT_EQ(L"the provider LampProvider answered 0x80041003", TakeTold().description);
}

// Enumerations
// ----------------------------------------------------------------------------------------------------------

TEST_F(HostQuery, AnUnknownClassCannotBeEnumerated)
{
    CComPtr<IEnumWbemClassObject> found;
    EXPECT_EQ(WBEM_E_INVALID_CLASS, Service().CreateInstanceEnum(CComBSTR(L"Test_Candle"), 0, nullptr, &found));
    EXPECT_EQ((Told{L"0x80041010", L"there is no class Test_Candle in root\\KESTA", L"CreateInstanceEnum",
                    L"Test_Candle", L""}),
              TakeTold());
    EXPECT_EQ(WBEM_E_INVALID_CLASS, Service().CreateClassEnum(CComBSTR(L"Test_Candle"), 0, nullptr, &found));
    EXPECT_EQ(L"CreateClassEnum", TakeTold().operation);
}

TEST_F(HostQuery, ClassesAreEnumeratedBelowOneAndFromTheTop)
{
    const auto below = [&](const wchar_t* superclass, LONG flags)
    {
        CComPtr<IEnumWbemClassObject> found;
        EXPECT_EQ(WBEM_S_NO_ERROR, Service().CreateClassEnum(CComBSTR(superclass), flags, nullptr, &found));
        Texts names = Drain(found, L"__CLASS");
        std::erase_if(names, [](const std::wstring& name) { return name.starts_with(L"__"); });
        return names;
    };
    EXPECT_EQ((Texts{L"Test_Room", L"Test_Shade", L"Test_Lamp", L"Test_Bulb"}), below(L"", WBEM_FLAG_DEEP));
    EXPECT_EQ((Texts{L"Test_Room", L"Test_Shade", L"Test_Lamp"}), below(nullptr, WBEM_FLAG_SHALLOW));
    EXPECT_EQ((Texts{L"Test_Bulb"}), below(L"test_lamp", WBEM_FLAG_DEEP));
    EXPECT_EQ((Texts{}), below(L"Test_Bulb", WBEM_FLAG_DEEP));
}

TEST_F(HostQuery, WhatTheServiceDoesNotDoIsRefusedClearly)
{
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, Service().PutClass(GetClass(L"Test_Lamp"), 0, nullptr, nullptr));
    EXPECT_EQ((Told{L"0x8004100C", L"classes change in their MOF files only", L"PutClass", L"", L""}), TakeTold());
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, Service().DeleteClass(CComBSTR(L"Test_Lamp"), 0, nullptr, nullptr));
    CComPtr<IEnumWbemClassObject> found;
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED,
              Service().ExecNotificationQuery(CComBSTR(L"WQL"), CComBSTR(L"x"), 0, nullptr, &found));
    EXPECT_EQ(L"events are not supported", TakeTold().description);
    CComPtr<IWbemObjectSink> sink;
    EXPECT_EQ(WBEM_E_NOT_SUPPORTED, Service().QueryObjectSink(0, &sink));
}

} // namespace
} // namespace orl::test
