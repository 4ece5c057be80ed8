// Method calls, puts and deletions.
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

namespace orl::test
{
namespace
{

using Calls = std::vector<std::wstring>;

class HostMethod : public HostTest
{
protected:
    HostMethod()
    {
        Provider().call =
            [this](const std::wstring&, const std::wstring& method, IWbemClassObject* in, IWbemObjectSink* sink)
        {
            m_in = in;
            CComPtr<IWbemClassObject> result = Provider().MakeResult(L"Test_Lamp", method.c_str());
            CComVariant zero(0);
            result->Put(L"ReturnValue", 0, &zero, 0);
            sink->Indicate(1, &result.p);
            return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
        };
    }

    // In-parameters of a method as a client makes them.
    CComPtr<IWbemClassObject> In(const wchar_t* method, ScriptedProvider::Properties properties)
    {
        CComPtr<IWbemClassObject> signature;
        EXPECT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Lamp")->GetMethod(method, 0, &signature, nullptr));
        CComPtr<IWbemClassObject> in;
        EXPECT_EQ(WBEM_S_NO_ERROR, signature->SpawnInstance(0, &in));
        for (const auto& [name, value] : properties)
            EXPECT_EQ(WBEM_S_NO_ERROR, in->Put(name, 0, const_cast<CComVariant*>(&value), 0));
        return in;
    }
    HRESULT Execute(const wchar_t* path, const wchar_t* method, IWbemClassObject* in = nullptr)
    {
        m_out = nullptr;
        return Service().ExecMethod(CComBSTR(path), CComBSTR(method), 0, nullptr, in, &m_out, nullptr);
    }
    void ExpectRefusal(HRESULT code, const wchar_t* description, HRESULT answer)
    {
        EXPECT_EQ(HexText(code), HexText(answer));
        const Told told = TakeTold();
        EXPECT_EQ(description, told.description);
        EXPECT_EQ(L"ExecMethod", told.operation);
        EXPECT_EQ(nullptr, m_out.p);
        EXPECT_EQ(0, m_loads);
    }

    CComPtr<IWbemClassObject> m_in;
    CComPtr<IWbemClassObject> m_out;
};

TEST_F(HostMethod, ParametersGoInAndResultsComeOut)
{
    const CComPtr<IWbemClassObject> in = In(L"Switch", {{L"On", true}});
    ASSERT_EQ(HexText(WBEM_S_NO_ERROR), HexText(Execute(L"test_lamp.name=\"desk\"", L"SWITCH", in))) << TakeTold();
    EXPECT_EQ(L"0", Show(m_out, L"ReturnValue"));
    EXPECT_EQ(L"__PARAMETERS", Show(m_out, L"__CLASS"));
    EXPECT_EQ(L"TRUE", Show(m_in, L"On"));
    EXPECT_EQ(L"NULL", Show(m_in, L"Reason"));
    EXPECT_EQ(L"ExecMethod Test_Lamp.Name=\"desk\" Switch", Provider().Calls().back());
}

TEST_F(HostMethod, ParametersMayBeSetInTheSignatureItself)
{
    CComPtr<IWbemClassObject> signature;
    ASSERT_EQ(WBEM_S_NO_ERROR, GetClass(L"Test_Lamp")->GetMethod(L"Switch", 0, &signature, nullptr));
    CComVariant yes(true);
    ASSERT_EQ(WBEM_S_NO_ERROR, signature->Put(L"On", 0, &yes, 0));
    ASSERT_EQ(WBEM_S_NO_ERROR, Execute(L"Test_Lamp.Name=\"desk\"", L"Switch", signature)) << TakeTold();
    EXPECT_EQ(L"TRUE", Show(m_in, L"On"));
    EXPECT_EQ(L"2", Show(m_in, L"__GENUS"));
}

TEST_F(HostMethod, AStaticMethodIsCalledOnTheClass)
{
    ASSERT_EQ(WBEM_S_NO_ERROR, Execute(L"Test_Lamp", L"CountAll")) << TakeTold();
    EXPECT_EQ(L"ExecMethod Test_Lamp CountAll", Provider().Calls().back());
    EXPECT_EQ(nullptr, m_in.p);
}

TEST_F(HostMethod, AMethodWithoutResultsHasNone)
{
    Provider().call = [](const std::wstring&, const std::wstring&, IWbemClassObject*, IWbemObjectSink* sink)
    { return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr); };
    EXPECT_EQ(WBEM_S_NO_ERROR, Execute(L"Test_Lamp.Name=\"desk\"", L"Polish")) << TakeTold();
    EXPECT_EQ(nullptr, m_out.p);
}

TEST_F(HostMethod, AMethodMustBeThereImplementedAndEnabled)
{
    ExpectRefusal(WBEM_E_INVALID_METHOD, L"the class Test_Lamp has no method Explode",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"Explode"));
    ExpectRefusal(WBEM_E_METHOD_NOT_IMPLEMENTED, L"the method Unwired of Test_Lamp is not implemented",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"unwired"));
    ExpectRefusal(WBEM_E_METHOD_DISABLED, L"the method Broken of Test_Lamp is disabled",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"Broken"));
    ExpectRefusal(WBEM_E_INVALID_METHOD_PARAMETERS,
                  L"the method Polish of Test_Lamp acts on an instance, and the path names the class",
                  Execute(L"Test_Lamp", L"Polish"));
    ExpectRefusal(WBEM_E_INVALID_CLASS, L"there is no class Test_Candle in root\\KESTA",
                  Execute(L"Test_Candle", L"Polish"));
}

TEST_F(HostMethod, ParametersAreCheckedByName)
{
    ExpectRefusal(WBEM_E_INVALID_METHOD_PARAMETERS, L"the method Switch of Test_Lamp misses its in-parameter On",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"Switch"));
    ExpectRefusal(WBEM_E_INVALID_METHOD_PARAMETERS, L"the method Switch of Test_Lamp misses its in-parameter On",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"Switch", In(L"Switch", {{L"Reason", L"dark"}})));
    // What belongs to another method is unknown here.
    const CComPtr<IWbemClassObject> other = Spawn(L"Test_Room");
    CComVariant name(L"x");
    other->Put(L"Name", 0, &name, 0);
    ExpectRefusal(WBEM_E_INVALID_METHOD_PARAMETERS, L"the method Switch of Test_Lamp has no in-parameter Name",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"Switch", other));
    ExpectRefusal(WBEM_E_INVALID_METHOD_PARAMETERS, L"the method Polish of Test_Lamp has no in-parameter On",
                  Execute(L"Test_Lamp.Name=\"desk\"", L"Polish", In(L"Switch", {{L"On", true}})));
}

TEST_F(HostMethod, AParameterOfAnotherTypeIsNamed)
{
    std::wstring mof = kLampMof;
    mof += L"class Test_Wrong { string On; };";
    Use(mof);
    const CComPtr<IWbemClassObject> wrong = Spawn(L"Test_Wrong");
    CComVariant maybe(L"maybe");
    wrong->Put(L"On", 0, &maybe, 0);
    EXPECT_EQ(HexText(WBEM_E_INVALID_METHOD_PARAMETERS),
              HexText(Execute(L"Test_Lamp.Name=\"desk\"", L"Switch", wrong)));
    const std::wstring told = TakeTold().description;
    EXPECT_TRUE(told.starts_with(L"the in-parameter On of the method Switch of Test_Lamp is boolean: "))
        << ::testing::PrintToString(told);
}

TEST_F(HostMethod, AResultOfAnotherClassIsTheProvidersFailure)
{
    Provider().call = [this](const std::wstring&, const std::wstring&, IWbemClassObject*, IWbemObjectSink* sink)
    {
        CComPtr<IWbemClassObject> room = Provider().Make(L"Test_Room", {});
        sink->Indicate(1, &room.p);
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_FAILURE), HexText(Execute(L"Test_Lamp", L"CountAll")));
    EXPECT_EQ(L"the provider sent a Test_Room that is not the result of the method CountAll of Test_Lamp",
              TakeTold().description);
}

TEST_F(HostMethod, AProviderThatIsNotRegisteredForMethodsIsNotCalled)
{
    std::wstring mof = kLampMof;
    const std::wstring registration = L"instance of __MethodProviderRegistration { Provider = $P; };";
    mof.erase(mof.find(registration), registration.size());
    Use(mof);
    ExpectRefusal(WBEM_E_PROVIDER_NOT_CAPABLE, L"the provider LampProvider of Test_Lamp is not registered for methods",
                  Execute(L"Test_Lamp", L"CountAll"));
}

TEST_F(HostMethod, MethodsRunSemisynchronouslyAndToASink)
{
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().ExecMethod(CComBSTR(L"Test_Lamp"), CComBSTR(L"CountAll"),
                                                    WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, nullptr, &result));
    CComPtr<IWbemClassObject> out;
    ASSERT_EQ(WBEM_S_NO_ERROR, result->GetResultObject(WBEM_INFINITE, &out));
    EXPECT_EQ(L"0", Show(out, L"ReturnValue"));
    const CComPtr<Collector> sink = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR,
              Service().ExecMethodAsync(CComBSTR(L"Test_Lamp"), CComBSTR(L"CountAll"), 0, nullptr, nullptr, sink));
    EXPECT_EQ(WBEM_S_NO_ERROR, sink->Await().code);
    ASSERT_EQ(1u, sink->Count());
    EXPECT_EQ(L"0", Show(sink->Objects()[0], L"ReturnValue"));
    const CComPtr<Collector> refused = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR,
              Service().ExecMethodAsync(CComBSTR(L"Test_Lamp"), CComBSTR(L"Explode"), 0, nullptr, nullptr, refused));
    EXPECT_EQ(HexText(WBEM_E_INVALID_METHOD), HexText(refused->Await().code));
    EXPECT_EQ(L"the class Test_Lamp has no method Explode", ToldBy(refused->Await().object).description);
}

// Writing
// ---------------------------------------------------------------------------------------------------------------

class HostWrite : public HostTest
{
protected:
    CComPtr<IWbemClassObject> NewLamp(const wchar_t* name)
    {
        const CComPtr<IWbemClassObject> lamp = Spawn(L"Test_Lamp");
        CComVariant value(name);
        EXPECT_EQ(WBEM_S_NO_ERROR, lamp->Put(L"Name", 0, &value, 0));
        return lamp;
    }
};

TEST_F(HostWrite, APutReachesTheProviderAndAnswersThePath)
{
    std::wstring written;
    Provider().put = [&](IWbemClassObject* instance, IWbemObjectSink* sink)
    {
        written = Show(instance, L"Name");
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    const CComPtr<IWbemClassObject> lamp = NewLamp(L"desk");
    EXPECT_EQ(WBEM_S_NO_ERROR, Service().PutInstance(lamp, WBEM_FLAG_CREATE_OR_UPDATE, nullptr, nullptr)) << TakeTold();
    EXPECT_EQ(L"desk", written);
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().PutInstance(lamp, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &result));
    CComBSTR path;
    ASSERT_EQ(WBEM_S_NO_ERROR, result->GetResultString(WBEM_INFINITE, &path));
    EXPECT_EQ(L"Test_Lamp.Name=\"desk\"", TextOf(path));
    CComPtr<IWbemClassObject> none;
    EXPECT_EQ(WBEM_S_NO_ERROR, result->GetResultObject(WBEM_INFINITE, &none));
    EXPECT_EQ(nullptr, none.p);
}

TEST_F(HostWrite, ThePathThatTheProviderChoseIsTheAnswer)
{
    Provider().put = [](IWbemClassObject*, IWbemObjectSink* sink)
    { return sink->SetStatus(0, WBEM_S_NO_ERROR, CComBSTR(L"Test_Lamp.Name=\"lamp 1\""), nullptr); };
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR,
              Service().PutInstance(Spawn(L"Test_Lamp"), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &result));
    CComBSTR path;
    ASSERT_EQ(WBEM_S_NO_ERROR, result->GetResultString(WBEM_INFINITE, &path));
    EXPECT_EQ(L"Test_Lamp.Name=\"lamp 1\"", TextOf(path));
    const CComPtr<Collector> sink = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().PutInstanceAsync(Spawn(L"Test_Lamp"), 0, nullptr, sink));
    EXPECT_EQ(L"Test_Lamp.Name=\"lamp 1\"", sink->Await().text);
}

TEST_F(HostWrite, WhatTheClientChangesAfterItsPutIsNotWritten)
{
    Gate gate;
    std::wstring written;
    Provider().put = [&](IWbemClassObject* instance, IWbemObjectSink* sink)
    {
        gate.Pass();
        written = Show(instance, L"Name");
        return sink->SetStatus(0, WBEM_S_NO_ERROR, nullptr, nullptr);
    };
    const CComPtr<IWbemClassObject> lamp = NewLamp(L"desk");
    CComPtr<IWbemCallResult> result;
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().PutInstance(lamp, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &result));
    CComVariant other(L"floor");
    lamp->Put(L"Name", 0, &other, 0);
    gate.Open();
    LONG status = 1;
    EXPECT_EQ(WBEM_S_NO_ERROR, result->GetCallStatus(WBEM_INFINITE, &status));
    EXPECT_EQ(L"desk", written);
}

TEST_F(HostWrite, RefusedPutsSayWhy)
{
    Provider().put = [](IWbemClassObject*, IWbemObjectSink* sink)
    { return sink->SetStatus(0, WBEM_E_ACCESS_DENIED, nullptr, nullptr); };
    EXPECT_EQ(HexText(WBEM_E_ACCESS_DENIED), HexText(Service().PutInstance(NewLamp(L"desk"), 0, nullptr, nullptr)));
    EXPECT_EQ((Told{L"0x80041003", L"the provider LampProvider answered 0x80041003", L"PutInstance",
                    L"Test_Lamp.Name=\"desk\"", L"LampProvider"}),
              TakeTold());
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_CAPABLE),
              HexText(Service().PutInstance(Spawn(L"Test_Room"), 0, nullptr, nullptr)));
    EXPECT_EQ(L"the class Test_Room has no provider that could write", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_INVALID_PARAMETER),
              HexText(Service().PutInstance(GetClass(L"Test_Lamp"), 0, nullptr, nullptr)));
    EXPECT_EQ(HexText(WBEM_E_INVALID_PARAMETER), HexText(Service().PutInstance(nullptr, 0, nullptr, nullptr)));
}

TEST_F(HostWrite, ADeletionReachesTheProviderByThePath)
{
    Provider().remove = [](const std::wstring& path, IWbemObjectSink* sink)
    {
        const bool isThere = path == L"Test_Lamp.Name=\"desk\"";
        return sink->SetStatus(0, isThere ? WBEM_S_NO_ERROR : WBEM_E_NOT_FOUND, nullptr, nullptr);
    };
    EXPECT_EQ(WBEM_S_NO_ERROR, Service().DeleteInstance(CComBSTR(L"test_lamp='desk'"), 0, nullptr, nullptr));
    EXPECT_EQ(HexText(WBEM_E_NOT_FOUND),
              HexText(Service().DeleteInstance(CComBSTR(L"Test_Lamp.Name=\"x\""), 0, nullptr, nullptr)));
    EXPECT_EQ((Told{L"0x80041002", L"the provider LampProvider answered 0x80041002", L"DeleteInstance",
                    L"Test_Lamp.Name=\"x\"", L"LampProvider"}),
              TakeTold());
    const CComPtr<Collector> sink = MakeObject<Collector>();
    ASSERT_EQ(WBEM_S_NO_ERROR, Service().DeleteInstanceAsync(CComBSTR(L"Test_Lamp.Name=\"desk\""), 0, nullptr, sink));
    EXPECT_EQ(WBEM_S_NO_ERROR, sink->Await().code);
    EXPECT_EQ(0u, sink->Count());
}

TEST_F(HostWrite, OnlyInstancesOfProvidedClassesCanBeDeleted)
{
    EXPECT_EQ(HexText(WBEM_E_INVALID_OBJECT_PATH),
              HexText(Service().DeleteInstance(CComBSTR(L"Test_Lamp"), 0, nullptr, nullptr)));
    EXPECT_EQ(L"the path names the class Test_Lamp, not an instance of it", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_CAPABLE),
              HexText(Service().DeleteInstance(CComBSTR(L"Test_Room.Name=\"Hall\",Floor=0"), 0, nullptr, nullptr)));
    EXPECT_EQ(L"the class Test_Room has no provider that could delete", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_INVALID_CLASS),
              HexText(Service().DeleteInstance(CComBSTR(L"Test_Candle.Name=\"x\""), 0, nullptr, nullptr)));
}

TEST_F(HostWrite, AProviderWritesOnlyWhatItIsRegisteredFor)
{
    std::wstring mof = kLampMof;
    mof.replace(mof.find(L"SupportsPut = TRUE"), 18, L"SupportsPut = FALSE");
    mof.replace(mof.find(L"SupportsDelete = TRUE"), 21, L"SupportsDelete = FALSE");
    Use(mof);
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_CAPABLE),
              HexText(Service().PutInstance(NewLamp(L"desk"), 0, nullptr, nullptr)));
    EXPECT_EQ(L"the provider LampProvider of Test_Lamp is not registered for writing", TakeTold().description);
    EXPECT_EQ(HexText(WBEM_E_PROVIDER_NOT_CAPABLE),
              HexText(Service().DeleteInstance(CComBSTR(L"Test_Lamp='desk'"), 0, nullptr, nullptr)));
    EXPECT_EQ(L"the provider LampProvider of Test_Lamp is not registered for deletion", TakeTold().description);
}

} // namespace
} // namespace orl::test
