// ExecMethodAsync: what a method is given, and what the client gets back.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

using ::testing::ElementsAre;

class MethodTest : public ProviderTest
{
protected:
    MethodTest()
    {
        thing->methods[L"Create"] = {MakeFakeClass(L"In", {{L"Name", CIM_STRING}}),
                                     MakeFakeClass(L"Out", {{L"Path", CIM_STRING}, {L"ReturnValue", CIM_UINT32}})};
        thing->methods[L"Silent"] = {nullptr, nullptr};
    }

    CComPtr<RecordingSink> Call(const wchar_t* method, IWbemClassObject* in = nullptr,
                                const wchar_t* path = L"Zarn_Thing.DeviceID=\"X\"")
    {
        const CComPtr<RecordingSink> used = sink;
        EXPECT_EQ(Hex{provider->ExecMethodAsync(CComBSTR(path), CComBSTR(method), 0, nullptr, in, used)},
                  Hex{WBEM_S_NO_ERROR});
        sink = MakeObject<RecordingSink>();
        return used;
    }
};

TEST_F(MethodTest, HandsInParametersToTheManagerAndItsOutParametersToTheClient)
{
    const CComPtr<FakeClassObject> in = MakeObject<FakeClassObject>(thing->methods[L"Create"].first);
    in->Preset(L"Name", CComVariant(L"given"));
    manager->method = [](ScriptedManager::Path& path, const wchar_t* name, CWomContext&, CWomClassObject& given,
                         CWomClassObject& out, ScriptedManager::Sink)
    {
        CComBSTR text;
        EXPECT_EQ(given.GetProperty(L"Name", text), WBEM_S_NO_ERROR);
        EXPECT_STREQ(text.m_str, L"given");
        EXPECT_STREQ(name, L"cReAtE");
        EXPECT_EQ(path.GetKeyRef(L"DeviceID")->Text(), L"X");
        out.SetProperty(L"Path", L"made");
        return out.SetPropertyUint32(L"ReturnValue", 0);
    };
    const CComPtr<RecordingSink> told = Call(L"cReAtE", in);
    EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
    ASSERT_EQ(told->Taken(), 1u);
    EXPECT_EQ(told->Fake(0)->Definition()->name, L"Out");
    EXPECT_THAT(told->Fake(0)->Puts(),
                ElementsAre(FakePut{L"Path", L"made", VT_BSTR}, FakePut{L"ReturnValue", L"0", VT_I4}));
}

TEST_F(MethodTest, GivesTheManagerEmptyInParametersWhenTheClientSendsNone)
{
    manager->method = [](ScriptedManager::Path&, const wchar_t*, CWomContext&, CWomClassObject& in,
                         CWomClassObject& out, ScriptedManager::Sink)
    {
        CComBSTR text;
        EXPECT_EQ(in.GetProperty(L"Name", text), WBEM_S_NO_ERROR);
        EXPECT_EQ(text.m_str, nullptr);
        return out.SetPropertyUint32(L"ReturnValue", 0);
    };
    EXPECT_EQ(Call(L"Create")->Taken(), 1u);
}

TEST_F(MethodTest, SendsTheOutParametersOfEverySuccessAndOfNoFailure)
{
    for (const auto& [status, sent] :
         {std::pair{WBEM_S_NO_ERROR, 1u}, std::pair{WBEM_S_FALSE, 1u}, std::pair{WBEM_E_METHOD_NOT_IMPLEMENTED, 0u}})
    {
        manager->method = [status = status](ScriptedManager::Path&, const wchar_t*, CWomContext&, CWomClassObject&,
                                            CWomClassObject&, ScriptedManager::Sink) { return status; };
        const CComPtr<RecordingSink> told = Call(L"Create");
        EXPECT_EQ(Hex{told->Final().result}, Hex{status});
        EXPECT_EQ(told->Taken(), sent);
        EXPECT_EQ(told->References(), 1u);
    }
}

TEST_F(MethodTest, SendsNothingForAMethodWithoutOutParameters)
{
    manager->method = [](ScriptedManager::Path&, const wchar_t*, CWomContext&, CWomClassObject& in,
                         CWomClassObject& out, ScriptedManager::Sink)
    {
        EXPECT_EQ(in.Object(), nullptr);
        EXPECT_EQ(out.Object(), nullptr);
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Call(L"Silent");
    EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(told->IndicateCalls(), 0u);
}

TEST_F(MethodTest, LetsTheManagerAnswerForAMethodThatTheClassDoesNotDeclare)
{
    manager->method = [](ScriptedManager::Path&, const wchar_t* name, CWomContext&, CWomClassObject&,
                         CWomClassObject& out, ScriptedManager::Sink)
    {
        EXPECT_STREQ(name, L"Unknown");
        EXPECT_EQ(Hex{out.SetPropertyUint32(L"ReturnValue", 0)}, Hex{WBEM_E_INVALID_OBJECT});
        return WBEM_E_METHOD_NOT_IMPLEMENTED;
    };
    EXPECT_EQ(Hex{Call(L"Unknown")->Final().result}, Hex{WBEM_E_METHOD_NOT_IMPLEMENTED});
}

TEST_F(MethodTest, IsNotOfferedByAManagerWithoutMethods)
{
    EXPECT_EQ(Hex{Call(L"Create")->Final().result}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
}

TEST_F(MethodTest, ReachesAStaticMethodByTheClassPath)
{
    manager->method = [](ScriptedManager::Path& path, const wchar_t*, CWomContext&, CWomClassObject&,
                         CWomClassObject& out, ScriptedManager::Sink)
    {
        EXPECT_TRUE(path.Keys().empty());
        return out.SetPropertyUint32(L"ReturnValue", 0);
    };
    EXPECT_EQ(Call(L"Create", nullptr, L"Zarn_Thing")->Taken(), 1u);
}

TEST_F(MethodTest, IsRefusedWithoutAName)
{
    for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L""})
    {
        const CComPtr<RecordingSink> told = Call(name);
        EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_PARAMETER});
        EXPECT_EQ(told->Extended(L"Description"), L"The call does not name a method");
    }
}

TEST_F(MethodTest, DoesNotRunWhenItsParametersCannotBeMade)
{
    thing->methods[L"Create"].second->spawn = [](ULONG) { return WBEM_E_FAILED; };
    manager->method = [](ScriptedManager::Path&, const wchar_t*, CWomContext&, CWomClassObject&, CWomClassObject&,
                         ScriptedManager::Sink)
    {
        ADD_FAILURE() << "the method ran";
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Call(L"Create");
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_FAILED});
    EXPECT_EQ(told->Extended(L"Description"), L"The method's parameters cannot be made");
}

TEST_F(MethodTest, DoesNotRunWhenTheClassCannotBeHad)
{
    services->before = [](const std::wstring& name)
    { return name == L"Zarn_Thing" ? WBEM_E_TRANSPORT_FAILURE : WBEM_S_NO_ERROR; };
    const CComPtr<RecordingSink> told = Call(L"Create");
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_TRANSPORT_FAILURE});
    EXPECT_EQ(told->Extended(L"Description"), L"The service does not give the definition of the class Zarn_Thing");
}

TEST_F(MethodTest, EndsWithTheRefusalOfAClientThatDoesNotTakeTheOutParameters)
{
    sink->indicate = [](ULONG) { return WBEM_E_TYPE_MISMATCH; };
    manager->method = [](ScriptedManager::Path&, const wchar_t*, CWomContext&, CWomClassObject&, CWomClassObject&,
                         ScriptedManager::Sink) { return WBEM_S_NO_ERROR; };
    EXPECT_EQ(Hex{Call(L"Create")->Final().result}, Hex{WBEM_E_TYPE_MISMATCH});
}

} // namespace
} // namespace orl::test
