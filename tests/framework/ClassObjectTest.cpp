// CWomClassObject: making, filling and sending.
#include "tests/framework/Fixture.h"

#include <limits>

namespace orl::test
{
namespace
{

using ::testing::ElementsAre;

class CWomClassObjectTest : public ::testing::Test
{
protected:
    CWomClassObjectTest() { services->Add(definition); }

    void Spawn(CWomClassObject& instance)
    {
        CWomClassObject classObject(context);
        classObject.CreateClass(CComBSTR(L"Zarn_Thing"));
        instance.SpawnInstanceFromClass(classObject);
    }
    static FakeClassObject& Fake(const CWomClassObject& object)
    {
        return dynamic_cast<FakeClassObject&>(*object.Object());
    }

    FakeClassPtr definition = MakeFakeClass(L"Zarn_Thing");
    CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
    CWomContext context{services};
};

// Runs `action`, which must throw, and answers what it threw.
template <typename Action>
CWomProviderException Thrown(Action action)
{
    try
    {
        action();
    }
    catch (const CWomProviderException& failure)
    {
        return failure;
    }
    throw std::runtime_error("nothing was thrown");
}

TEST_F(CWomClassObjectTest, SetsTextsInTheOrderAndFormTheyCome)
{
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(instance.SetProperty(L"A", COrlString(L"one")), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"B", L"two"), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"C", CComBSTR(L"three")), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"D", COrlString()), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"E", static_cast<const wchar_t*>(nullptr)), WBEM_S_NO_ERROR);
    EXPECT_THAT(Fake(instance).Puts(), ElementsAre(FakePut{L"A", L"one", VT_BSTR}, FakePut{L"B", L"two", VT_BSTR},
                                                   FakePut{L"C", L"three", VT_BSTR}, FakePut{L"D", L"", VT_BSTR},
                                                   FakePut{L"E", L"NULL", VT_NULL}));
}

TEST_F(CWomClassObjectTest, KeepsTheZerosInsideAText)
{
    CWomClassObject instance(context);
    Spawn(instance);
    instance.SetProperty(L"A", COrlString(std::wstring(L"a\0b", 3)));
    EXPECT_EQ(Fake(instance).Value(L"A"), std::wstring(L"a\0b", 3));
}

TEST_F(CWomClassObjectTest, LeavesTheCallersBstrAlone)
{
    CWomClassObject instance(context);
    Spawn(instance);
    const CComBSTR text(L"mine");
    instance.SetProperty(L"A", text);
    EXPECT_STREQ(text.m_str, L"mine");
}

TEST_F(CWomClassObjectTest, CarriesNumbersAsTheirTypesTravel)
{
    CWomClassObject instance(context);
    Spawn(instance);
    instance.SetPropertyUint16(L"u16", 65535);
    instance.SetPropertyUint32(L"u32", 5);
    instance.SetPropertyUint32(L"u32high", 0xFFFFFFFF);
    instance.SetPropertyUint64(L"u64", 0);
    instance.SetPropertyUint64(L"u64high", (std::numeric_limits<ULONGLONG>::max)());
    instance.SetPropertySint64(L"s64", -1);
    instance.SetPropertySint64(L"s64low", (std::numeric_limits<LONGLONG>::min)());
    instance.SetPropertySint64(L"s64high", (std::numeric_limits<LONGLONG>::max)());
    instance.SetPropertyBool(L"yes", true);
    instance.SetPropertyBool(L"no", false);
    EXPECT_THAT(Fake(instance).Puts(),
                ElementsAre(FakePut{L"u16", L"65535", VT_I4}, FakePut{L"u32", L"5", VT_I4},
                            FakePut{L"u32high", L"-1", VT_I4}, FakePut{L"u64", L"0", VT_BSTR},
                            FakePut{L"u64high", L"18446744073709551615", VT_BSTR}, FakePut{L"s64", L"-1", VT_BSTR},
                            FakePut{L"s64low", L"-9223372036854775808", VT_BSTR},
                            FakePut{L"s64high", L"9223372036854775807", VT_BSTR}, FakePut{L"yes", L"TRUE", VT_BOOL},
                            FakePut{L"no", L"FALSE", VT_BOOL}));
}

TEST_F(CWomClassObjectTest, CarriesListsWithTheirOrderAlsoEmptyOnes)
{
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(instance.SetProperty(L"numbers", std::vector<LONG>{3, -1, 2147483647}), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"texts", std::vector<COrlString>{L"b", L"", L"a"}), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"none", std::vector<LONG>{}), WBEM_S_NO_ERROR);
    EXPECT_EQ(instance.SetProperty(L"noTexts", std::vector<COrlString>{}), WBEM_S_NO_ERROR);
    EXPECT_THAT(Fake(instance).Puts(),
                ElementsAre(FakePut{L"numbers", L"{3, -1, 2147483647}", VT_ARRAY | VT_I4},
                            FakePut{L"texts", L"{b, , a}", VT_ARRAY | VT_BSTR},
                            FakePut{L"none", L"{}", VT_ARRAY | VT_I4}, FakePut{L"noTexts", L"{}", VT_ARRAY | VT_BSTR}));
}

TEST_F(CWomClassObjectTest, EmbedsWarningsAsInstances)
{
    services->Add(FakeWarningMessage());
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(instance.SetProperty(L"W", std::vector<WarningMessageObj>{{1, 4711, L"refused"}, {2, 0, L"slow"}}),
              WBEM_S_NO_ERROR);
    EXPECT_THAT(Fake(instance).Puts(),
                ElementsAre(FakePut{L"W",
                                    L"{Zarn_WarningMessage{Kind=1, MessageID=4711, Message=refused}, "
                                    L"Zarn_WarningMessage{Kind=2, MessageID=0, Message=slow}}",
                                    VT_ARRAY | VT_UNKNOWN}));
    EXPECT_THAT(services->Lookups(), ElementsAre(L"Zarn_Thing", L"Zarn_WarningMessage"));
}

TEST_F(CWomClassObjectTest, NeedsNoWarningClassForNoWarnings)
{
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(instance.SetProperty(L"W", std::vector<WarningMessageObj>{}), WBEM_S_NO_ERROR);
    EXPECT_THAT(Fake(instance).Puts(), ElementsAre(FakePut{L"W", L"{}", VT_ARRAY | VT_UNKNOWN}));
}

TEST_F(CWomClassObjectTest, AnswersTheFailureWhenWarningsCannotBeMade)
{
    CWomClassObject instance(context);
    Spawn(instance);
    const std::vector<WarningMessageObj> warnings{{1, 1, L"text"}};
    EXPECT_EQ(Hex{instance.SetProperty(L"W", warnings)}, Hex{WBEM_E_NOT_FOUND});
    const FakeClassPtr message = FakeWarningMessage();
    message->putFails[L"MessageID"] = WBEM_E_READ_ONLY;
    services->Add(message);
    EXPECT_EQ(Hex{instance.SetProperty(L"W", warnings)}, Hex{WBEM_E_READ_ONLY});
    EXPECT_TRUE(Fake(instance).Puts().empty());
}

TEST_F(CWomClassObjectTest, HandsOnWhatTheObjectAnswersToAPut)
{
    definition->properties = {{L"A", CIM_STRING}};
    definition->putFails[L"A"] = WBEM_E_TYPE_MISMATCH;
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(Hex{instance.SetProperty(L"A", L"x")}, Hex{WBEM_E_TYPE_MISMATCH});
    EXPECT_EQ(Hex{instance.SetPropertyUint32(L"B", 1)}, Hex{WBEM_E_NOT_FOUND});
}

// Put copies what it is given, so a text of ordinary length needs no memory of its own on the way.
TEST_F(CWomClassObjectTest, PutsTextsOfAnyLengthWholeAndMakesBstrsForLongOnesOnly)
{
    const struct
    {
        std::wstring text;
        ULONG made; // the object's copy among them
    } cases[] = {{L"", 1},
                 {L"x", 1},
                 {std::wstring(L"a\0b", 3), 1},
                 {std::wstring(255, L'y'), 1},
                 {std::wstring(256, L'z'), 2},
                 {std::wstring(100000, L'w'), 2}};
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.text.size());
        CWomClassObject instance(context);
        Spawn(instance);
        const ULONG before = OrlBstrAllocations();
        EXPECT_EQ(instance.SetProperty(L"A", COrlString(each.text)), WBEM_S_NO_ERROR);
        EXPECT_EQ(OrlBstrAllocations() - before, each.made);
        EXPECT_THAT(Fake(instance).Puts(), ElementsAre(FakePut{L"A", each.text, VT_BSTR}));
        const CComBSTR ready(each.text.c_str());
        const ULONG made = OrlBstrAllocations();
        EXPECT_EQ(instance.SetProperty(L"A", ready), WBEM_S_NO_ERROR);
        EXPECT_EQ(OrlBstrAllocations() - made, 1u) << "a BSTR goes as it is";
    }
}

TEST_F(CWomClassObjectTest, ThrowsWhenThereIsNoMemoryForAProperty)
{
    CWomClassObject instance(context);
    Spawn(instance);
    const COrlString text(std::wstring(1000, L't'));
    for (ULONG n = 1; n <= 2; ++n) // the wrapper's own BSTR, then the object's copy
    {
        OrlFailBstrAllocation(n);
        try
        {
            instance.SetProperty(L"A", text);
            ADD_FAILURE() << "nothing was thrown at " << n;
        }
        catch (const CAtlException& failure)
        {
            EXPECT_EQ(Hex{failure.m_hr}, Hex{E_OUTOFMEMORY});
        }
    }
    OrlFailBstrAllocation(0);
    EXPECT_TRUE(Fake(instance).Puts().empty());
}

TEST_F(CWomClassObjectTest, RefusesPropertiesWithoutAnObject)
{
    CWomClassObject empty(context);
    EXPECT_EQ(Hex{empty.SetProperty(L"A", L"x")}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(Hex{empty.SetPropertyUint32(L"A", 0)}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(Hex{empty.SetPropertyBool(L"A", true)}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(Hex{empty.SetProperty(L"A", std::vector<LONG>{1})}, Hex{WBEM_E_INVALID_OBJECT});
}

TEST_F(CWomClassObjectTest, ThrowsWithTheServicesStatusWhenTheClassCannotBeHad)
{
    CWomClassObject classObject(context);
    const CWomProviderException failure = Thrown([&] { classObject.CreateClass(CComBSTR(L"Zarn_Other")); });
    EXPECT_EQ(Hex{failure.WbemStatus()}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(failure.Text(), L"CWomClassObject::CreateClass");
    EXPECT_EQ(failure.ExtraText(), L"Zarn_Other");
    EXPECT_EQ(classObject.Object(), nullptr);
}

TEST_F(CWomClassObjectTest, ThrowsForAClassWithoutAName)
{
    CWomClassObject classObject(context);
    EXPECT_EQ(Hex{Thrown([&] { classObject.CreateClass(CComBSTR()); }).WbemStatus()}, Hex{WBEM_E_INVALID_CLASS});
    EXPECT_TRUE(services->Lookups().empty());
}

TEST_F(CWomClassObjectTest, ThrowsWhenSpawningFails)
{
    definition->spawn = [](ULONG) { return WBEM_E_ILLEGAL_OPERATION; };
    CWomClassObject instance(context);
    EXPECT_EQ(Hex{Thrown([&] { Spawn(instance); }).WbemStatus()}, Hex{WBEM_E_ILLEGAL_OPERATION});
    EXPECT_EQ(instance.Object(), nullptr);
}

TEST_F(CWomClassObjectTest, ThrowsWhenSpawningFromNothing)
{
    CWomClassObject classObject(context);
    CWomClassObject instance(context);
    EXPECT_EQ(Hex{Thrown([&] { instance.SpawnInstanceFromClass(classObject); }).WbemStatus()},
              Hex{WBEM_E_INVALID_OBJECT});
}

TEST_F(CWomClassObjectTest, IndicatesItsObjectAndLetsGoOfTheSink)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    CWomClassObject instance(context);
    Spawn(instance);
    instance.Indicate(CComPtr<IWbemObjectSink>(sink));
    EXPECT_EQ(sink->Fake(0).p, instance.Object());
    EXPECT_EQ(sink->References(), 1u);
    EXPECT_TRUE(sink->Statuses().empty());
}

TEST_F(CWomClassObjectTest, ThrowsWhatTheSinkAnswersAndGoesOnWithTheNext)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    sink->indicate = [](ULONG n) { return n == 1 ? WBEM_E_FAILED : WBEM_S_NO_ERROR; };
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(Hex{Thrown([&] { instance.Indicate(sink.p); }).WbemStatus()}, Hex{WBEM_E_FAILED});
    EXPECT_FALSE(context.IsCancelled());
    Spawn(instance);
    instance.Indicate(sink.p);
    EXPECT_EQ(sink->Taken(), 1u);
    EXPECT_EQ(sink->References(), 1u);
}

TEST_F(CWomClassObjectTest, MakesNoMoreInstancesOnceTheClientHasCancelled)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    sink->indicate = [](ULONG) { return WBEM_E_CALL_CANCELLED; };
    CWomClassObject instance(context);
    Spawn(instance);
    EXPECT_EQ(Hex{Thrown([&] { instance.Indicate(sink.p); }).WbemStatus()}, Hex{WBEM_E_CALL_CANCELLED});
    EXPECT_TRUE(context.IsCancelled());
    CWomClassObject next(context);
    EXPECT_EQ(Hex{Thrown([&] { Spawn(next); }).WbemStatus()}, Hex{WBEM_E_CALL_CANCELLED});
    EXPECT_EQ(definition->spawned, 1u);
    EXPECT_EQ(sink->IndicateCalls(), 1u);
}

TEST_F(CWomClassObjectTest, ThrowsWhenThereIsNothingToIndicateOrNobodyToTell)
{
    const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
    CWomClassObject instance(context);
    EXPECT_EQ(Hex{Thrown([&] { instance.Indicate(sink.p); }).WbemStatus()}, Hex{WBEM_E_INVALID_OBJECT});
    Spawn(instance);
    EXPECT_EQ(Hex{Thrown([&] { instance.Indicate(nullptr); }).WbemStatus()}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(sink->IndicateCalls(), 0u);
}

} // namespace
} // namespace orl::test
