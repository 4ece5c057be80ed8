// Memory that runs out at any moment of a request.
#include "tests/framework/Fixture.h"

#include "framework/include/OrlStatusOfCurrentException.h"

namespace orl::test
{
namespace
{

bool MeansOutOfMemory(HRESULT status)
{
    return status == E_OUTOFMEMORY || status == WBEM_E_OUT_OF_MEMORY;
}

class OutOfMemory : public ProviderTest
{
protected:
    // As the class managers do: a record that cannot be sent is left out.
    HRESULT SendOrLeaveOut(CWomContext& context, const ScriptedManager::Sink& to)
    {
        CWomClassObject classObject(context);
        classObject.CreateClass(CComBSTR(manager->GetCimClassName()));
        try
        {
            CWomClassObject instance(context);
            instance.SpawnInstanceFromClass(classObject);
            instance.SetProperty(L"DeviceID", COrlString(std::wstring(300, L'X')));
            instance.SetProperty(L"Name", CComBSTR(L"A thing"));
            instance.Indicate(to);
        }
        catch (...)
        {
            context.NoteLostRecord(OrlStatusOfCurrentException());
        }
        return WBEM_S_NO_ERROR;
    }

    // Runs the operation with the n-th allocation of a BSTR failing, for n = 1, 2, 3, ... until none is left to fail.
    // Answers how many runs failed.
    template <typename Operation>
    ULONG RunUntilSuccess(Operation operation)
    {
        const ULONG objects = ModuleReferences();
        for (ULONG n = 1; n < 1000; ++n)
        {
            SCOPED_TRACE(n);
            if (RunsWithFailureAt(n, operation))
                return n - 1;
            // A new connection has an empty cache: every run begins where the first did.
            provider->Initialize(nullptr, 0, nullptr, nullptr, services, nullptr, init);
            EXPECT_EQ(ModuleReferences(), objects) << "objects are left behind";
        }
        ADD_FAILURE() << "no run succeeded";
        return 0;
    }

    template <typename Operation>
    bool RunsWithFailureAt(ULONG n, Operation operation)
    {
        const ULONG before = OrlBstrAllocations();
        OrlFailBstrAllocation(n);
        const CComPtr<RecordingSink> told = operation();
        const bool failed = OrlBstrAllocations() - before >= n;
        OrlFailBstrAllocation(0);
        EXPECT_EQ(told->Statuses().size(), 1u);
        EXPECT_EQ(told->References(), 1u);
        EXPECT_EQ(told->Taken(), failed ? 0u : 1u);
        const HRESULT status = told->Final().result;
        if (failed)
            EXPECT_TRUE(MeansOutOfMemory(status)) << Hex{status};
        else
            EXPECT_EQ(Hex{status}, Hex{WBEM_S_NO_ERROR});
        return !failed;
    }

    CComPtr<RecordingInitSink> init = MakeObject<RecordingInitSink>();
};

// Arguments are made outside: what the service hands in is there already.
TEST_F(OutOfMemory, EndsEveryGetThatItMeetsWithItsStatusAndLeavesNothingBehind)
{
    manager->get = [&](ScriptedManager::Path&, CWomContext& context, ScriptedManager::Sink to)
    { return SendOrLeaveOut(context, to); };
    const CComBSTR path(L"Zarn_Thing.DeviceID=\"X\"");
    const ULONG failures = RunUntilSuccess(
        [&]
        {
            CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
            EXPECT_EQ(provider->GetObjectAsync(path, 0, nullptr, told), WBEM_S_NO_ERROR);
            return told;
        });
    // The path's text and key, the class name, a long text on its way, two properties of the object.
    EXPECT_GE(failures, 6u);
}

TEST_F(OutOfMemory, EndsEveryMethodThatItMeetsWithItsStatusAndLeavesNothingBehind)
{
    thing->methods[L"M"] = {nullptr, MakeFakeClass(L"Out", {{L"W", CIM_OBJECT | CIM_FLAG_ARRAY}, {L"R", CIM_STRING}})};
    services->Add(FakeWarningMessage());
    manager->method = [](ScriptedManager::Path&, const wchar_t*, CWomContext&, CWomClassObject&, CWomClassObject& out,
                         ScriptedManager::Sink)
    {
        out.SetProperty(L"W", std::vector<WarningMessageObj>{{1, 2, L"three"}});
        return out.SetProperty(L"R", std::wstring(300, L'r').c_str());
    };
    const CComBSTR path(L"Zarn_Thing.DeviceID=\"X\"");
    const CComBSTR method(L"M");
    const ULONG failures = RunUntilSuccess(
        [&]
        {
            CComPtr<RecordingSink> told = MakeObject<RecordingSink>();
            EXPECT_EQ(provider->ExecMethodAsync(path, method, 0, nullptr, nullptr, told), WBEM_S_NO_ERROR);
            return told;
        });
    // The path's text and key, two class names, the result's long text on its way, the warning's text and the result's
    // in the objects.
    EXPECT_GE(failures, 7u);
}

} // namespace
} // namespace orl::test
