// ASSOCIATORS OF and REFERENCES OF: which associations are asked, how their ends find their objects, what is shown.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

#include <algorithm>
#include <map>

namespace orl::test
{
namespace
{

using Texts = std::vector<std::wstring>;

// Cards are nobody's instances; hubs, ports and notes are the provider's. Shelves are declared.
constexpr const wchar_t* HubMof = LR"(
#pragma namespace("\\\\.\\root\\KESTA")

instance of __Win32Provider as $P { Name = "HubProvider"; CLSID = "{11111111-2222-3333-4444-555555555555}"; };
instance of __InstanceProviderRegistration
{
    Provider = $P; SupportsGet = TRUE; SupportsEnumeration = TRUE; QuerySupportLevels = { "WQL:UnarySelect" };
};

class Test_Card
{
    [key] string DeviceID;
    [key] string CreationClassName;
    [key] string SystemCreationClassName;
    [key] string SystemName;
    string Maker;
};
class Test_Shelf { [key] string Name; uint32 Height; };
instance of Test_Shelf { Name = "top"; Height = 9; };

[dynamic, provider("HubProvider"), Powered] class Test_Hub { [key] string DeviceID; string Name; };
[dynamic, provider("HubProvider")] class Test_Port
{
    [key] string DeviceID;
    [key] uint32 Number;
    string Name;
};
[dynamic, provider("HubProvider")] class Test_BigPort : Test_Port { uint32 Size; };

[association, abstract] class Test_Link {};
[association, dynamic, provider("HubProvider")] class Test_CardHub : Test_Link
{
    [key] Test_Card ref Antecedent;
    [key] Test_Hub ref Dependent;
};
[association, dynamic, provider("HubProvider"), Wired] class Test_HubPort : Test_Link
{
    [key] Test_Hub ref Antecedent;
    [key] Test_Port ref Dependent;
    uint32 Order;
};
[association, dynamic, provider("HubProvider")] class Test_HubShelf
{
    [key] Test_Hub ref Thing;
    [key] Test_Shelf ref Place;
};
[association, dynamic, provider("HubProvider")] class Test_Peers { [key] Test_Hub ref Left; [key] Test_Hub ref Right; };
)";

class Associations : public HostTest
{
protected:
    Associations()
    {
        Use(HubMof);
        Provider().enumerate = [this](const std::wstring& what, IWbemObjectSink* sink) { return Send(what, sink); };
        // The provider narrows nothing: the query names the class behind FROM.
        Provider().query = [this](const std::wstring& what, IWbemObjectSink* sink)
        {
            const std::wstring behind = what.substr(what.find(L"FROM ") + 5);
            return Send(behind.substr(0, behind.find(L' ')), sink);
        };
        Provider().get = [this](const std::wstring& what, IWbemObjectSink* sink)
        { return Send(what.substr(0, what.find(L'.')), sink); };
        Hub(L"A");
        Hub(L"B");
    }

    void Hub(const std::wstring& id)
    {
        m_instances[L"Test_Hub"].push_back(
            [=, this] {
                return Provider().Make(L"Test_Hub", {{L"DeviceID", id.c_str()}, {L"Name", (L"hub " + id).c_str()}});
            });
    }
    void Port(const std::wstring& hub, int number)
    {
        m_instances[L"Test_Port"].push_back(
            [=, this]
            {
                const std::wstring name = L"port " + hub + std::to_wstring(number);
                return Provider().Make(L"Test_Port",
                                       {{L"DeviceID", hub.c_str()}, {L"Number", number}, {L"Name", name.c_str()}});
            });
    }
    // An instance of a class whose first two references hold these paths; the provider sends it when `asked` is asked.
    void Link(const wchar_t* ofClass, const wchar_t* first, std::wstring left, const wchar_t* second,
              std::wstring right, const wchar_t* asked = nullptr)
    {
        m_instances[asked ? asked : ofClass].push_back(
            [=, this] {
                return Provider().Make(ofClass, {{first, left.c_str()}, {second, right.c_str()}});
            });
    }
    void HubPort(const std::wstring& hub, int number)
    {
        Link(L"Test_HubPort", L"Antecedent", L"Test_Hub.DeviceID=\"" + hub + L"\"", L"Dependent",
             L"Test_Port.DeviceID=\"" + hub + L"\",Number=\"" + std::to_wstring(number) + L"\"");
    }

    // The objects' relative paths, sorted; of a failure its code.
    Texts Ask(const std::wstring& query, const wchar_t* property = L"__RELPATH")
    {
        CComPtr<IEnumWbemClassObject> found;
        const HRESULT code = Service().ExecQuery(CComBSTR(L"WQL"), CComBSTR(query.c_str()), 0, nullptr, &found);
        if (FAILED(code))
            return {HexText(code)};
        HRESULT end = WBEM_E_FAILED;
        Texts texts = Drain(found, property, &end);
        std::sort(texts.begin(), texts.end());
        if (FAILED(end))
            texts.push_back(HexText(end));
        return texts;
    }
    // The provider's calls since it was initialized.
    Texts CallsOf(const std::wstring& query)
    {
        Ask(query);
        Texts calls = Provider().Calls();
        std::erase_if(calls, [](const std::wstring& call) { return call.rfind(L"Initialize", 0) == 0; });
        return calls;
    }

    std::map<std::wstring, HRESULT> m_failing; // classes

private:
    HRESULT Send(const std::wstring& ofClass, IWbemObjectSink* sink)
    {
        if (const auto failing = m_failing.find(ofClass); failing != m_failing.end())
            return sink->SetStatus(0, failing->second, nullptr, nullptr);
        for (const auto& make : m_instances[ofClass])
        {
            CComPtr<IWbemClassObject> object = make();
            if (const HRESULT code = sink->Indicate(1, &object.p); FAILED(code))
                return sink->SetStatus(0, code, nullptr, nullptr);
        }
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    }

    std::map<std::wstring, std::vector<std::function<CComPtr<IWbemClassObject>()>>> m_instances;
};

TEST_F(Associations, EndsFindTheirObjectsHoweverTheyAreWritten)
{
    for (int number = 1; number <= 2; ++number)
    {
        Port(L"A", number);
        Port(L"B", number);
    }
    const wchar_t* ends[] = {L"Test_Port.DeviceID=\"A\",Number=\"2\"", L"test_port.NUMBER=2,deviceid=\"a\"",
                             L"\\\\.\\root\\KESTA:Test_Port.DeviceID=\"A\",Number=2",
                             L"Test_Port.Number=\"2\",DeviceID='A'"};
    for (const wchar_t* end : ends)
        Link(L"Test_HubPort", L"Antecedent", L"test_hub=\"a\"", L"Dependent", end);
    // Each object once, though four associations lead to it.
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub.DeviceID=\"A\"}"), Texts{L"Test_Port.DeviceID=\"A\",Number=2"});
    for (const wchar_t* end : ends)
        EXPECT_EQ(Ask(std::wstring(L"ASSOCIATORS OF {") + end + L"}"), Texts{L"Test_Hub.DeviceID=\"A\""});
    EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"A\"}").size(), 4U);
}

TEST_F(Associations, EndThatLeadsNowhereIsLeftOut)
{
    Port(L"A", 1);
    for (const wchar_t* end : {L"Test_Port.DeviceID=\"A\",Number=\"7\"", L"Test_Port.DeviceID=\"A\",Nothing=\"1\"",
                               L"Test_Unknown.Name=\"x\"", L"Test_Port", L"no path at all", L""})
        Link(L"Test_HubPort", L"Antecedent", L"Test_Hub.DeviceID=\"A\"", L"Dependent", end);
    HubPort(L"A", 1);
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub.DeviceID=\"A\"}"), Texts{L"Test_Port.DeviceID=\"A\",Number=1"});
}

TEST_F(Associations, ObjectThatIsShownBySeveralInstancesComesWithAllOfThem)
{
    Port(L"A", 1);
    Port(L"A", 1);
    HubPort(L"A", 1);
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}", L"Name"), (Texts{L"port A1", L"port A1"}));
}

TEST_F(Associations, ObjectsOfAClassThatNobodyServesAreMadeOfTheirKeys)
{
    const std::wstring card = L"Test_Card.DeviceID=\"A\",CreationClassName=\"Test_Card\","
                              L"SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"host\"";
    Link(L"Test_CardHub", L"Antecedent", card, L"Dependent", L"Test_Hub.DeviceID=\"A\"");
    const std::wstring whole = L"Test_Card.CreationClassName=\"Test_Card\",DeviceID=\"A\","
                               L"SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"host\"";
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}", L"DeviceID"), Texts{L"A"});
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}", L"SystemName"), Texts{L"host"});
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}", L"Maker"), Texts{L"NULL"});
    // And back, with the keys of the system or without.
    for (const std::wstring& path : {card, whole, std::wstring(L"Test_Card.DeviceID=\"a\"")})
        EXPECT_EQ(Ask(L"ASSOCIATORS OF {" + path + L"}"), Texts{L"Test_Hub.DeviceID=\"A\""});
    // Declared instances are what the MOF says.
    Link(L"Test_HubShelf", L"Thing", L"Test_Hub=\"B\"", L"Place", L"Test_Shelf.Name=\"TOP\"");
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"B\"}", L"Height"), Texts{L"9"});
}

TEST_F(Associations, KeywordsNarrowTheAnswer)
{
    Port(L"A", 1);
    HubPort(L"A", 1);
    Link(L"Test_Peers", L"Left", L"Test_Hub=\"A\"", L"Right", L"Test_Hub=\"B\"");
    Link(L"Test_HubShelf", L"Thing", L"Test_Hub=\"A\"", L"Place", L"Test_Shelf=\"top\"");
    const std::wstring port = L"Test_Port.DeviceID=\"A\",Number=1";
    const std::wstring hub = L"Test_Hub.DeviceID=\"B\"";
    const std::wstring shelf = L"Test_Shelf.Name=\"top\"";
    const struct
    {
        const wchar_t* where;
        Texts found;
    } rows[] = {
        {L"", {hub, port, shelf}},
        {L"AssocClass=Test_HubPort", {port}},
        {L"AssocClass=Test_Link", {port}}, // with the classes below it
        {L"AssocClass=test_peers", {hub}},
        {L"ResultClass=Test_Port", {port}},
        {L"ResultClass=Test_Shelf", {shelf}},
        {L"ResultClass=Test_BigPort", {}},
        {L"Role=Left", {hub}},
        {L"Role=Right", {}},
        {L"Role=ANTECEDENT", {port}},
        {L"Role=Nothing", {}},
        {L"ResultRole=Place", {shelf}},
        {L"ResultRole=Antecedent", {}},
        {L"RequiredQualifier=Powered", {hub}},
        {L"RequiredAssocQualifier=Wired", {port}},
        {L"RequiredAssocQualifier=Wired ResultClass=Test_Shelf", {}},
        {L"ResultClass=Test_Port KeysOnly", {port}},
        {L"ClassDefsOnly", {L"Test_Hub", L"Test_Port", L"Test_Shelf"}},
    };
    for (const auto& row : rows)
    {
        const std::wstring where = *row.where ? std::wstring(L" WHERE ") + row.where : std::wstring();
        EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}" + where), row.found) << ::testing::PrintToString(row.where);
    }
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"} WHERE ResultClass=Test_Port KeysOnly", L"Name"),
              Texts{L"<0x80041002>"});
}

TEST_F(Associations, KeywordsNarrowTheReferences)
{
    HubPort(L"A", 1);
    Link(L"Test_Peers", L"Left", L"Test_Hub=\"A\"", L"Right", L"Test_Hub=\"B\"");
    const struct
    {
        const wchar_t* where;
        Texts classes;
    } rows[] = {
        {L"", {L"Test_HubPort", L"Test_Peers"}},
        {L"ResultClass=Test_Link", {L"Test_HubPort"}},
        {L"Role=Left", {L"Test_Peers"}},
        {L"Role=Right", {}},
        {L"RequiredQualifier=Wired", {L"Test_HubPort"}},
        {L"KeysOnly", {L"Test_HubPort", L"Test_Peers"}},
        {L"ClassDefsOnly", {L"Test_HubPort", L"Test_Peers"}},
    };
    for (const auto& row : rows)
    {
        const std::wstring where = *row.where ? std::wstring(L" WHERE ") + row.where : std::wstring();
        EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"A\"}" + where, L"__CLASS"), row.classes)
            << ::testing::PrintToString(row.where);
    }
    EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"A\"} WHERE ClassDefsOnly", L"__GENUS"), (Texts{L"1", L"1"}));
    EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"A\"} WHERE ResultClass=Test_HubPort KeysOnly", L"Order"),
              Texts{L"<0x80041002>"});
}

TEST_F(Associations, SchemaAnswersAboutClasses)
{
    const struct
    {
        const wchar_t* query;
        Texts found;
    } rows[] = {
        {L"ASSOCIATORS OF {Test_Hub} WHERE SchemaOnly", {L"Test_Card", L"Test_Hub", L"Test_Port", L"Test_Shelf"}},
        {L"ASSOCIATORS OF {Test_Port} WHERE SchemaOnly", {L"Test_Hub"}},
        {L"ASSOCIATORS OF {Test_BigPort} WHERE SchemaOnly", {L"Test_Hub"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE SchemaOnly AssocClass=Test_HubPort", {L"Test_Port"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE SchemaOnly Role=Left", {L"Test_Hub"}},
        {L"ASSOCIATORS OF {Test_Hub} WHERE SchemaOnly ResultClass=Test_Card", {L"Test_Card"}},
        {L"REFERENCES OF {Test_Hub} WHERE SchemaOnly",
         {L"Test_CardHub", L"Test_HubPort", L"Test_HubShelf", L"Test_Peers"}},
        {L"REFERENCES OF {Test_Card} WHERE SchemaOnly", {L"Test_CardHub"}},
        {L"REFERENCES OF {Test_Link} WHERE SchemaOnly", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Ask(row.query), row.found) << ::testing::PrintToString(row.query);
    EXPECT_TRUE(Provider().Calls().empty()) << "a class is asked about, no provider is needed";
}

TEST_F(Associations, QueriesThatCannotBeAnsweredAreRefused)
{
    const struct
    {
        const wchar_t* query;
        HRESULT code;
        const wchar_t* description;
    } rows[] = {
        {L"ASSOCIATORS OF {Test_Hub}", WBEM_E_INVALID_QUERY,
         L"the path names the class Test_Hub; ask about an instance, or about the class with SchemaOnly"},
        {L"ASSOCIATORS OF {Test_Hub=\"A\"} WHERE SchemaOnly", WBEM_E_INVALID_QUERY,
         L"SchemaOnly asks about a class; the path names an instance of Test_Hub"},
        {L"ASSOCIATORS OF {Test_Nothing=\"A\"}", WBEM_E_INVALID_CLASS,
         L"there is no class Test_Nothing in root\\KESTA"},
        {L"ASSOCIATORS OF {Test_Hub=\"A\"} WHERE AssocClass=Test_Nothing", WBEM_E_INVALID_CLASS,
         L"there is no class Test_Nothing in root\\KESTA"},
        {L"REFERENCES OF {Test_Hub=\"A\"} WHERE ResultClass=Test_Nothing", WBEM_E_INVALID_CLASS,
         L"there is no class Test_Nothing in root\\KESTA"},
        {L"REFERENCES OF {\\\\elsewhere\\root\\KESTA:Test_Hub=\"A\"}", WBEM_E_INVALID_OBJECT_PATH,
         L"the path names another machine: elsewhere"},
        {L"REFERENCES OF {root\\nothing:Test_Hub=\"A\"}", WBEM_E_INVALID_NAMESPACE,
         L"there is no namespace root\\nothing"},
    };
    for (const auto& row : rows)
    {
        EXPECT_EQ(Ask(row.query), Texts{HexText(row.code)}) << ::testing::PrintToString(row.query);
        EXPECT_EQ(TakeTold().description, row.description);
    }
    EXPECT_TRUE(Provider().Calls().empty());
}

TEST_F(Associations, ObjectThatDoesNotExistIsNotFoundAndOneWithoutAssociationsHasNone)
{
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}"), Texts{});
    EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"A\"}"), Texts{});
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"Z\"}"), Texts{HexText(WBEM_E_NOT_FOUND)});
    EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"Z\"}"), Texts{HexText(WBEM_E_NOT_FOUND)});
    // Nobody could tell.
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Card.DeviceID=\"Z\"}"), Texts{});
}

TEST_F(Associations, ProviderLearnsTheSourceWhereOneReferenceMayHoldIt)
{
    EXPECT_EQ(CallsOf(L"REFERENCES OF {test_hub='A'}"),
              (Texts{L"ExecQuery SELECT * FROM Test_CardHub WHERE Dependent = \"Test_Hub.DeviceID=\\\"A\\\"\"",
                     L"ExecQuery SELECT * FROM Test_HubPort WHERE Antecedent = \"Test_Hub.DeviceID=\\\"A\\\"\"",
                     L"ExecQuery SELECT * FROM Test_HubShelf WHERE Thing = \"Test_Hub.DeviceID=\\\"A\\\"\"",
                     L"CreateInstanceEnum Test_Peers", L"GetObject Test_Hub.DeviceID=\"A\""}));
}

TEST_F(Associations, FewObjectsAreAskedForOneByOneAndManyTogether)
{
    const std::wstring query = L"ASSOCIATORS OF {Test_Hub=\"A\"} WHERE AssocClass=Test_HubPort";
    const std::wstring first =
        L"ExecQuery SELECT * FROM Test_HubPort WHERE Antecedent = \"Test_Hub.DeviceID=\\\"A\\\"\"";
    for (int number = 1; number <= 4; ++number)
    {
        Port(L"A", number);
        HubPort(L"A", number);
    }
    EXPECT_EQ(
        CallsOf(query),
        (Texts{first, L"GetObject Test_Port.DeviceID=\"A\",Number=1", L"GetObject Test_Port.DeviceID=\"A\",Number=2",
               L"GetObject Test_Port.DeviceID=\"A\",Number=3", L"GetObject Test_Port.DeviceID=\"A\",Number=4"}));
    const std::size_t before = Provider().Calls().size();
    for (int number = 5; number <= 300; ++number)
    {
        Port(L"A", number);
        HubPort(L"A", number);
    }
    EXPECT_EQ(Ask(query).size(), 300U);
    const Texts calls = Provider().Calls();
    EXPECT_EQ(Texts(calls.begin() + static_cast<std::ptrdiff_t>(before), calls.end()),
              (Texts{first, L"ExecQuery SELECT * FROM Test_Port WHERE DeviceID = \"A\""}));
}

TEST_F(Associations, InstancesOfAnotherClassAreTakenAsTheyCome)
{
    // The provider answers for Test_HubShelf with instances of Test_HubPort that link a hub and a shelf.
    Link(L"Test_HubPort", L"Antecedent", L"Test_Hub=\"A\"", L"Dependent", L"Test_Shelf=\"top\"", L"Test_HubShelf");
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}"), Texts{L"Test_Shelf.Name=\"top\""});
    EXPECT_EQ(Ask(L"REFERENCES OF {Test_Hub=\"A\"} WHERE ResultClass=Test_HubShelf", L"__CLASS"),
              Texts{L"Test_HubPort"});
    EXPECT_EQ(Ask(L"SELECT * FROM Test_HubShelf", L"__CLASS"), Texts{L"Test_HubPort"});
    EXPECT_EQ(Ask(L"SELECT Thing FROM Test_HubShelf WHERE Thing IS NULL", L"__CLASS"), Texts{L"Test_HubPort"});
    EXPECT_EQ(Ask(L"SELECT * FROM Test_HubShelf WHERE Thing = \"Test_Hub='A'\""), Texts{});
    CComPtr<IEnumWbemClassObject> found;
    ASSERT_EQ(Service().CreateInstanceEnum(CComBSTR(L"Test_HubShelf"), 0, nullptr, &found), WBEM_S_NO_ERROR);
    EXPECT_EQ(Drain(found, L"Dependent"), Texts{L"Test_Shelf=\"top\""});
}

TEST_F(Associations, FailureOfOneAssociationLeavesTheOthers)
{
    Port(L"A", 1);
    HubPort(L"A", 1);
    m_failing[L"Test_CardHub"] = WBEM_E_PROVIDER_FAILURE;
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"}"),
              (Texts{L"Test_Port.DeviceID=\"A\",Number=1", HexText(WBEM_E_PROVIDER_FAILURE)}));
    m_failing[L"Test_Port"] = WBEM_E_NOT_FOUND;
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"} WHERE AssocClass=Test_HubPort"), Texts{});
    m_failing[L"Test_Port"] = WBEM_E_ACCESS_DENIED;
    EXPECT_EQ(Ask(L"ASSOCIATORS OF {Test_Hub=\"A\"} WHERE AssocClass=Test_HubPort"),
              Texts{HexText(WBEM_E_ACCESS_DENIED)});
}

} // namespace
} // namespace orl::test
