// The end of every request: one SetStatus, with the right status and words.
#include "tests/framework/Fixture.h"
#include "tests/support/TraceCapture.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr wchar_t ThingPath[] = L"Zarn_Thing.DeviceID=\"X\"";

// The ways a manager's operation can end, and what the client must hear of each.
struct Ending
{
    const char* name;
    std::function<HRESULT(CWomContext&)> run;
    HRESULT status;
    const wchar_t* description; // empty for a success, which has no words
};

std::vector<Ending> Endings()
{
    return {
        {"success", [](CWomContext&) { return WBEM_S_NO_ERROR; }, WBEM_S_NO_ERROR, L""},
        {"another success", [](CWomContext&) { return WBEM_S_FALSE; }, WBEM_S_FALSE, L""},
        {"a status", [](CWomContext&) { return WBEM_E_ACCESS_DENIED; }, WBEM_E_ACCESS_DENIED,
         L"The class manager refused the call"},
        {"a provider exception",
         [](CWomContext& context) -> HRESULT {
             throw CWomProviderException(context, 0x8004090F, CComBSTR(ThingPath), WBEM_E_NOT_FOUND, L"Src\\Zarn_FCOE",
                                         260);
         },
         WBEM_E_NOT_FOUND, L"Zarn_Thing.DeviceID=\"X\" (code 0x8004090F, status 0x80041002, Src\\Zarn_FCOE line 260)"},
        {"an agent's failure",
         [](CWomContext& context) -> HRESULT
         {
             throw CWomProviderException(context, CResult{5, 0}, CComBSTR(L"OrlAdapterAgent::GetSetting"),
                                         L"Src\\KfgSettingMgrRoot", 127);
         },
         WBEM_E_FAILED,
         L"OrlAdapterAgent::GetSetting (code 0x00000005, status 0x80041001, result 0x00000005/0x00000000, "
         L"Src\\KfgSettingMgrRoot line 127)"},
        {"ATL's lack of memory", [](CWomContext&) -> HRESULT { throw CAtlException(E_OUTOFMEMORY); }, E_OUTOFMEMORY,
         L"There is not enough memory"},
        {"another of ATL's", [](CWomContext&) -> HRESULT { throw CAtlException(E_ACCESSDENIED); }, E_ACCESSDENIED,
         L"A part of the provider failed"},
        {"std::bad_alloc", [](CWomContext&) -> HRESULT { throw std::bad_alloc(); }, WBEM_E_OUT_OF_MEMORY,
         L"There is not enough memory"},
        {"std::exception", [](CWomContext&) -> HRESULT { throw std::runtime_error("out of range"); }, WBEM_E_FAILED,
         L"The provider failed: out of range"},
        {"an int", [](CWomContext&) -> HRESULT { throw 5; }, WBEM_E_FAILED, L"The provider failed without saying why"},
    };
}

class RequestStatus : public ProviderTest
{
protected:
    void ExpectEnding(const Ending& ending, const CComPtr<RecordingSink>& told, const wchar_t* operation,
                      const wchar_t* parameterInfo)
    {
        EXPECT_EQ(told->Statuses().size(), 1u);
        EXPECT_EQ(Hex{told->Final().result}, Hex{ending.status});
        EXPECT_EQ(told->References(), 1u);
        EXPECT_EQ(told->Final().object != nullptr, FAILED(ending.status));
        if (SUCCEEDED(ending.status))
            return;
        EXPECT_EQ(told->Extended(L"Description"), ending.description);
        EXPECT_EQ(told->Extended(L"Operation"), operation);
        EXPECT_EQ(told->Extended(L"ParameterInfo"), parameterInfo);
        EXPECT_EQ(told->Extended(L"ProviderName"), L"Orl2InstUtility");
        EXPECT_EQ(told->Extended(L"StatusCode"), std::to_wstring(ending.status));
    }

    void SendThing(CWomContext& context, const ScriptedManager::Sink& to)
    {
        manager->Send(context, to, {{L"DeviceID", L"X"}, {L"Name", L"A thing"}});
    }
};

TEST_F(RequestStatus, OfAGetIsTheManagersOrItsExceptions)
{
    for (const Ending& ending : Endings())
    {
        SCOPED_TRACE(ending.name);
        manager->get = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink to)
        {
            SendThing(context, to);
            return ending.run(context);
        };
        const CComPtr<RecordingSink> told = Get(ThingPath);
        ExpectEnding(ending, told, L"GetObject", ThingPath);
        EXPECT_EQ(told->Taken(), 1u) << "what was sent before stays sent";
    }
}

TEST_F(RequestStatus, OfAnEnumerationIsTheManagersOrItsExceptions)
{
    for (const Ending& ending : Endings())
    {
        SCOPED_TRACE(ending.name);
        manager->enumerate = [&](CWomContext& context, ScriptedManager::Sink) { return ending.run(context); };
        ExpectEnding(ending, Enumerate(L"Zarn_Thing"), L"CreateInstanceEnum", L"Zarn_Thing");
    }
}

TEST_F(RequestStatus, OfAQueryIsTheManagersOrItsExceptions)
{
    for (const Ending& ending : Endings())
    {
        SCOPED_TRACE(ending.name);
        manager->query = [&](CWomWQLParser&, CWomContext& context, ScriptedManager::Sink)
        { return ending.run(context); };
        ExpectEnding(ending, Query(L"SELECT * FROM Zarn_Thing"), L"ExecQuery", L"SELECT * FROM Zarn_Thing");
    }
}

TEST_F(RequestStatus, OfADeletionIsTheManagersOrItsExceptions)
{
    for (const Ending& ending : Endings())
    {
        SCOPED_TRACE(ending.name);
        manager->remove = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink)
        { return ending.run(context); };
        const CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
        EXPECT_EQ(provider->DeleteInstanceAsync(CComBSTR(ThingPath), 0, nullptr, told), WBEM_S_NO_ERROR);
        ExpectEnding(ending, told, L"DeleteInstance", ThingPath);
    }
}

TEST_F(RequestStatus, OfAnUpdateIsTheManagersOrItsExceptions)
{
    for (const Ending& ending : Endings())
    {
        SCOPED_TRACE(ending.name);
        manager->update = [&](CWomClassObject&, CWomContext& context, ULONG_PTR, ScriptedManager::Sink)
        { return ending.run(context); };
        const CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
        const CComPtr<FakeClassObject> instance = MakeObject<FakeClassObject>(thing);
        EXPECT_EQ(provider->PutInstanceAsync(instance, 0, nullptr, told), WBEM_S_NO_ERROR);
        ExpectEnding(ending, told, L"PutInstance", L"Zarn_Thing");
    }
}

TEST_F(RequestStatus, OfAMethodIsTheManagersOrItsExceptions)
{
    for (const Ending& ending : Endings())
    {
        SCOPED_TRACE(ending.name);
        manager->method = [&](ScriptedManager::Path&, const wchar_t*, CWomContext& context, CWomClassObject&,
                              CWomClassObject&, ScriptedManager::Sink) { return ending.run(context); };
        const CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
        EXPECT_EQ(provider->ExecMethodAsync(CComBSTR(ThingPath), CComBSTR(L"M"), 0, nullptr, nullptr, told),
                  WBEM_S_NO_ERROR);
        ExpectEnding(ending, told, L"ExecMethod", ThingPath);
        EXPECT_EQ(told->IndicateCalls(), 0u);
    }
}

TEST_F(RequestStatus, OfAGetThatSentNothingIsNotFound)
{
    for (const HRESULT success : {WBEM_S_NO_ERROR, WBEM_S_FALSE})
    {
        manager->get = [&](ScriptedManager::Path&, CWomContext&, ScriptedManager::Sink) { return success; };
        const CComPtr<RecordingSink> told = Get(ThingPath);
        EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_NOT_FOUND});
        EXPECT_EQ(told->Extended(L"Description"), L"There is no instance Zarn_Thing.DeviceID=\"X\"");
        EXPECT_EQ(told->Statuses().size(), 1u);
    }
}

TEST_F(RequestStatus, OfAnEnumerationThatSentNothingIsASuccess)
{
    const CComPtr<RecordingSink> told = Enumerate(L"Zarn_Thing");
    EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(told->IndicateCalls(), 0u);
}

TEST_F(RequestStatus, OfAGetWhoseOnlyRecordWasLostForWantOfMemorySaysSo)
{
    manager->get = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink)
    {
        context.NoteLostRecord(E_OUTOFMEMORY);
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Get(ThingPath);
    EXPECT_EQ(Hex{told->Final().result}, Hex{E_OUTOFMEMORY});
    EXPECT_EQ(told->Extended(L"Description"), L"There is not enough memory for the instance");
}

TEST_F(RequestStatus, OfAGetWhoseInstanceTheClientRefusedIsTheRefusal)
{
    sink->indicate = [](ULONG) { return WBEM_E_INVALID_OBJECT; };
    manager->get = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink to)
    {
        EXPECT_THROW(SendThing(context, to), CWomProviderException);
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Get(ThingPath);
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_OBJECT});
    EXPECT_EQ(told->Extended(L"Description"), L"The client did not take the instance");
}

TEST_F(RequestStatus, OfAnEnumerationThatTheClientLeftIsCancelled)
{
    sink->indicate = [](ULONG n) { return n < 3 ? WBEM_S_NO_ERROR : WBEM_E_CALL_CANCELLED; };
    int refused = 0;
    manager->enumerate = [&](CWomContext& context, ScriptedManager::Sink to)
    {
        for (int i = 0; i < 1000; ++i)
        {
            try
            {
                SendThing(context, to);
            }
            catch (const CWomProviderException& failure)
            {
                EXPECT_EQ(Hex{failure.WbemStatus()}, Hex{WBEM_E_CALL_CANCELLED});
                ++refused;
            }
        }
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Enumerate(L"Zarn_Thing");
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_CALL_CANCELLED});
    EXPECT_EQ(told->Taken(), 2u);
    EXPECT_EQ(told->IndicateCalls(), 3u);
    EXPECT_EQ(refused, 998);
    EXPECT_EQ(thing->spawned, 3u) << "the rest must cost no instance";
}

TEST_F(RequestStatus, IsToldOnceAlsoWhenTheManagerTellsOneItself)
{
    manager->enumerate = [](CWomContext&, ScriptedManager::Sink to)
    {
        to->SetStatus(WBEM_STATUS_COMPLETE, WBEM_E_FAILED, nullptr, nullptr);
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Enumerate(L"Zarn_Thing");
    EXPECT_EQ(told->Statuses().size(), 1u);
    EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
}

TEST_F(RequestStatus, IsToldOnceAlsoWhenTheClientDoesNotTakeIt)
{
    sink->statusAnswer = WBEM_E_FAILED;
    const CComPtr<RecordingSink> told = Enumerate(L"Zarn_Thing");
    EXPECT_EQ(told->Statuses().size(), 1u);
}

TEST_F(RequestStatus, ComesLastAlsoWhenTheManagerKeepsTheSink)
{
    ScriptedManager::Sink kept;
    manager->get = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink to)
    {
        kept = to;
        SendThing(context, to);
        return WBEM_S_NO_ERROR;
    };
    const CComPtr<RecordingSink> told = Get(ThingPath);
    IWbemClassObject* late = told->Objects().front();
    EXPECT_EQ(Hex{kept->Indicate(1, &late)}, Hex{WBEM_E_CALL_CANCELLED});
    EXPECT_EQ(told->Taken(), 1u);
    kept.Release();
    EXPECT_EQ(told->References(), 1u);
}

TEST_F(RequestStatus, OfAPathThatCannotBeReadSaysWhereItIsWrong)
{
    const CComPtr<RecordingSink> told = Get(L"Zarn_Thing.DeviceID=\"X");
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_OBJECT_PATH});
    EXPECT_THAT(Narrow(told->Extended(L"Description")), HasSubstr("The object path cannot be read: "));
    EXPECT_THAT(Narrow(told->Extended(L"Description")), HasSubstr("at character"));
    EXPECT_EQ(told->Extended(L"ParameterInfo"), L"Zarn_Thing.DeviceID=\"X");
}

TEST_F(RequestStatus, OfAClassWithoutAManagerIsInvalidClass)
{
    for (const CComPtr<RecordingSink>& told :
         {Get(L"Zarn_Other.DeviceID=\"X\""), Enumerate(L"Zarn_Other"), Query(L"SELECT * FROM Zarn_Other")})
    {
        EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_CLASS});
        EXPECT_EQ(told->Extended(L"Description"), L"No class manager serves the class Zarn_Other");
    }
}

TEST_F(RequestStatus, ReachesTheManagerAlsoWhenTheClientWritesTheClassInAnotherCase)
{
    int asked = 0;
    manager->enumerate = [&](CWomContext&, ScriptedManager::Sink)
    {
        ++asked;
        return WBEM_S_NO_ERROR;
    };
    EXPECT_EQ(Enumerate(L"ZARN_THING")->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(asked, 1);
}

TEST_F(RequestStatus, OfACallThatSaysNothingIsInvalidParameter)
{
    const auto expectRefused = [](const CComPtr<RecordingSink>& told)
    {
        EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_INVALID_PARAMETER});
        EXPECT_EQ(told->Extended(L"Description"), L"The call does not say what it is about");
        EXPECT_EQ(told->References(), 1u);
    };
    expectRefused(Get(nullptr));
    expectRefused(Enumerate(nullptr));
    expectRefused(Query(nullptr));
    const CComPtr<RecordingSink> put = MakeObject<RecordingSink>();
    EXPECT_EQ(provider->PutInstanceAsync(nullptr, 0, nullptr, put), WBEM_S_NO_ERROR);
    expectRefused(put);
    const CComPtr<RecordingSink> removal = MakeObject<RecordingSink>();
    EXPECT_EQ(provider->DeleteInstanceAsync(nullptr, 0, nullptr, removal), WBEM_S_NO_ERROR);
    expectRefused(removal);
    const CComPtr<RecordingSink> method = MakeObject<RecordingSink>();
    EXPECT_EQ(provider->ExecMethodAsync(nullptr, CComBSTR(L"M"), 0, nullptr, nullptr, method), WBEM_S_NO_ERROR);
    expectRefused(method);
}

TEST_F(RequestStatus, CannotBeToldWithoutASink)
{
    const CComBSTR path(ThingPath);
    const CComPtr<FakeClassObject> instance = MakeObject<FakeClassObject>(thing);
    EXPECT_EQ(Hex{provider->GetObjectAsync(path, 0, nullptr, nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(Hex{provider->CreateInstanceEnumAsync(path, 0, nullptr, nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(Hex{provider->ExecQueryAsync(path, path, 0, nullptr, nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(Hex{provider->PutInstanceAsync(instance, 0, nullptr, nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(Hex{provider->DeleteInstanceAsync(path, 0, nullptr, nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
    EXPECT_EQ(Hex{provider->ExecMethodAsync(path, path, 0, nullptr, nullptr, nullptr)}, Hex{WBEM_E_INVALID_PARAMETER});
}

TEST_F(RequestStatus, GoesWithoutWordsWhenTheServiceHasNone)
{
    services->before = [](const std::wstring& name)
    { return name == L"__ExtendedStatus" ? WBEM_E_NOT_FOUND : WBEM_S_NO_ERROR; };
    const CComPtr<RecordingSink> told = Get(ThingPath);
    EXPECT_EQ(Hex{told->Final().result}, Hex{WBEM_E_NOT_FOUND});
    EXPECT_EQ(told->Final().object.p, nullptr);
}

TEST_F(RequestStatus, OfAFailureIsTraced)
{
    const TraceCapture trace;
    Get(ThingPath);
    EXPECT_THAT(trace.Messages(),
                ElementsAre("ENTRY:  OrlInstProvider::GetObjectAsync",
                            "GetObject of Zarn_Thing.DeviceID=\"X\" ended with 0x80041002: There is no instance "
                            "Zarn_Thing.DeviceID=\"X\"",
                            "EXIT:  OrlInstProvider::GetObjectAsync"));
}

TEST_F(RequestStatus, FlagsOfTheClientReachTheManager)
{
    const CComPtr<FakeContext> client = MakeObject<FakeContext>();
    CComVariant yes(true);
    client->SetValue(L"__GET_EXT_KEYS_ONLY", 0, &yes);
    ULONG seen = 0;
    manager->get = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink to)
    {
        seen = context.ulSuppressProperties;
        SendThing(context, to);
        return WBEM_S_NO_ERROR;
    };
    EXPECT_EQ(Get(ThingPath, client)->Final().result, WBEM_S_NO_ERROR);
    EXPECT_EQ(seen, 1u);
    Get(ThingPath);
    EXPECT_EQ(seen, 0u);
}

TEST_F(RequestStatus, OneLookupServesAnEnumerationAndTheNext)
{
    manager->enumerate = [&](CWomContext& context, ScriptedManager::Sink to)
    {
        for (int i = 0; i < 10; ++i)
            SendThing(context, to);
        return WBEM_S_NO_ERROR;
    };
    EXPECT_EQ(Enumerate(L"Zarn_Thing")->Taken(), 10u);
    EXPECT_EQ(Enumerate(L"Zarn_Thing")->Taken(), 10u);
    EXPECT_THAT(services->Lookups(), ElementsAre(L"Zarn_Thing"));
}

TEST_F(RequestStatus, OtherOperationsAreNotOffered)
{
    IWbemServices* other = provider;
    EXPECT_EQ(Hex{other->GetObject(CComBSTR(ThingPath), 0, nullptr, nullptr, nullptr)},
              Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(Hex{other->PutClassAsync(nullptr, 0, nullptr, nullptr)}, Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
    EXPECT_EQ(Hex{other->ExecNotificationQueryAsync(nullptr, nullptr, 0, nullptr, nullptr)},
              Hex{WBEM_E_PROVIDER_NOT_CAPABLE});
}

} // namespace
} // namespace orl::test
