// PutInstanceAsync: creating and updating.
#include "tests/framework/Fixture.h"

namespace orl::test
{
namespace
{

class PutTest : public ProviderTest
{
protected:
    CComPtr<RecordingSink> Put(LONG flags)
    {
        const CComPtr<RecordingSink> used = sink;
        EXPECT_EQ(Hex{provider->PutInstanceAsync(instance, flags, nullptr, used)}, Hex{WBEM_S_NO_ERROR});
        sink = MakeObject<RecordingSink>();
        return used;
    }

    CComPtr<FakeClassObject> instance = MakeObject<FakeClassObject>(thing);
};

TEST_F(PutTest, UpdatesUnlessTheClientAsksForCreationOnly)
{
    int updates = 0;
    manager->update = [&](CWomClassObject& object, CWomContext&, ULONG_PTR reserved, ScriptedManager::Sink)
    {
        EXPECT_EQ(object.Object(), instance.p);
        EXPECT_EQ(reserved, 0u);
        ++updates;
        return WBEM_S_NO_ERROR;
    };
    manager->create = [](CWomClassObject&, CWomContext&, CComBSTR&, ScriptedManager::Sink)
    {
        ADD_FAILURE() << "created";
        return WBEM_S_NO_ERROR;
    };
    instance->Preset(L"__RELPATH", CComVariant(L"Zarn_Thing.DeviceID=\"X\""));
    for (const LONG flags : {WBEM_FLAG_CREATE_OR_UPDATE, WBEM_FLAG_UPDATE_ONLY})
    {
        const CComPtr<RecordingSink> told = Put(flags);
        EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
        EXPECT_EQ(told->Final().text, L"Zarn_Thing.DeviceID=\"X\"");
        EXPECT_EQ(told->IndicateCalls(), 0u);
    }
    EXPECT_EQ(updates, 2);
}

TEST_F(PutTest, CreatesAndTellsThePathThatTheManagerGave)
{
    manager->create = [&](CWomClassObject& object, CWomContext&, CComBSTR& path, ScriptedManager::Sink)
    {
        EXPECT_EQ(object.Object(), instance.p);
        path = L"Zarn_Thing.DeviceID=\"new\"";
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Put(WBEM_FLAG_CREATE_ONLY);
    EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(told->Final().text, L"Zarn_Thing.DeviceID=\"new\"");
}

TEST_F(PutTest, TellsNoPathOfAFailure)
{
    instance->Preset(L"__RELPATH", CComVariant(L"Zarn_Thing.DeviceID=\"X\""));
    manager->update = [](CWomClassObject&, CWomContext&, ULONG_PTR, ScriptedManager::Sink)
    { return WBEM_E_ACCESS_DENIED; };
    const CComPtr<RecordingSink> told = Put(0);
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_ACCESS_DENIED});
    EXPECT_EQ(told->Final().text, L"");
    EXPECT_EQ(told->Extended(L"ParameterInfo"), L"Zarn_Thing.DeviceID=\"X\"");
}

TEST_F(PutTest, IsNotOfferedByAManagerThatLeavesItOut)
{
    EXPECT_EQ(Hex{Put(0)->Final().result}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(Hex{Put(WBEM_FLAG_CREATE_ONLY)->Final().result}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
}

TEST_F(PutTest, RefusesAnInstanceThatDoesNotTellItsClass)
{
    thing->getFails[L"__CLASS"] = WBEM_E_FAILED;
    const CComPtr<RecordingSink> told = Put(0);
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(told->Extended(L"Description"), L"The instance does not tell its class");
}

TEST_F(PutTest, RefusesAnInstanceOfAClassWithoutAManager)
{
    instance = MakeObject<FakeClassObject>(MakeFakeClass(L"Zarn_Other"));
    const CComPtr<RecordingSink> told = Put(0);
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_CLASS});
    EXPECT_EQ(told->Extended(L"ParameterInfo"), L"Zarn_Other");
}

} // namespace
} // namespace orl::test
