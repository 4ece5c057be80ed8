// Where the texts of an object lie, and what a class remembers of its instances.
#include "tests/host/Fixture.h"

#include "host/ClassObject.h"

#include <functional>
#include <optional>
#include <utility>

namespace orl::test
{
namespace
{

class HostObjectBody : public HostTest
{
protected:
    const ClassDef& LampClass() { return ClassObject::From(GetClass(L"Test_Lamp"))->Class(); }
    Ref<ObjectBody> NewLamp() { return LampClass().Prototype()->Copy(ObjectBody::Genus::Instance); }
    std::size_t Index(const wchar_t* name) { return LampClass().FindProperty(name); }

    // An instance that had a text of so many characters, its end counted.
    void LampOf(std::size_t characters)
    {
        const Ref<ObjectBody> lamp = NewLamp();
        lamp->SetText(Index(L"Name"), wbem::CimType::String, std::wstring(characters - 1, L'x'));
        lamp->TellRoomOfTexts();
    }
};

bool LiesIn(const ObjectBody& body, std::wstring_view text, std::size_t room)
{
    const std::less<const void*> before;
    const char* const first = reinterpret_cast<const char*>(&body);
    const char* const end = first + sizeof body + body.Count() * sizeof(wbem::CimValue) + wbem::TextBlock::Size(room);
    return !before(text.data(), first) && before(text.data(), end);
}

TEST_F(HostObjectBody, TheFirstInstancesTextsLieApartAndThoseOfTheNextInTheBody)
{
    const std::size_t name = Index(L"Name");
    EXPECT_EQ(0U, LampClass().UsualTextRoom());
    {
        const Ref<ObjectBody> first = NewLamp();
        first->SetText(name, wbem::CimType::String, L"desk");
        EXPECT_EQ(L"desk", (*first)[name].AsText());
        EXPECT_FALSE(LiesIn(*first, (*first)[name].AsText(), 64));
        first->TellRoomOfTexts();
    }
    EXPECT_EQ(64U, LampClass().UsualTextRoom());
    const Ref<ObjectBody> second = NewLamp();
    second->SetText(name, wbem::CimType::String, L"floor");
    EXPECT_EQ(L"floor", (*second)[name].AsText());
    EXPECT_TRUE(LiesIn(*second, (*second)[name].AsText(), 64));
}

TEST_F(HostObjectBody, ATextThatFindsNoRoomLiesApart)
{
    LampOf(5);
    const std::size_t name = Index(L"Name");
    const Ref<ObjectBody> lamp = NewLamp();
    const std::wstring longName(200, L'n');
    lamp->SetText(name, wbem::CimType::String, longName);
    EXPECT_EQ(longName, (*lamp)[name].AsText());
    EXPECT_FALSE(LiesIn(*lamp, (*lamp)[name].AsText(), 64));
}

TEST_F(HostObjectBody, AnObjectThatIsWrittenToForEverDoesNotGrowForEver)
{
    LampOf(64);
    const std::size_t name = Index(L"Name");
    const Ref<ObjectBody> lamp = NewLamp();
    std::size_t inside = 0;
    for (int i = 0; i < 10000; ++i)
    {
        const std::wstring text = std::to_wstring(i);
        lamp->SetText(name, wbem::CimType::String, text);
        ASSERT_EQ(text, (*lamp)[name].AsText());
        inside += LiesIn(*lamp, (*lamp)[name].AsText(), 64);
    }
    EXPECT_EQ(24U, inside)
        << "ten of two characters and fourteen of three leave 2 of 64; one of three more does not fit";
}

TEST_F(HostObjectBody, ValuesTakenFromABodyOutliveIt)
{
    LampOf(40);
    const std::size_t name = Index(L"Name");
    wbem::CimValue taken;
    Ref<ObjectBody> copy;
    {
        const Ref<ObjectBody> lamp = NewLamp();
        lamp->SetText(name, wbem::CimType::String, L"the desk's");
        taken = (*lamp)[name];
        copy = lamp->Copy(ObjectBody::Genus::Instance);
    }
    EXPECT_EQ(L"the desk's", taken.AsText());
    EXPECT_EQ(L"the desk's", (*copy)[name].AsText());
    copy->SetText(name, wbem::CimType::String, L"another");
    EXPECT_EQ(L"the desk's", taken.AsText());
}

TEST_F(HostObjectBody, ViewsOfOneObjectThatAreWrittenToKeepTheirOwnTexts)
{
    LampOf(40);
    const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
    CComVariant desk(L"desk");
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->Put(L"Name", 0, &desk, 0));
    CComPtr<IWbemClassObject> clone;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->Clone(&clone));
    CComVariant name(L"floor");
    ASSERT_EQ(WBEM_S_NO_ERROR, clone->Put(L"Name", 0, &name, 0));
    CComVariant ofLamp;
    CComVariant ofClone;
    ASSERT_EQ(WBEM_S_NO_ERROR, lamp->Get(L"Name", 0, &ofLamp, nullptr, nullptr));
    ASSERT_EQ(WBEM_S_NO_ERROR, clone->Get(L"Name", 0, &ofClone, nullptr, nullptr));
    EXPECT_STREQ(L"desk", ofLamp.bstrVal);
    EXPECT_STREQ(L"floor", ofClone.bstrVal);
}

TEST_F(HostObjectBody, AProvidersInstancesTellTheirClassWhatRoomTheyTake)
{
    ServeLamps({std::wstring(100, L'l')});
    CComPtr<IEnumWbemClassObject> found;
    ASSERT_EQ(WBEM_S_NO_ERROR,
              Service().CreateInstanceEnum(CComBSTR(L"Test_Lamp"), WBEM_FLAG_SHALLOW, nullptr, &found));
    EXPECT_EQ(1U, Drain(found, L"Name").size());
    EXPECT_EQ(128U, LampClass().UsualTextRoom());
}

TEST_F(HostObjectBody, AnObjectMayOutliveItsClass)
{
    std::optional<ClassDef> lamps(std::in_place, wbem::MofClass(LampClass().Declaration()), nullptr,
                                  LampClass().InNamespace());
    lamps->NoteTextRoom(40);
    const Ref<ObjectBody> lamp = lamps->Prototype()->Copy(ObjectBody::Genus::Instance);
    lamp->SetText(lamps->FindProperty(L"Name"), wbem::CimType::String, L"the last words");
    const CComPtr<ClassObject> view = MakeObject<ClassObject>(lamp);
    lamps.reset();
    EXPECT_TRUE(lamp->IsShared()) << "its end, which follows, is what the address sanitizer looks at";
}

TEST_F(HostObjectBody, ClassesHaveNoRoomForTexts)
{
    LampOf(64);
    const Ref<ObjectBody> lampClass = LampClass().Prototype()->Copy(ObjectBody::Genus::Class);
    const std::size_t name = Index(L"Name");
    lampClass->SetText(name, wbem::CimType::String, L"a default");
    EXPECT_EQ(L"a default", (*lampClass)[name].AsText());
    EXPECT_FALSE(LiesIn(*lampClass, (*lampClass)[name].AsText(), 64));
}

struct RoomCase
{
    std::vector<std::size_t> taken; // by one instance after the other
    std::size_t usual;              // what the class then makes room for
};

TEST_F(HostObjectBody, AClassMakesRoomForWhatItsInstancesTook)
{
    const RoomCase cases[] = {
        {{1}, 64},
        {{64}, 64},
        {{65}, 128},
        {{65, 10}, 128},           // one with less changes nothing
        {{200, 300, 250}, 320},    // the most counts
        {{1000, 10}, 512},         // much less halves it
        {{1000, 10, 10, 10}, 256}, // down to four times what is taken
        {{1024}, 1024},
        {{100000}, 1024}, // one object's long text is not every object's room
    };
    for (const RoomCase& each : cases)
    {
        // Another class each time: a class does not forget.
        const ClassDef lamps(wbem::MofClass(LampClass().Declaration()), nullptr, LampClass().InNamespace());
        for (const std::size_t taken : each.taken)
            lamps.NoteTextRoom(taken);
        EXPECT_EQ(each.usual, lamps.UsualTextRoom()) << ::testing::PrintToString(each.taken);
    }
}

// Found by name in whatever order they are asked for, with what was asked before as a hint.
TEST_F(HostObjectBody, PropertiesAreFoundInAnyOrder)
{
    const ClassDef& lamps = LampClass();
    const std::vector<std::vector<const wchar_t*>> orders = {{L"Name", L"Watts", L"Name", L"Hours"},
                                                             {L"Watts", L"Name", L"Watts", L"Hours", L"Watts", L"Name"},
                                                             {L"name", L"WATTS", L"Name", L"watts"},
                                                             {L"Name", L"Nothing", L"Watts"}};
    for (int round = 0; round < 3; ++round)
    {
        for (const auto& order : orders)
        {
            std::size_t last = ClassDef::kNotFound;
            for (const wchar_t* name : order)
            {
                const std::size_t found = lamps.FindPropertyAfter(last, name);
                EXPECT_EQ(lamps.FindProperty(name), found);
                if (found != ClassDef::kNotFound)
                    last = found;
            }
        }
    }
}

} // namespace
} // namespace orl::test
