// One update and one method call, with memory that runs out at every moment of them: from the framework's COM face to
// the agent and back, and in the manager alone.

#include "tests/common/FailingNew.h"
#include "tests/settings/Settings.h"

#include "framework/com/OrlInstProvider.h"

#include <new>

namespace orl::test
{
namespace
{

constexpr wchar_t ModePath[] = L"Zarn_FCOESettingEnum.Caption=\"Mode\",ParentId=\"eth0\",ParentType=\"NIC\"";

bool MeansOutOfMemory(HRESULT status)
{
    return status == E_OUTOFMEMORY || status == static_cast<HRESULT>(WBEM_E_OUT_OF_MEMORY);
}

class OneSettingManager final : public ManagerSource
{
public:
    OneSettingManager(COrlFcoeAgentIntf* fcoeAgent, OrlAdapterAgent* adapterAgent)
    {
        m_table.AddClassManager(CComBSTR(L"Zarn_FCOESettingEnum"), new CKfgSettingEnumMgr(fcoeAgent, adapterAgent));
    }
    const ManagerTable* Managers(HRESULT& answer, COrlString&) noexcept override
    {
        answer = WBEM_S_NO_ERROR;
        return &m_table;
    }

private:
    ManagerTable m_table;
};

class IgnoringInitSink final : public ComObject<IWbemProviderInitSink>
{
public:
    HRESULT STDMETHODCALLTYPE SetStatus(LONG, LONG) override { return WBEM_S_NO_ERROR; }
};

class WholeSetting : public SettingTest
{
protected:
    WholeSetting()
    {
        adapterAgent.settings[L"eth0"] = {Choice(adapterAgent, L"Mode")};
        adapterAgent.warnings = {{2, 17, L"a reboot is needed"}};
        services->Add(FakeWarningMessage());
        services->Add(FakeExtendedStatus());
        enumClass->methods[L"ValidateAndSetSetting"] = {MakeFakeClass(L"In"), MakeFakeClass(L"Out")};
        provider.Attach(new OrlInstProvider(managers));
        Initialize();
    }

    // A new connection: its cache of class definitions is empty.
    void Initialize()
    {
        CComPtr<IgnoringInitSink> told;
        told.Attach(new IgnoringInitSink());
        ASSERT_EQ(provider->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, told), WBEM_S_NO_ERROR);
    }

    // An instance of the class itself, as the service hands it in.
    CComPtr<FakeClassObject> Instance()
    {
        CComPtr<FakeClassObject> instance;
        instance.Attach(new FakeClassObject(enumClass));
        instance->Preset(L"ParentId", CComVariant(L"eth0"));
        instance->Preset(L"Caption", CComVariant(L"Mode"));
        instance->Preset(L"DisplayValue", CComVariant(L"a text that is long enough to have memory of its own"));
        return instance;
    }

    // Runs the request until no allocation of a BSTR is left to fail; answers how many were.
    ULONG SweepBstrs(const std::function<CComPtr<RecordingSink>()>& request, ULONG settingsLeft)
    {
        const ULONG objects = ModuleReferences();
        for (ULONG n = 1; n < 1000; ++n)
        {
            SCOPED_TRACE(n);
            const int live = adapterAgent.log.live;
            const ULONG before = OrlBstrAllocations();
            OrlFailBstrAllocation(n);
            CComPtr<RecordingSink> told = request();
            const bool failed = OrlBstrAllocations() - before >= n;
            OrlFailBstrAllocation(0);

            EXPECT_EQ(told->Statuses().size(), 1U);
            EXPECT_EQ(told->References(), 1U);
            EXPECT_LE(adapterAgent.log.live - live, static_cast<int>(settingsLeft));
            if (!failed)
            {
                EXPECT_EQ(told->Final().result, WBEM_S_NO_ERROR);
                return n - 1;
            }
            EXPECT_TRUE(MeansOutOfMemory(told->Final().result)) << std::hex << told->Final().result;
            told.Release();
            Initialize();
            EXPECT_EQ(ModuleReferences(), objects) << "objects are left behind";
        }
        ADD_FAILURE() << "no run succeeded";
        return 0;
    }

    // The same with every other allocation, of the manager alone: the request throws what tells of it.
    ULONG SweepNew(const std::function<void()>& request, ULONG settingsLeft)
    {
        for (unsigned n = 1; n < 1000; ++n)
        {
            SCOPED_TRACE(n);
            const int live = adapterAgent.log.live;
            adapterAgent.calls.clear();
            bool failed = false;
            try
            {
                const AllocationFailure failure(n);
                request();
            }
            catch (const std::bad_alloc&)
            {
                failed = true;
            }
            catch (const CAtlException& refusal)
            {
                EXPECT_EQ(refusal.m_hr, E_OUTOFMEMORY);
                failed = true;
            }
            EXPECT_LE(adapterAgent.log.live - live, static_cast<int>(settingsLeft));
            EXPECT_EQ(sink->References(), 1U);
            if (!failed)
                return n - 1;
        }
        ADD_FAILURE() << "no run succeeded";
        return 0;
    }

    OneSettingManager managers{&agent, &adapterAgent};
    CComPtr<OrlInstProvider> provider;
};

TEST_F(WholeSetting, UpdateEndsWithTheStatusOfMemoryWhereverItRunsOut)
{
    const CComPtr<FakeClassObject> instance = Instance();
    const ULONG failures = SweepBstrs(
        [&]
        {
            CComPtr<RecordingSink> told;
            told.Attach(new RecordingSink());
            EXPECT_EQ(provider->PutInstanceAsync(instance, 0, nullptr, told), WBEM_S_NO_ERROR);
            return told;
        },
        1);
    // The class's name, two keys and the text that is read.
    EXPECT_GE(failures, 4U);
    EXPECT_EQ(adapterAgent.calls.back(),
              L"SetSetting(eth0, Mode, 50/a text that is long enough to have memory of its own)");
}

TEST_F(WholeSetting, MethodEndsWithTheStatusOfMemoryWhereverItRunsOut)
{
    const CComBSTR path(ModePath);
    const CComBSTR method(L"ValidateAndSetSetting");
    const CComPtr<FakeClassObject> in = Object({{L"DisplayValue", CComVariant(L"a text that has memory of its own")},
                                                {L"SetValuesOnNoError", CComVariant(LONG{1})}});
    const ULONG failures = SweepBstrs(
        [&]
        {
            CComPtr<RecordingSink> told;
            told.Attach(new RecordingSink());
            EXPECT_EQ(provider->ExecMethodAsync(path, method, 0, nullptr, in, told), WBEM_S_NO_ERROR);
            return told;
        },
        0);
    // The path, its keys and the class's name, the text that is read and the warning.
    EXPECT_GE(failures, 8U);
    EXPECT_EQ(adapterAgent.calls.back(),
              L"ValidateSettingModification(eth0, Mode, 50/a text that has memory of its own, 1)");
}

TEST_F(WholeSetting, UpdateThrowsWhereverMemoryRunsOutAndLeavesNothingElseBehind)
{
    const CComPtr<FakeClassObject> instance = Instance();
    CWomContext context(services);
    CWomClassObject written(context, instance);
    EXPECT_GE(
        SweepNew([&] { enumManager.UpdateInstanceAsync(written, context, 0, CComPtr<IWbemObjectSink>(sink.p)); }, 1),
        5U);
    EXPECT_EQ(adapterAgent.calls.size(), 2U);
}

TEST_F(WholeSetting, MethodThrowsWhereverMemoryRunsOutAndLeavesNothingBehind)
{
    COrlWmiAutoParsedObjectPath path;
    ASSERT_EQ(path.Parse(ModePath), WBEM_S_NO_ERROR);
    const CComPtr<FakeClassObject> in = Object({{L"DisplayValue", CComVariant(L"a text that has memory of its own")}});
    const FakeClassPtr outClass = MakeFakeClass(L"Out");
    CWomContext context(services);
    CWomClassObject inParameters(context, in);
    EXPECT_GE(SweepNew(
                  [&]
                  {
                      CComPtr<FakeClassObject> out;
                      out.Attach(new FakeClassObject(outClass));
                      CWomClassObject outParameters(context, out);
                      EXPECT_EQ(enumManager.ExecMethodAsync(path, L"ValidateAndSetSetting", context, inParameters,
                                                            outParameters, CComPtr<IWbemObjectSink>(sink.p)),
                                0);
                  },
                  0),
              10U);
    EXPECT_EQ(adapterAgent.log.live, 0);
}

} // namespace
} // namespace orl::test
