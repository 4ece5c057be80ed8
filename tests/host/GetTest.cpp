// Getting one object: paths, providers, and what the host makes of their answers.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"
#include "host/Context.h"

namespace orl::test
{
namespace
{

class HostGet : public HostTest
{
protected:
    HRESULT Get(const std::wstring& path, IWbemContext* context = nullptr)
    {
        m_object = nullptr;
        return Service().GetObject(CComBSTR(path.c_str()), 0, context, &m_object, nullptr);
    }

    CComPtr<IWbemClassObject> m_object;
};

using Calls = std::vector<std::wstring>;

TEST_F(HostGet, TheProviderIsLoadedOnceAndAskedByThePath)
{
    ServeLamps({L"desk"});
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\"")) << TakeTold();
    EXPECT_EQ(L"10", Show(m_object, L"Watts"));
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"\\\\.\\root\\kesta:test_lamp.NAME='desk'"));
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"TEST_LAMP=\"desk\""));
    EXPECT_EQ(1, m_loads);
    // Providers know their classes letter for letter.
    EXPECT_EQ((Calls{L"Initialize root\\KESTA", L"GetObject Test_Lamp.Name=\"desk\"",
                     L"GetObject Test_Lamp.Name=\"desk\"", L"GetObject Test_Lamp.Name=\"desk\""}),
              Provider().Calls());
}

TEST_F(HostGet, OnlyTheInstanceWithThePathsKeysIsTheAnswer)
{
    ServeLamps({L"desk", L"Floor", L"door"});
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"FLOOR\""));
    EXPECT_EQ(L"Floor", Show(m_object, L"Name"));
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Name=\"wall\"")));
    EXPECT_EQ(nullptr, m_object.p);
    EXPECT_EQ((Told{L"0x80041002", L"no Test_Lamp has the Name wall", L"GetObject", L"Test_Lamp.Name=\"wall\"",
                    L"LampProvider"}),
              TakeTold());
}

TEST_F(HostGet, AProviderThatSendsNothingHasNoSuchInstance)
{
    ServeLamps({});
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Name=\"wall\"")));
    EXPECT_EQ(L"there is no Test_Lamp.Name=\"wall\"", TakeTold().description);
}

TEST_F(HostGet, AKeyThatThePathLacksOrInventsIsNamed)
{
    ServeLamps({L"desk"});
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Watts=10")));
    EXPECT_EQ(L"the path does not name the key Name of Test_Lamp", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Name=\"desk\",Owner=\"me\"")));
    EXPECT_EQ(L"the class Test_Lamp has no key Owner", TakeTold().description);
}

TEST_F(HostGet, AClassWithoutProviderHasItsDeclaredInstances)
{
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Room.Floor=3,Name=\"attic\"")) << TakeTold();
    EXPECT_EQ(L"FALSE", Show(m_object, L"HasWindow"));
    // Producers of paths that quote every value mean the same.
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Room.Name=\"Hall\",Floor=\"0\"")) << TakeTold();
    EXPECT_EQ(L"TRUE", Show(m_object, L"HasWindow"));
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Room.Name=\"Hall\",Floor=1")));
    EXPECT_EQ(0, m_loads);
}

TEST_F(HostGet, RegistrationsAreInstancesLikeOthers)
{
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"__Win32Provider.Name=\"LampProvider\"")) << TakeTold();
    EXPECT_EQ(L"{11111111-2222-3333-4444-555555555555}", Show(m_object, L"CLSID"));
}

TEST_F(HostGet, ClassesComeFromTheSchema)
{
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"//./root/KESTA:test_bulb"));
    EXPECT_EQ(L"Test_Bulb", Show(m_object, L"__CLASS"));
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Candle")));
    EXPECT_EQ((Told{L"0x80041002", L"there is no class Test_Candle in root\\KESTA", L"GetObject", L"Test_Candle", L""}),
              TakeTold());
    EXPECT_EQ(HexText(WBEM_E_INVALID_CLASS), HexText(Get(L"Test_Candle.Name=\"x\"")));
    EXPECT_EQ(L"there is no class Test_Candle in root\\KESTA", TakeTold().description);
    EXPECT_EQ(0, m_loads);
}

TEST_F(HostGet, BadPathsAreRefusedBeforeTheProviderIsAsked)
{
    struct
    {
        const wchar_t* path;
        HRESULT code;
    } const cases[] = {
        {L"", WBEM_E_INVALID_OBJECT_PATH},
        {L"Test_Lamp.Name=", WBEM_E_INVALID_OBJECT_PATH},
        {L"Test_Lamp.Name=\"desk", WBEM_E_INVALID_OBJECT_PATH},
        {L"Test_Lamp.Name=\"a\" \"b\"", WBEM_E_INVALID_OBJECT_PATH},
        {L"Test_Room=\"Hall\"", WBEM_E_INVALID_OBJECT_PATH},
        {L"\\\\.\\root\\KESTA", WBEM_E_INVALID_OBJECT_PATH},
        {L"\\\\elsewhere.invalid\\root\\KESTA:Test_Lamp.Name=\"desk\"", WBEM_E_INVALID_OBJECT_PATH},
        {L"\\\\.\\root\\nowhere:Test_Lamp.Name=\"desk\"", WBEM_E_INVALID_NAMESPACE},
    };
    for (const auto& each : cases)
    {
        EXPECT_EQ(HexText(each.code), HexText(Get(each.path))) << ::testing::PrintToString(std::wstring(each.path));
        const Told told = TakeTold();
        EXPECT_FALSE(told.description.empty());
        EXPECT_EQ(L"GetObject", told.operation);
        EXPECT_EQ(each.path, told.parameter);
    }
    EXPECT_EQ(HexText(WBEM_E_INVALID_OBJECT_PATH), HexText(Get(L"Test_Room=\"Hall\"")));
    EXPECT_EQ(L"the path has a value without a key's name, and Test_Room has 2 keys", TakeTold().description);
    EXPECT_EQ(0, m_loads);
}

TEST_F(HostGet, TheContextReachesTheProviderUntouched)
{
    ServeLamps({L"desk"});
    const CComPtr<Context> context = MakeObject<Context>();
    ASSERT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\"", context));
    EXPECT_EQ(static_cast<IWbemContext*>(context.p), Provider().LastContext().p);
    ASSERT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\""));
    EXPECT_EQ(nullptr, Provider().LastContext().p);
}

TEST_F(HostGet, AClientThatAsksForKeysOnlyTakesAnEmptyInstance)
{
    Provider().get = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> empty = Provider().Make(L"Test_Lamp", {});
        CComVariant nothing;
        empty->Put(L"Dim", 0, &nothing, 0);
        sink->Indicate(1, &empty.p);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Name=\"desk\"")));
    const CComPtr<Context> context = MakeObject<Context>();
    CComVariant yes(true);
    context->SetValue(L"__GET_EXT_KEYS_ONLY", 0, &yes);
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\"", context)) << TakeTold();
    EXPECT_EQ(L"NULL", Show(m_object, L"Name"));
    CComVariant no(false);
    context->SetValue(L"__GET_EXT_KEYS_ONLY", 0, &no);
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Name=\"desk\"", context)));
}

TEST_F(HostGet, WithoutSupportForGetTheInstanceIsSoughtAmongAll)
{
    std::wstring mof = kLampMof;
    mof.replace(mof.find(L"SupportsGet = TRUE"), 18, L"SupportsGet = FALSE");
    Use(mof);
    ServeLamps({L"desk", L"floor"});
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"floor\"")) << TakeTold();
    EXPECT_EQ(L"20", Show(m_object, L"Watts"));
    EXPECT_EQ((Calls{L"Initialize root\\KESTA", L"CreateInstanceEnum Test_Lamp"}), Provider().Calls());
}

TEST_F(HostGet, WhatTheProviderChangesAfterIndicateStaysItsOwn)
{
    Provider().get = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> lamp = Lamp(L"desk", 10);
        sink->Indicate(1, &lamp.p);
        CComVariant other(L"floor");
        lamp->Put(L"Name", 0, &other, 0);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    ASSERT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\""));
    EXPECT_EQ(L"desk", Show(m_object, L"Name"));
}

// Failures of providers
// ------------------------------------------------------------------------------------------------

TEST_F(HostGet, AStatusOfTheProviderIsTheClientsAndSaysWhose)
{
    Provider().get = [](const std::wstring&, IWbemObjectSink* sink)
    { return sink->SetStatus(0, WBEM_E_ACCESS_DENIED, nullptr, nullptr); };
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(Get(L"Test_Lamp.Name=\"desk\"")));
    EXPECT_EQ((Told{L"0x80041003", L"the provider LampProvider answered 0x80041003", L"GetObject",
                    L"Test_Lamp.Name=\"desk\"", L"LampProvider"}),
              TakeTold());
}

TEST_F(HostGet, AProvidersOwnExplanationIsHandedOn)
{
    Provider().get = [this](const std::wstring&, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> status =
            Provider().Make(L"__ExtendedStatus",
                            {{L"Description", L"the bulb is missing"}, {L"StatusCode", 7}, {L"Operation", L"Look"}});
        return sink->SetStatus(0, WBEM_E_NOT_FOUND, nullptr, status);
    };
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(Get(L"Test_Lamp.Name=\"desk\"")));
    CComPtr<IErrorInfo> info;
    ASSERT_EQ(S_OK, GetErrorInfo(0, &info));
    CComBSTR description;
    EXPECT_EQ(S_OK, info->GetDescription(&description));
    EXPECT_EQ(L"the bulb is missing", TextOf(description));
    CComPtr<IWbemClassObject> status;
    ASSERT_EQ(S_OK, info.QueryInterface(&status));
    EXPECT_EQ((Told{L"0x00000007", L"the bulb is missing", L"Look", L"", L""}), ToldBy(status));
}

TEST_F(HostGet, AMethodThatFailsWithoutASetStatusIsTheEnd)
{
    Provider().get = [](const std::wstring&, IWbemObjectSink*) { return HRESULT{WBEM_E_PROVIDER_NOT_CAPABLE}; };
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_CAPABLE), HexText(Get(L"Test_Lamp.Name=\"desk\"")));
    EXPECT_EQ(L"the provider LampProvider answered 0x80041024", TakeTold().description);
}

TEST_F(HostGet, ASuccessLeavesNoErrorBehind)
{
    ServeLamps({L"desk"});
    EXPECT_NE(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"x\""));
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\""));
    EXPECT_EQ(Told{}, TakeTold());
}

TEST_F(HostGet, AProviderThatDoesNotLoadIsTriedAgain)
{
    ServeLamps({L"desk"});
    m_loadAnswer = static_cast<HRESULT>(0x80040154);
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_LOAD_FAILURE), HexText(Get(L"Test_Lamp.Name=\"desk\"")));
    EXPECT_EQ((Told{L"0x80041013",
                    L"the provider LampProvider cannot be loaded by its CLSID {11111111-2222-3333-4444-555555555555}: "
                    L"0x80040154",
                    L"GetObject", L"Test_Lamp.Name=\"desk\"", L"LampProvider"}),
              TakeTold());
    m_loadAnswer = S_OK;
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\""));
    EXPECT_EQ(2, m_loads);
}

TEST_F(HostGet, AProviderThatIsNotInitialisedIsRefused)
{
    ServeLamps({L"desk"});
    struct
    {
        HRESULT (*initialize)(IWbemProviderInitSink* sink);
        const wchar_t* description;
    } const cases[] = {
        {[](IWbemProviderInitSink*) { return HRESULT{WBEM_E_FAILED}; },
         L"the provider LampProvider refused to be initialised: 0x80041001"},
        {[](IWbemProviderInitSink* sink) { return sink->SetStatus(WBEM_E_FAILED, 0); },
         L"the provider LampProvider could not be initialised: 0x80041001"},
        {[](IWbemProviderInitSink*) { return HRESULT{WBEM_S_NO_ERROR}; },
         L"the provider LampProvider did not say that it is initialised"},
    };
    for (const auto& each : cases)
    {
        Provider().initialize = each.initialize;
        EXPECT_EQ(HexText(WBEM_E_INITIALIZATION_FAILURE), HexText(Get(L"Test_Lamp.Name=\"desk\"")));
        EXPECT_EQ(each.description, TakeTold().description);
    }
    Provider().initialize = nullptr;
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\""));
}

TEST_F(HostGet, AProviderThatNeedsItselfToBeInitialisedIsTold)
{
    HRESULT inner = S_OK;
    Provider().initialize = [&](IWbemProviderInitSink* sink)
    {
        CComPtr<IWbemClassObject> found;
        inner = Provider().Service()->GetObject(CComBSTR(L"Test_Lamp.Name=\"x\""), 0, nullptr, &found, nullptr);
        return sink->SetStatus(WBEM_S_NO_ERROR, 0);
    };
    ServeLamps({L"desk"});
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\"")) << TakeTold();
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_LOAD_FAILURE), HexText(inner));
}

TEST_F(HostGet, ClassesWithoutAUsableRegistrationAreRefused)
{
    Use(LR"(
        instance of __Win32Provider { Name = "NoId"; };
        instance of __Win32Provider as $S { Name = "Silent"; CLSID = "{1}"; };
        [provider("Nobody")] class A { [key] string X; };
        [provider("NoId")] class B { [key] string X; };
        [provider("Silent")] class C { [key] string X; };
    )");
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_FOUND), HexText(Get(L"A.X=\"1\"")));
    EXPECT_EQ(L"the provider Nobody of the class A is not registered in root\\KESTA", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_INVALID_PROVIDER_REGISTRATION), HexText(Get(L"B.X=\"1\"")));
    EXPECT_EQ(L"the registration of the provider NoId has no CLSID", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_CAPABLE), HexText(Get(L"C.X=\"1\"")));
    EXPECT_EQ(L"the provider Silent of C is not registered for enumeration", TakeTold().description);
}

// Calls that return at once
// --------------------------------------------------------------------------------------------

TEST_F(HostGet, ASemisynchronousGetIsThereWhenTheProviderIsDone)
{
    Gate gate;
    Provider().get = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        gate.Pass();
        CComPtr<IWbemClassObject> lamp = Lamp(L"desk", 10);
        sink->Indicate(1, &lamp.p);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().GetObject(CComBSTR(L"Test_Lamp.Name=\"desk\""), WBEM_FLAG_RETURN_IMMEDIATELY,
                                                   nullptr, nullptr, &result));
    CComPtr<IWbemClassObject> object;
    LONG status = 1;
    EXPECT_EQ(WBEM_S_TIMEDOUT, result->GetResultObject(0, &object));
    EXPECT_EQ(WBEM_S_TIMEDOUT, result->GetCallStatus(10, &status));
    gate.Open();
    EXPECT_EQ(WBEM_S_NO_ERROR, result->GetResultObject(WBEM_INFINITE, &object));
    EXPECT_EQ(L"desk", Show(object, L"Name"));
    EXPECT_EQ(WBEM_S_NO_ERROR, result->GetCallStatus(0, &status));
    EXPECT_EQ(WBEM_S_NO_ERROR, status);
    CComBSTR text;
    EXPECT_EQ(WBEM_E_INVALID_OPERATION, result->GetResultString(0, &text));
    CComPtr<IWbemServices> services;
    EXPECT_EQ(WBEM_E_INVALID_OPERATION, result->GetResultServices(0, &services));
}

TEST_F(HostGet, ASemisynchronousGetAnswersItsFailureWithItsReason)
{
    ServeLamps({});
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().GetObject(CComBSTR(L"Test_Lamp.Name=\"x\""), WBEM_FLAG_RETURN_IMMEDIATELY,
                                                   nullptr, nullptr, &result));
    CComPtr<IWbemClassObject> object;
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(result->GetResultObject(WBEM_INFINITE, &object)));
    EXPECT_EQ(L"there is no Test_Lamp.Name=\"x\"", TakeTold().description);
    LONG status = 0;
    EXPECT_EQ(WBEM_S_NO_ERROR, result->GetCallStatus(0, &status));
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND), HexText(static_cast<HRESULT>(status)));
    EXPECT_EQ(L"there is no Test_Lamp.Name=\"x\"", TakeTold().description);
}

TEST_F(HostGet, AProviderMayAnswerLaterFromAThreadOfItsOwn)
{
    std::thread later;
    Provider().get = [&](const std::wstring&, IWbemObjectSink* sink)
    {
        later = std::thread(
            [this, held = CComPtr<IWbemObjectSink>(sink)]
            {
                CComPtr<IWbemClassObject> lamp = Lamp(L"desk", 10);
                held->Indicate(1, &lamp.p);
                held->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
            });
        return HRESULT{WBEM_S_NO_ERROR};
    };
    EXPECT_EQ(WBEM_S_NO_ERROR, Get(L"Test_Lamp.Name=\"desk\"")) << TakeTold();
    EXPECT_EQ(L"desk", Show(m_object, L"Name"));
    later.join();
}

} // namespace
} // namespace orl::test
