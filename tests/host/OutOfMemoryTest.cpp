// Memory that runs out at any moment of a client's call.
#include "tests/common/FailingNew.h"
#include "tests/host/Fixture.h"

#include "host/CallStatus.h"

namespace orl::test
{
namespace
{

// What a call hands out: nothing of it when the call fails.
struct Out
{
    CComPtr<IWbemClassObject> object;
    CComPtr<IEnumWbemClassObject> objects;
    CComPtr<IWbemCallResult> result;

    bool IsEmpty() const { return !object && !objects && !result; }
};

class HostOutOfMemory : public HostTest
{
protected:
    using Operation = std::function<HRESULT(IWbemServices& service, Out& out)>;

    // With the nth allocation of the client's thread failing, and all after it, for n = 1, 2, 3, ... until none fails.
    void RunUntilSuccess(const Operation& operation)
    {
        ServeLamps({L"a", L"b"});
        Service();
        ASSERT_TRUE(Succeeds(operation)) << "what is loaded once is loaded";
        const ULONG objects = ModuleReferences();
        for (unsigned nth = 1; nth < 2000; ++nth)
        {
            SCOPED_TRACE(nth);
            Out out;
            HRESULT code = E_UNEXPECTED;
            try
            {
                const AllocationFailure failure(nth);
                code = operation(Service(), out);
            }
            catch (...)
            {
                FAIL() << "an exception left a COM method";
            }
            EXPECT_EQ(FAILED(code), out.IsEmpty());
            if (SUCCEEDED(code))
            {
                EXPECT_GT(nth, 5u) << "or the test shows nothing";
                return;
            }
            EXPECT_TRUE(code == WBEM_E_OUT_OF_MEMORY || code == WBEM_E_FAILED || code == E_OUTOFMEMORY)
                << ::testing::PrintToString(HexText(code));
            SetErrorInfo(0, nullptr);
            EXPECT_EQ(objects, ModuleReferences()) << "objects are left behind";
        }
        FAIL() << "no run succeeded";
    }

private:
    bool Succeeds(const Operation& operation)
    {
        Out out;
        const bool isDone = SUCCEEDED(operation(Service(), out));
        out = {};
        Own().Workers().Stop();
        SetErrorInfo(0, nullptr);
        return isDone;
    }
};

TEST_F(HostOutOfMemory, EndsAGetWithItsStatus)
{
    const CComBSTR path(L"Test_Room.Name=\"Hall\",Floor=0");
    RunUntilSuccess([&](IWbemServices& service, Out& out)
                    { return service.GetObject(path, 0, nullptr, &out.object, nullptr); });
}

TEST_F(HostOutOfMemory, EndsAGetOfAClassWithItsStatus)
{
    const CComBSTR path(L"Test_Lamp");
    RunUntilSuccess([&](IWbemServices& service, Out& out)
                    { return service.GetObject(path, 0, nullptr, &out.object, nullptr); });
}

TEST_F(HostOutOfMemory, RefusesAnEnumeration)
{
    const CComBSTR name(L"Test_Lamp");
    RunUntilSuccess([&](IWbemServices& service, Out& out)
                    { return service.CreateInstanceEnum(name, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &out.objects); });
}

TEST_F(HostOutOfMemory, RefusesAQuery)
{
    const CComBSTR language(L"WQL");
    const CComBSTR query(L"SELECT Name FROM Test_Lamp WHERE Watts > 10 AND Name LIKE 'a%'");
    RunUntilSuccess(
        [&](IWbemServices& service, Out& out)
        { return service.ExecQuery(language, query, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &out.objects); });
}

TEST_F(HostOutOfMemory, LosesNothingOfAListOfObjectsThatCannotBeTaken)
{
    Use(std::wstring(kLampMof) + L"class Test_Rack { [key] string Name; Test_Shade Shades[]; };");
    const CComPtr<IWbemClassObject> rack = Spawn(L"Test_Rack");
    CComVariant shades;
    shades.parray = SafeArrayCreateVector(VT_UNKNOWN, 0, 3);
    shades.vt = VT_ARRAY | VT_UNKNOWN;
    for (LONG i = 0; i < 3; ++i)
    {
        const CComPtr<IWbemClassObject> shade = Spawn(L"Test_Shade");
        CComVariant material(L"a material whose name is too long for a short string");
        ASSERT_EQ(WBEM_S_NO_ERROR, shade->Put(L"Material", 0, &material, 0));
        ASSERT_EQ(S_OK, SafeArrayPutElement(shades.parray, &i, shade.p));
    }
    SetErrorInfo(0, nullptr);
    const ULONG objects = ModuleReferences();
    unsigned failures = 0;
    for (unsigned nth = 1; nth < 200; ++nth)
    {
        HRESULT code = E_UNEXPECTED;
        {
            const AllocationFailure failure(nth);
            code = rack->Put(L"Shades", 0, &shades, 0);
        }
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(objects, ModuleReferences()) << nth;
        if (SUCCEEDED(code))
            break;
        ++failures;
    }
    EXPECT_GT(failures, 3u) << "or the test shows nothing";
    EXPECT_LT(failures, 199u) << "no run succeeded";
}

} // namespace
} // namespace orl::test
