// The rules of IUnknown, for objects of the common base.
#include "tests/com/TestObjects.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{

// The count, by taking a reference and giving it back.
ULONG References(IUnknown* object)
{
    object->AddRef();
    return object->Release();
}

TEST(ComObject, ItIsMadeWithItsMakersReference)
{
    bool gone = false;
    Counter* object = new Counter(&gone);
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_FALSE(gone);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_TRUE(gone);
}

TEST(ComObject, ItHasOneIdentity)
{
    CComPtr<Counter> object = orl::MakeObject<Counter>();
    IWbemObjectSink* sink = object.p;
    IWbemShutdown* shutdown = object.p;
    CComPtr<IUnknown> bySink;
    CComPtr<IUnknown> byShutdown;
    EXPECT_EQ(sink->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&bySink.p)), S_OK);
    EXPECT_EQ(shutdown->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&byShutdown.p)), S_OK);
    EXPECT_EQ(bySink.p, byShutdown.p);
}

TEST(ComObject, EveryInterfaceLeadsToEveryOther)
{
    CComPtr<Counter> object = orl::MakeObject<Counter>();
    IUnknown* const faces[] = {static_cast<IWbemObjectSink*>(object.p), static_cast<IWbemShutdown*>(object.p)};
    for (IUnknown* face : faces)
    {
        for (const IID* iid : {&IID_IUnknown, &IID_IWbemObjectSink, &IID_IWbemShutdown})
        {
            void* asked = nullptr;
            EXPECT_EQ(face->QueryInterface(*iid, &asked), S_OK);
            ASSERT_NE(asked, nullptr);
            // Asking again for the same gives the same.
            void* again = nullptr;
            EXPECT_EQ(static_cast<IUnknown*>(asked)->QueryInterface(*iid, &again), S_OK);
            EXPECT_EQ(again, asked);
            static_cast<IUnknown*>(again)->Release();
            static_cast<IUnknown*>(asked)->Release();
        }
    }
    EXPECT_EQ(References(static_cast<IWbemObjectSink*>(object.p)), 1u);
}

TEST(ComObject, AskingTakesOneReference)
{
    CComPtr<Counter> object = orl::MakeObject<Counter>();
    CComPtr<IWbemShutdown> shutdown;
    EXPECT_EQ(object.QueryInterface(&shutdown.p), S_OK);
    EXPECT_EQ(References(shutdown), 2u);
}

TEST(ComObject, AnInterfaceThatItHasNotGotIsRefusedAndNulled)
{
    CComPtr<Counter> object = orl::MakeObject<Counter>();
    void* asked = &asked;
    EXPECT_EQ(object->QueryInterface(IID_IWbemServices, &asked), E_NOINTERFACE);
    EXPECT_EQ(asked, nullptr);
    EXPECT_EQ(References(static_cast<IWbemObjectSink*>(object.p)), 1u);
}

TEST(ComObject, ANullPlaceForTheAnswerIsRefused)
{
    CComPtr<Counter> object = orl::MakeObject<Counter>();
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(References(static_cast<IWbemObjectSink*>(object.p)), 1u);
}

TEST(ComObject, ItKeepsItsModuleAlive)
{
    const ULONG before = orl::ModuleReferences();
    CComPtr<Counter> object = orl::MakeObject<Counter>();
    EXPECT_EQ(orl::ModuleReferences(), before + 1);
    EXPECT_EQ(orl::CanUnloadNow(), S_FALSE);
    object.Release();
    EXPECT_EQ(orl::ModuleReferences(), before);
}

TEST(ComObject, ThreadsMayCountAtOnce)
{
    bool gone = false;
    CComPtr<Counter> object = orl::MakeObject<Counter>(&gone);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back(
            [&object]
            {
                for (int i = 0; i < 10000; ++i)
                    CComPtr<Counter> copy(object);
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(References(static_cast<IWbemObjectSink*>(object.p)), 1u);
    EXPECT_FALSE(gone);
    object.Release();
    EXPECT_TRUE(gone);
}

TEST(ComObject, InterfacesAreKnownByTheirType)
{
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IUnknown>(), IID_IUnknown));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IClassFactory>(), IID_IClassFactory));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IErrorInfo>(), IID_IErrorInfo));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemLocator>(), IID_IWbemLocator));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemServices>(), IID_IWbemServices));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemClassObject>(), IID_IWbemClassObject));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemQualifierSet>(), IID_IWbemQualifierSet));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemObjectSink>(), IID_IWbemObjectSink));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IEnumWbemClassObject>(), IID_IEnumWbemClassObject));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemCallResult>(), IID_IWbemCallResult));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemContext>(), IID_IWbemContext));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemShutdown>(), IID_IWbemShutdown));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemProviderInit>(), IID_IWbemProviderInit));
    EXPECT_TRUE(IsEqualIID(orl::IidOf<IWbemProviderInitSink>(), IID_IWbemProviderInitSink));
}

} // namespace
