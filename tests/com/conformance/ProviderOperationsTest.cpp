// Every operation of the provider's interfaces: what it is capable of, and that the rest says so.

#include "tests/com/conformance/InstalledProduct.h"
#include "tests/com/conformance/LoadedServer.h"
#include "Common/Src/ModuleTrace.h"
#include "tests/support/FakeWbemServices.h"
#include "tests/support/RecordingSink.h"

#include <gtest/gtest.h>

#include <functional>

ORL_MODULE_TRACE_OFF;

namespace orl::test
{
namespace
{

class InitializationSink final : public ComObject<IWbemProviderInitSink>
{
public:
    std::vector<LONG> statuses;
    HRESULT STDMETHODCALLTYPE SetStatus(LONG status, LONG) override
    {
        statuses.push_back(status);
        return WBEM_S_NO_ERROR;
    }
};

class ProviderOperations : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_product = new InstalledProduct; }
    static void TearDownTestSuite() { delete std::exchange(s_product, nullptr); }

    ProviderOperations()
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        const FakeClassPtr hba = MakeFakeClass(L"Zarn_FCOEHBA");
        hba->methods[L"RefreshTargets"] = {nullptr, MakeFakeClass(L"__PARAMETERS", {{L"ReturnValue", CIM_UINT32}})};
        services->Add(hba);
        provider = server.Make<IWbemServices>(ProviderClass);
    }
    ~ProviderOperations() override { CoUninitialize(); }

    HRESULT Initialize(IWbemServices* service, IWbemProviderInitSink* told)
    {
        return CComQIPtr<IWbemProviderInit>(provider)->Initialize(nullptr, 0, nullptr, nullptr, service, nullptr, told);
    }
    void ExpectInitialized()
    {
        const CComPtr<InitializationSink> told = MakeObject<InitializationSink>();
        EXPECT_EQ(Initialize(services, told), WBEM_S_NO_ERROR);
        EXPECT_EQ(told->statuses, (std::vector<LONG>{static_cast<LONG>(WBEM_S_INITIALIZED)}));
    }
    CComPtr<RecordingSink> Enumerate()
    {
        CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
        EXPECT_EQ(provider->CreateInstanceEnumAsync(CComBSTR(L"Zarn_FCOEHBA"), 0, nullptr, sink), WBEM_S_NO_ERROR);
        return sink;
    }

    const LoadedServer server{L"Orl2InstUtility"};
    CComPtr<FakeWbemServices> services = MakeObject<FakeWbemServices>();
    CComPtr<IWbemServices> provider;
    static InstalledProduct* s_product;
};

InstalledProduct* ProviderOperations::s_product = nullptr;

const CComBSTR Path(L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"");
const CComBSTR ClassName(L"Zarn_FCOEHBA");
const CComBSTR Method(L"RefreshTargets");
const CComBSTR Language(L"WQL");
const CComBSTR Query(L"SELECT * FROM Zarn_FCOEHBA");

// An operation that a provider leaves to the service. `out` is a place for its answer, which must come back empty.
struct Incapable
{
    const char* name;
    std::function<HRESULT(IWbemServices*, IWbemObjectSink* sink, void** out)> call;
    bool answers; // into `out`
};

template <typename Interface>
Interface** As(void** place)
{
    return reinterpret_cast<Interface**>(place);
}

const std::vector<Incapable>& IncapableOperations()
{
    using S = IWbemServices;
    using Sink = IWbemObjectSink;
    static const std::vector<Incapable> operations = {
        {"OpenNamespace",
         [](S* s, Sink*, void** out) { return s->OpenNamespace(ClassName, 0, nullptr, As<S>(out), nullptr); }, true},
        {"CancelAsyncCall", [](S* s, Sink* sink, void**) { return s->CancelAsyncCall(sink); }, false},
        {"QueryObjectSink", [](S* s, Sink*, void** out) { return s->QueryObjectSink(0, As<Sink>(out)); }, true},
        {"GetObject",
         [](S* s, Sink*, void** out) { return s->GetObject(Path, 0, nullptr, As<IWbemClassObject>(out), nullptr); },
         true},
        {"PutClass", [](S* s, Sink*, void**) { return s->PutClass(nullptr, 0, nullptr, nullptr); }, false},
        {"PutClassAsync", [](S* s, Sink* sink, void**) { return s->PutClassAsync(nullptr, 0, nullptr, sink); }, false},
        {"DeleteClass", [](S* s, Sink*, void**) { return s->DeleteClass(ClassName, 0, nullptr, nullptr); }, false},
        {"DeleteClassAsync", [](S* s, Sink* sink, void**) { return s->DeleteClassAsync(ClassName, 0, nullptr, sink); },
         false},
        {"CreateClassEnum",
         [](S* s, Sink*, void** out)
         { return s->CreateClassEnum(ClassName, 0, nullptr, As<IEnumWbemClassObject>(out)); },
         true},
        {"CreateClassEnumAsync",
         [](S* s, Sink* sink, void**) { return s->CreateClassEnumAsync(ClassName, 0, nullptr, sink); }, false},
        {"PutInstance", [](S* s, Sink*, void**) { return s->PutInstance(nullptr, 0, nullptr, nullptr); }, false},
        {"DeleteInstance", [](S* s, Sink*, void**) { return s->DeleteInstance(Path, 0, nullptr, nullptr); }, false},
        {"CreateInstanceEnum",
         [](S* s, Sink*, void** out)
         { return s->CreateInstanceEnum(ClassName, 0, nullptr, As<IEnumWbemClassObject>(out)); },
         true},
        {"ExecQuery",
         [](S* s, Sink*, void** out)
         { return s->ExecQuery(Language, Query, 0, nullptr, As<IEnumWbemClassObject>(out)); },
         true},
        {"ExecNotificationQuery",
         [](S* s, Sink*, void** out)
         { return s->ExecNotificationQuery(Language, Query, 0, nullptr, As<IEnumWbemClassObject>(out)); },
         true},
        {"ExecNotificationQueryAsync",
         [](S* s, Sink* sink, void**) { return s->ExecNotificationQueryAsync(Language, Query, 0, nullptr, sink); },
         false},
        {"ExecMethod",
         [](S* s, Sink*, void** out)
         { return s->ExecMethod(Path, Method, 0, nullptr, nullptr, As<IWbemClassObject>(out), nullptr); },
         true},
    };
    return operations;
}

TEST_F(ProviderOperations, WhatItIsNotCapableOfSaysSoAndAnswersNothing)
{
    ExpectInitialized();
    for (const Incapable& operation : IncapableOperations())
    {
        SCOPED_TRACE(operation.name);
        const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
        void* const before = this;
        void* out = before;
        EXPECT_EQ(operation.call(provider, sink, &out), WBEM_E_PROVIDER_NOT_CAPABLE);
        EXPECT_EQ(out, operation.answers ? nullptr : before);
        EXPECT_EQ(operation.call(provider, nullptr, nullptr), WBEM_E_PROVIDER_NOT_CAPABLE);
        EXPECT_TRUE(sink->Statuses().empty());
        EXPECT_EQ(sink->References(), 1U);
    }
}

// An operation that it is capable of, and how it ends for the arguments here.
struct Capable
{
    const char* name;
    std::function<HRESULT(IWbemServices*, IWbemClassObject* port, IWbemObjectSink* sink)> call;
    HRESULT result;
    ULONG objects;
};

const std::vector<Capable>& CapableOperations()
{
    using S = IWbemServices;
    using Object = IWbemClassObject;
    using Sink = IWbemObjectSink;
    static const std::vector<Capable> operations = {
        {"GetObjectAsync", [](S* s, Object*, Sink* sink) { return s->GetObjectAsync(Path, 0, nullptr, sink); },
         WBEM_S_NO_ERROR, 1},
        {"CreateInstanceEnumAsync",
         [](S* s, Object*, Sink* sink) { return s->CreateInstanceEnumAsync(ClassName, 0, nullptr, sink); },
         WBEM_S_NO_ERROR, 2},
        {"ExecQueryAsync",
         [](S* s, Object*, Sink* sink) { return s->ExecQueryAsync(Language, Query, 0, nullptr, sink); },
         WBEM_S_NO_ERROR, 2},
        {"ExecMethodAsync",
         [](S* s, Object*, Sink* sink) { return s->ExecMethodAsync(Path, Method, 0, nullptr, nullptr, sink); },
         WBEM_S_NO_ERROR, 1},
        {"PutInstanceAsync",
         [](S* s, Object* object, Sink* sink) { return s->PutInstanceAsync(object, 0, nullptr, sink); },
         WBEM_E_ACCESS_DENIED, 0},
        {"DeleteInstanceAsync",
         [](S* s, Object*, Sink* sink) { return s->DeleteInstanceAsync(Path, 0, nullptr, sink); }, WBEM_E_ACCESS_DENIED,
         0},
    };
    return operations;
}

TEST_F(ProviderOperations, WhatItIsCapableOfEndsWithOneStatusAndKeepsNothing)
{
    ExpectInitialized();
    const FakeClassPtr definition = MakeFakeClass(L"Zarn_FCOEHBA");
    for (const Capable& operation : CapableOperations())
    {
        SCOPED_TRACE(operation.name);
        const CComPtr<FakeClassObject> object = MakeObject<FakeClassObject>(definition);
        object->Preset(L"__CLASS", CComVariant(L"Zarn_FCOEHBA"));
        object->Preset(L"__RELPATH", CComVariant(Path));
        const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
        EXPECT_EQ(operation.call(provider, object, sink), WBEM_S_NO_ERROR);
        EXPECT_EQ(sink->Final().result, operation.result);
        EXPECT_EQ(sink->Taken(), operation.objects);
        EXPECT_EQ(sink->References(), 1U);
        EXPECT_EQ(References(object), 1U);
    }
    EXPECT_EQ(References(provider), 1U);
}

TEST_F(ProviderOperations, CallWithoutASinkIsRefused)
{
    ExpectInitialized();
    for (const Capable& operation : CapableOperations())
        EXPECT_EQ(operation.call(provider, nullptr, nullptr), WBEM_E_INVALID_PARAMETER) << operation.name;
}

TEST_F(ProviderOperations, BeforeItIsInitializedEveryCallEndsWithALoadFailure)
{
    for (const Capable& operation : CapableOperations())
    {
        SCOPED_TRACE(operation.name);
        const CComPtr<RecordingSink> sink = MakeObject<RecordingSink>();
        EXPECT_EQ(operation.call(provider, nullptr, sink), WBEM_S_NO_ERROR);
        EXPECT_EQ(sink->Final().result, WBEM_E_PROVIDER_LOAD_FAILURE);
        EXPECT_EQ(sink->Taken(), 0U);
    }
}

TEST_F(ProviderOperations, InitializationNeedsASinkAndAService)
{
    EXPECT_EQ(Initialize(services, nullptr), WBEM_E_INVALID_PARAMETER);
    const CComPtr<InitializationSink> told = MakeObject<InitializationSink>();
    EXPECT_EQ(Initialize(nullptr, told), WBEM_E_INVALID_PARAMETER);
    EXPECT_EQ(told->statuses, (std::vector<LONG>{WBEM_E_INVALID_PARAMETER}));
    EXPECT_EQ(References(told), 1U);
    EXPECT_EQ(References(services), 1U);
    provider.Release();
    EXPECT_EQ(server.CanUnloadNow(), S_FALSE) << "the thread's error object tells the reason";
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
}

TEST_F(ProviderOperations, ShutdownLetsTheServiceGoAndInitializationTakesItBack)
{
    ExpectInitialized();
    EXPECT_EQ(Enumerate()->Taken(), 2U);
    EXPECT_GT(References(services), 1U);
    EXPECT_EQ(CComQIPtr<IWbemShutdown>(provider)->Shutdown(0, 0, nullptr), WBEM_S_NO_ERROR);
    EXPECT_EQ(References(services), 1U);
    EXPECT_EQ(CComQIPtr<IWbemShutdown>(provider)->Shutdown(0, 0, nullptr), WBEM_S_NO_ERROR) << "twice does no harm";
    EXPECT_EQ(Enumerate()->Final().result, WBEM_E_PROVIDER_LOAD_FAILURE);
    ExpectInitialized();
    EXPECT_EQ(Enumerate()->Taken(), 2U);
}

TEST_F(ProviderOperations, LastReleaseLetsTheServiceGo)
{
    ExpectInitialized();
    EXPECT_EQ(Enumerate()->Taken(), 2U);
    provider.Release();
    EXPECT_EQ(References(services), 1U);
    EXPECT_EQ(server.CanUnloadNow(), S_OK);
}

} // namespace
} // namespace orl::test
