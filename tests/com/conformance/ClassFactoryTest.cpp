// How a server hands out its factories, what they make, and when it may be unloaded.

#include "tests/com/conformance/LoadedServer.h"

#include <gtest/gtest.h>

namespace orl::test
{
namespace
{

class ClassFactory : public ::testing::TestWithParam<ServedClass>
{
protected:
    ClassFactory() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    ~ClassFactory() override { CoUninitialize(); }

    // Refused, with nothing left in the place for the answer, and nothing that keeps the server.
    void ExpectRefusal(HRESULT expected, HRESULT answer, const void* object) const
    {
        EXPECT_EQ(answer, expected);
        EXPECT_EQ(object, nullptr);
    }

    const ServedClass& served = GetParam();
    const LoadedServer server{served.library};
};

TEST_P(ClassFactory, ClassThatIsNotServedIsNotAvailable)
{
    for (const IID* iid : {&IID_IClassFactory, &IID_IUnknown, served.foreign})
    {
        void* object = this;
        const HRESULT answer = server.GetClassObject(UnknownClass, *iid, &object);
        ExpectRefusal(CLASS_E_CLASSNOTAVAILABLE, answer, object);
    }
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
}

TEST_P(ClassFactory, HasOnlyItsOwnInterfaces)
{
    for (const IID* iid : {served.interfaces.back().iid, served.foreign})
    {
        void* object = this;
        const HRESULT answer = server.GetClassObject(*served.clsid, *iid, &object);
        ExpectRefusal(E_NOINTERFACE, answer, object);
    }
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
}

TEST_P(ClassFactory, NullPlaceForTheAnswerIsRefused)
{
    EXPECT_EQ(server.GetClassObject(*served.clsid, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(server.GetClassObject(UnknownClass, IID_IClassFactory, nullptr), E_POINTER);
    const CComPtr<IClassFactory> factory = server.Factory(*served.clsid);
    ASSERT_NE(factory.p, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(References(factory), 1U);
}

TEST_P(ClassFactory, MakesTheObjectWithEveryInterfaceOfTheClass)
{
    const CComPtr<IClassFactory> factory = server.Factory(*served.clsid);
    ASSERT_NE(factory.p, nullptr);
    for (const ServedInterface& offered : served.interfaces)
    {
        SCOPED_TRACE(offered.name);
        CComPtr<IUnknown> made;
        ASSERT_EQ(factory->CreateInstance(nullptr, *offered.iid, reinterpret_cast<void**>(&made.p)), S_OK);
        EXPECT_EQ(References(made), 1U);
    }
}

TEST_P(ClassFactory, EveryObjectIsItsOwn)
{
    const CComPtr<IUnknown> first = server.Make<IUnknown>(*served.clsid);
    const CComPtr<IUnknown> second = server.Make<IUnknown>(*served.clsid);
    ASSERT_TRUE(first != nullptr && second != nullptr);
    EXPECT_FALSE(first.IsEqualObject(second));
}

TEST_P(ClassFactory, ObjectWithoutTheInterfaceIsNotLeft)
{
    {
        const CComPtr<IClassFactory> factory = server.Factory(*served.clsid);
        ASSERT_NE(factory.p, nullptr);
        void* object = this;
        const HRESULT answer = factory->CreateInstance(nullptr, *served.foreign, &object);
        ExpectRefusal(E_NOINTERFACE, answer, object);
        EXPECT_EQ(References(factory), 1U);
    }
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
}

TEST_P(ClassFactory, RefusesAggregation)
{
    const CComPtr<IClassFactory> factory = server.Factory(*served.clsid);
    ASSERT_NE(factory.p, nullptr);
    const CComPtr<IUnknown> outer = server.Make<IUnknown>(*served.clsid);
    ASSERT_NE(outer.p, nullptr);
    for (const IID* iid : {&IID_IUnknown, served.interfaces.back().iid})
    {
        void* object = this;
        const HRESULT answer = factory->CreateInstance(outer, *iid, &object);
        ExpectRefusal(CLASS_E_NOAGGREGATION, answer, object);
    }
    EXPECT_EQ(References(outer), 1U);
}

TEST_P(ClassFactory, FactoryObjectsAndLocksKeepTheServer)
{
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
    CComPtr<IClassFactory> factory = server.Factory(*served.clsid);
    ASSERT_NE(factory.p, nullptr);
    EXPECT_EQ(server.CanUnloadNow(), S_FALSE) << "a factory";

    CComPtr<IUnknown> object;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&object.p)), S_OK);
    factory.Release();
    EXPECT_EQ(server.CanUnloadNow(), S_FALSE) << "an object";
    object.Release();
    EXPECT_EQ(server.CanUnloadNow(), S_OK);

    factory = server.Factory(*served.clsid);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Release();
    EXPECT_EQ(server.CanUnloadNow(), S_FALSE) << "two locks";
    factory = server.Factory(*served.clsid);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Release();
    EXPECT_EQ(server.CanUnloadNow(), S_FALSE) << "one lock";
    factory = server.Factory(*served.clsid);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Release();
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
}

TEST_P(ClassFactory, ObjectOutlivesItsFactory)
{
    const CComPtr<IUnknown> object = server.Make<IUnknown>(*served.clsid);
    ASSERT_NE(object.p, nullptr);
    for (const ServedInterface& offered : served.interfaces)
    {
        CComPtr<IUnknown> asked;
        EXPECT_EQ(object->QueryInterface(*offered.iid, reinterpret_cast<void**>(&asked.p)), S_OK) << offered.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, ClassFactory, ::testing::ValuesIn(ServedClasses()),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace orl::test
