// GetDataFromCimObject: which value a client asked for, as a table of cases for both kinds of setting.

#include "tests/settings/Settings.h"

#include "settings/LeftBehind.h"

namespace orl::test
{
namespace
{

// What a property is when the request is read. The current value is 3, "three".
enum class Given
{
    Nothing, // absent, null or unreadable: all three are tried
    Equal,   // 3 or "three"
    New,     // 5 or "five"
    Other    // 6: new, and not what New is
};

const wchar_t* NumberOf(Given given)
{
    return given == Given::Equal ? L"3" : given == Given::New ? L"5" : L"6";
}
const wchar_t* TextOf(Given given)
{
    return given == Given::Equal ? L"three" : L"five";
}

// The ways to supply nothing.
enum class Missing
{
    Absent,
    Null,
    Unreadable
};
constexpr Missing WaysToMiss[] = {Missing::Absent, Missing::Null, Missing::Unreadable};

constexpr char ConflictLine[] = "ERROR:  Detected multiple changed fields - unable to continue.";
constexpr wchar_t Marker[] = L"TheDisplayValueIsNotSupportedForThisSetting";
constexpr ULONG Failed = 0x80041001;
// What ApplyDisplayValue of the test's settings makes of a text.
constexpr LONG Applied = 50;

struct Read
{
    ULONG status;
    LONG value;
    std::wstring text;
    std::vector<std::wstring> applied;
    bool traced;

    bool operator==(const Read&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Read& read)
{
    stream << std::hex << read.status << std::dec << " value " << read.value << " text \"" << Narrow(read.text)
           << "\" applied";
    for (const std::wstring& text : read.applied)
        stream << " \"" << Narrow(text) << "\"";
    return stream << (read.traced ? " traced" : "");
}

class RequestedValue : public SettingTest
{
protected:
    void AddProperty(FakeClass& definition, Values& values, const wchar_t* name, CIMTYPE type, const wchar_t* value,
                     Missing missing)
    {
        if (value == nullptr && missing == Missing::Absent)
            return;
        definition.properties.emplace_back(name, type);
        if (value != nullptr)
            values.emplace_back(name, CComVariant(value));
        else if (missing == Missing::Unreadable)
            definition.getFails[name] = static_cast<HRESULT>(WBEM_E_TYPE_MISMATCH);
    }

    CComPtr<FakeClassObject> Request(Given current, Given registry, Given display, Missing missing)
    {
        const FakeClassPtr definition = MakeFakeClass(L"Request");
        const auto number = [](Given given) { return given == Given::Nothing ? nullptr : NumberOf(given); };
        Values values;
        AddProperty(*definition, values, L"CurrentValue", CIM_SINT64, number(current), missing);
        AddProperty(*definition, values, L"RegistryValue", CIM_SINT64, number(registry), missing);
        AddProperty(*definition, values, L"DisplayValue", CIM_STRING,
                    display == Given::Nothing ? nullptr : TextOf(display), missing);
        CComPtr<FakeClassObject> object;
        object.Attach(new FakeClassObject(definition));
        for (const auto& [name, value] : values)
            object->Preset(name, value);
        return object;
    }

    Read Ask(CKfgSettingMgrRoot& manager, IWbemClassObject* request, const ORL_SETTING* setting, int displayUnsupported)
    {
        adapterAgent.log.applied.clear();
        const TraceCapture trace;
        CWomContext context(services);
        CWomClassObject source(context, request);
        ORL_SETTING_VAL_INT* made = nullptr;
        const HRESULT result = manager.GetDataFromCimObject(source, &made, setting, displayUnsupported);
        const SettingValuePtr value(made);
        EXPECT_NE(value, nullptr) << "a value is handed out whatever the result";
        const std::vector<std::string> messages = trace.Messages();
        return {static_cast<ULONG>(result), value->Value, value->DisplayValue, adapterAgent.log.applied,
                std::count(messages.begin(), messages.end(), ConflictLine) == 1};
    }

    // Both kinds of setting, current value 3, "three".
    struct Kind
    {
        CKfgSettingMgrRoot& manager;
        std::unique_ptr<ORL_SETTING> setting;
        bool numberIsItsText;
    };
    std::vector<Kind> Kinds()
    {
        auto choice = std::make_unique<TestEnumSetting>(adapterAgent.log);
        choice->CurrentValue = 3;
        choice->CurrentDisplayValue = L"three";
        auto number = std::make_unique<TestIntSetting>(adapterAgent.log);
        number->Current = 3;
        number->CurrentDisplayValue = L"three";
        std::vector<Kind> kinds;
        kinds.push_back({enumManager, std::move(choice), false});
        kinds.push_back({intManager, std::move(number), true});
        return kinds;
    }
};

// A row of the tables: `value` and `text` are what is handed out. "#" stands for the number's digits with an integer
// and for an empty text with an enumeration.
struct Row
{
    Given current;
    Given registry;
    Given display;
    bool succeeds;
    LONG value;
    const wchar_t* text;
};

Read Expected(const Row& row, bool numberIsItsText, bool applies)
{
    Read read;
    read.status = row.succeeds ? 0 : Failed;
    read.value = row.value;
    read.text = row.text == std::wstring(L"#") ? (numberIsItsText ? std::to_wstring(row.value) : L"") : row.text;
    if (applies)
        read.applied = {L"five"};
    read.traced = !row.succeeds;
    return read;
}

std::string Name(const Row& row, const char* kind, Missing missing)
{
    const char* names[] = {"nothing", "equal", "new", "other"};
    const char* ways[] = {"absent", "null", "unreadable"};
    return std::string(kind) + ": CurrentValue " + names[static_cast<int>(row.current)] + ", RegistryValue " +
           names[static_cast<int>(row.registry)] + ", DisplayValue " + names[static_cast<int>(row.display)] +
           ", nothing means " + ways[static_cast<int>(missing)];
}

using enum Given;

constexpr Row WithSetting[] = {
    // CurrentValue, RegistryValue, DisplayValue
    {Nothing, Nothing, Nothing, false, 3, L"#"},
    {Nothing, Nothing, Equal, true, 3, L"three"},
    {Nothing, Nothing, New, true, Applied, L"five"},
    {Nothing, Equal, Nothing, true, 3, L"#"},
    {Nothing, Equal, Equal, true, 3, L"three"},
    {Nothing, Equal, New, true, Applied, L"five"},
    {Nothing, New, Nothing, true, 5, L""},
    {Nothing, New, Equal, true, 5, L""},
    {Nothing, New, New, true, Applied, L"five"},
    {Equal, Nothing, Nothing, true, 3, L"#"},
    {Equal, Nothing, Equal, true, 3, L"three"},
    {Equal, Nothing, New, true, Applied, L"five"},
    {Equal, Equal, Nothing, true, 3, L"#"},
    {Equal, Equal, Equal, true, 3, L"three"},
    {Equal, Equal, New, true, Applied, L"five"},
    {Equal, New, Nothing, true, 5, L""},
    {Equal, New, Equal, true, 5, L""},
    {Equal, New, New, true, Applied, L"five"},
    {New, Nothing, Nothing, true, 5, L""},
    {New, Nothing, Equal, true, 5, L""},
    {New, Nothing, New, true, Applied, L"five"},
    {New, Equal, Nothing, true, 5, L""},
    {New, Equal, Equal, true, 5, L""},
    {New, Equal, New, true, Applied, L"five"},
    {New, New, Nothing, true, 5, L""},
    {New, New, Equal, true, 5, L""},
    {New, New, New, true, Applied, L"five"},
    // Two new values that differ: the only conflict there is. The value holds what was read last.
    {New, Other, Nothing, false, 6, L""},
    {New, Other, Equal, false, 6, L""},
    {New, Other, New, false, Applied, L"five"},
};

TEST_F(RequestedValue, IsWorkedOutFromWhatDiffersFromTheSetting)
{
    for (const Kind& kind : Kinds())
        for (const Row& row : WithSetting)
            for (const Missing missing : WaysToMiss)
            {
                const auto request = Request(row.current, row.registry, row.display, missing);
                EXPECT_EQ(Ask(kind.manager, request, kind.setting.get(), 0),
                          Expected(row, kind.numberIsItsText, row.display == New))
                    << Name(row, kind.numberIsItsText ? "integer" : "enumeration", missing);
            }
}

// Nothing is a change then, and nothing conflicts: the last number read goes with the text.
constexpr Row WithoutSetting[] = {
    {Nothing, Nothing, Nothing, false, 0, L"#"}, {Nothing, Nothing, New, true, 0, L"five"},
    {Nothing, Other, Nothing, true, 6, L"#"},    {Nothing, Other, New, true, 6, L"five"},
    {New, Nothing, Nothing, true, 5, L"#"},      {New, Nothing, New, true, 5, L"five"},
    {New, Other, Nothing, true, 6, L"#"},        {New, Other, New, true, 6, L"five"},
};

TEST_F(RequestedValue, IsWhatWasReadLastWithoutASetting)
{
    for (const Kind& kind : Kinds())
        for (const Row& row : WithoutSetting)
            for (const Missing missing : WaysToMiss)
            {
                const auto request = Request(row.current, row.registry, row.display, missing);
                EXPECT_EQ(Ask(kind.manager, request, nullptr, 0), Expected(row, kind.numberIsItsText, false))
                    << Name(row, kind.numberIsItsText ? "integer" : "enumeration", missing);
            }
}

// A client may name a setting of one kind in the class of the other. Its fields are not this kind's.
TEST_F(RequestedValue, TakesASettingOfAnotherKindForNone)
{
    const std::vector<Kind> kinds = Kinds();
    const TestOtherSetting other(adapterAgent.log);
    const struct
    {
        CKfgSettingMgrRoot& manager;
        const ORL_SETTING* setting;
        bool numberIsItsText;
    } cases[] = {{enumManager, kinds[1].setting.get(), false},
                 {intManager, kinds[0].setting.get(), true},
                 {enumManager, &other, false},
                 {intManager, &other, true}};
    for (const auto& row : cases)
        for (const Row& asked : WithoutSetting)
        {
            const auto request = Request(asked.current, asked.registry, asked.display, Missing::Absent);
            EXPECT_EQ(Ask(row.manager, request, row.setting, 0), Expected(asked, row.numberIsItsText, false))
                << Name(asked, row.numberIsItsText ? "integer" : "enumeration", Missing::Absent);
        }
}

// Only CurrentValue is read then, and nothing is refused.
TEST_F(RequestedValue, IsTheNumberAloneWhereDisplayValuesAreUnsupported)
{
    const struct
    {
        Given current;
        LONG withSetting;
        LONG without;
    } cases[] = {{Nothing, 3, 0}, {Equal, 3, 3}, {New, 5, 5}};
    for (const Kind& kind : Kinds())
        for (const auto& row : cases)
            for (const Given registry : {Nothing, Equal, New, Other})
                for (const Given display : {Nothing, Equal, New})
                    for (const Missing missing : WaysToMiss)
                    {
                        const Row named{row.current, registry, display, true, 0, L""};
                        SCOPED_TRACE(Name(named, kind.numberIsItsText ? "integer" : "enumeration", missing));
                        const auto request = Request(row.current, registry, display, missing);
                        EXPECT_EQ(Ask(kind.manager, request, kind.setting.get(), 1),
                                  (Read{0, row.withSetting, Marker, {}, false}));
                        EXPECT_EQ(Ask(kind.manager, request, nullptr, -1), (Read{0, row.without, Marker, {}, false}));
                    }
}

// A read that runs out of memory is the one that shows.
TEST_F(RequestedValue, DoesNotReadWhatDoesNotCountWhereDisplayValuesAreUnsupported)
{
    for (const wchar_t* unread : {L"RegistryValue", L"DisplayValue"})
    {
        SCOPED_TRACE(Narrow(unread));
        const FakeClassPtr definition = MakeFakeClass(L"Request");
        definition->getFails[unread] = static_cast<HRESULT>(WBEM_E_OUT_OF_MEMORY);
        for (const bool supplied : {false, true})
        {
            CComPtr<FakeClassObject> request;
            request.Attach(new FakeClassObject(definition));
            if (supplied)
                request->Preset(L"CurrentValue", CComVariant(L"5"));
            for (const Kind& kind : Kinds())
            {
                EXPECT_EQ(Ask(kind.manager, request, kind.setting.get(), 1),
                          (Read{0, supplied ? 5 : 3, Marker, {}, false}));
                EXPECT_THROW(Ask(kind.manager, request, kind.setting.get(), 0), CAtlException);
            }
        }
    }
}

TEST_F(RequestedValue, CountsTheLowerThirtyTwoBits)
{
    const struct
    {
        const wchar_t* given;
        LONG value;
    } cases[] = {
        {L"4294967301", 5}, {L"4294967295", -1}, {L"-5", -5}, {L"2147483648", -2147483647 - 1}, {L"4294967299", 3}};
    for (const Kind& kind : Kinds())
        for (const auto& row : cases)
        {
            const auto request = Object({{L"CurrentValue", CComVariant(row.given)}});
            const Read read = Ask(kind.manager, request, kind.setting.get(), 0);
            EXPECT_EQ(read.status, 0U);
            EXPECT_EQ(read.value, row.value) << Narrow(row.given);
        }
}

TEST_F(RequestedValue, OfAnIntegerCarriesTheWholeNumberAsText)
{
    TestIntSetting setting(adapterAgent.log);
    for (const LONG number : {-2147483647 - 1, -10, 0, 2147483647})
    {
        setting.Current = number;
        const auto request = Object({{L"CurrentValue", CComVariant(std::to_wstring(number).c_str())}});
        EXPECT_EQ(Ask(intManager, request, &setting, 0), (Read{0, number, std::to_wstring(number), {}, false}));
    }
}

TEST_F(RequestedValue, ComparesTextsLetterForLetter)
{
    for (const Kind& kind : Kinds())
    {
        const auto request = Object({{L"DisplayValue", CComVariant(L"Three")}});
        EXPECT_EQ(Ask(kind.manager, request, kind.setting.get(), 0), (Read{0, Applied, L"Three", {L"Three"}, false}));
    }
}

// The text sees the number that was asked for beside it.
TEST_F(RequestedValue, ApplyDisplayValueHasTheLastWord)
{
    for (const Kind& kind : Kinds())
    {
        adapterAgent.log.appliedNumber = 3;
        const auto request = Request(New, Nothing, New, Missing::Absent);
        EXPECT_EQ(Ask(kind.manager, request, kind.setting.get(), 0), (Read{0, 3, L"five", {L"five"}, false}));
    }
}

class PerformanceProfile : public RequestedValue
{
protected:
    PerformanceProfile()
    {
        setting.Caption = L"PerformanceProfile";
        setting.CurrentValue = 2;
        setting.CurrentDisplayValue = L"StandardServer";
    }

    Read AskFor(const wchar_t* text)
    {
        return Ask(enumManager, Object({{L"DisplayValue", CComVariant(text)}}), &setting, 0);
    }

    TestEnumSetting setting{adapterAgent.log};
};

TEST_F(PerformanceProfile, KnowsTheNumberOfEveryProfile)
{
    const struct
    {
        const wchar_t* text;
        LONG code;
    } cases[] = {{L"WebServer", 3},
                 {L"VirtualizationServer", 5},
                 {L"StorageServer", 4},
                 {L"Storage+VirtualizationServer", 7},
                 {L"LowLatency", 6}};
    for (const auto& row : cases)
        EXPECT_EQ(AskFor(row.text), (Read{0, row.code, L"", {}, false})) << Narrow(row.text);
}

// No change is counted, so the value carries what was read.
TEST_F(PerformanceProfile, OfTheCurrentNumberIsNoChange)
{
    EXPECT_EQ(AskFor(L"StandardServer"), (Read{0, 2, L"StandardServer", {}, false}));
    setting.CurrentValue = 6;
    EXPECT_EQ(AskFor(L"LowLatency"), (Read{0, 6, L"LowLatency", {}, false}));
}

TEST_F(PerformanceProfile, IsKnownByItsCaptionInAnyCase)
{
    setting.Caption = L"PERFORMANCEprofile";
    EXPECT_EQ(AskFor(L"LowLatency"), (Read{0, 6, L"", {}, false}));
}

TEST_F(PerformanceProfile, OfAnyOtherWritingGoesToTheSetting)
{
    EXPECT_EQ(AskFor(L"lowlatency"), (Read{0, Applied, L"lowlatency", {L"lowlatency"}, false}));
    EXPECT_EQ(AskFor(L"LowLatency "), (Read{0, Applied, L"LowLatency ", {L"LowLatency "}, false}));
    EXPECT_EQ(AskFor(L""), (Read{0, Applied, L"", {L""}, false}));
}

TEST_F(PerformanceProfile, IsNoProfileOfAnotherSetting)
{
    for (const wchar_t* caption : {L"PerformanceProfile2", L"Performance", L""})
    {
        setting.Caption = caption;
        // The name does not count, the caption does.
        setting.Name = L"PerformanceProfile";
        EXPECT_EQ(AskFor(L"LowLatency"), (Read{0, Applied, L"LowLatency", {L"LowLatency"}, false}));
    }
}

TEST_F(PerformanceProfile, ReplacesTheNumberThatWasAskedForBesideIt)
{
    const auto request =
        Object({{L"CurrentValue", CComVariant(L"5")}, {L"DisplayValue", CComVariant(L"StandardServer")}});
    EXPECT_EQ(Ask(enumManager, request, &setting, 0), (Read{0, 2, L"", {}, false}));
}

TEST_F(PerformanceProfile, IsNotKnownWithoutASettingOrAmongIntegers)
{
    const auto request = Object({{L"DisplayValue", CComVariant(L"LowLatency")}});
    EXPECT_EQ(Ask(enumManager, request, nullptr, 0), (Read{0, 0, L"LowLatency", {}, false}));
    TestIntSetting number(adapterAgent.log);
    number.Caption = L"PerformanceProfile";
    EXPECT_EQ(Ask(intManager, request, &number, 0), (Read{0, Applied, L"LowLatency", {L"LowLatency"}, false}));
}

TEST_F(RequestedValue, TracesItsScope)
{
    const auto request = Object({{L"CurrentValue", CComVariant(L"5")}});
    CWomContext context(services);
    CWomClassObject source(context, request);
    const TraceCapture trace;
    for (CKfgSettingMgrRoot* manager :
         {static_cast<CKfgSettingMgrRoot*>(&enumManager), static_cast<CKfgSettingMgrRoot*>(&intManager)})
    {
        ORL_SETTING_VAL_INT* made = nullptr;
        manager->GetDataFromCimObject(source, &made, nullptr, 0);
        const SettingValuePtr value(made);
    }
    EXPECT_EQ(trace.TieredMessages(), (std::vector<std::string>{"1 ENTRY:  CKfgSettingEnumMgr::GetDataFromCimObject",
                                                                "1 EXIT:  CKfgSettingEnumMgr::GetDataFromCimObject",
                                                                "1 ENTRY:  CKfgSettingIntMgr::GetDataFromCimObject",
                                                                "1 EXIT:  CKfgSettingIntMgr::GetDataFromCimObject"}));
}

} // namespace
} // namespace orl::test
