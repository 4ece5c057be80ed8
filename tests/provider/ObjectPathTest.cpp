// The managers' base: what is read out of object paths, what paths are built, and what is refused.

#include "tests/provider/Fixture.h"

#include "provider/Zarn_Fcoe.h"

#include <functional>

namespace orl::test
{
namespace
{

class PlainManager final : public CZarn_Fcoe
{
public:
    using CZarn_Fcoe::CZarn_Fcoe;
    const wchar_t* GetCimClassName() override { return L"Zarn_Plain"; }
    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath&, CWomContext&, CComPtr<IWbemObjectSink>) override { return 0; }
    HRESULT CreateInstanceEnumAsync(CWomContext&, CComPtr<IWbemObjectSink>) override { return 0; }
};

class ObjectPath : public ::testing::Test
{
protected:
    PlainManager manager{nullptr};
    CWomContext context{nullptr};

    static COrlWmiAutoParsedObjectPath Parsed(const wchar_t* text)
    {
        COrlWmiAutoParsedObjectPath path;
        EXPECT_EQ(path.Parse(text), WBEM_S_NO_ERROR) << "the test's own path";
        return path;
    }
};

TEST_F(ObjectPath, DeviceIdIsReadAsText)
{
    const struct
    {
        const wchar_t* path;
        const wchar_t* deviceId;
    } cases[] = {
        {L"Zarn_FCOEHBA.DeviceID=\"eth0.1002\"", L"eth0.1002"},
        {L"Zarn_FCOEHBA.deviceid=\"eth0.1002\"", L"eth0.1002"},
        {L"Zarn_FCoEPort.WorldWidePortName=\"2000\",DeviceID=\"X\"", L"X"},
        {L"Zarn_FCOEHBA.DeviceID=\"\"", L""},
        {L"Zarn_FCOEHBA.DeviceID=17", L"17"},
        {L"Zarn_FCOEHBA=\"eth0.1002\"", L"eth0.1002"},
        {L"\\\\server\\root\\KESTA:Zarn_FCOEHBA.DeviceID=\"eth0.1002\"", L"eth0.1002"},
    };
    for (const auto& row : cases)
    {
        COrlWmiAutoParsedObjectPath path = Parsed(row.path);
        EXPECT_EQ(std::wstring(manager.GetDeviceIdFromPath(path, context)), row.deviceId) << Narrow(row.path);
    }
}

TEST_F(ObjectPath, TextKeyGivenAsANumberReadsAsEmpty)
{
    COrlWmiAutoParsedObjectPath path = Parsed(L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=100");
    EXPECT_TRUE(manager.GetKeyFromPath(path, L"VlanID", context).IsEmpty());
}

TEST_F(ObjectPath, TextKeyReadsWhatStandsInQuotes)
{
    COrlWmiAutoParsedObjectPath path = Parsed(L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"100\"");
    EXPECT_EQ(std::wstring(manager.GetKeyFromPath(path, L"vlanid", context)), L"100");
}

TEST_F(ObjectPath, IntegerKeyReadsBareIntegersOnly)
{
    const struct
    {
        const wchar_t* path;
        LONG id;
    } cases[] = {
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=5", 5},     {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=-1", -1},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=0x10", 16}, {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"5\"", 0},
        {L"Zarn_FCoeLUN.DeviceID=\"X\",ID=TRUE", 0},
    };
    for (const auto& row : cases)
    {
        COrlWmiAutoParsedObjectPath path = Parsed(row.path);
        EXPECT_EQ(manager.GetIntKeyFromPath(path, L"ID", context), row.id) << Narrow(row.path);
    }
}

TEST_F(ObjectPath, MissingKeyIsReportedWithThePathAndTheReadersLine)
{
    constexpr wchar_t text[] = L"Zarn_Thing.Other=\"1\",More=\"2\"";
    const struct
    {
        std::function<void(COrlWmiAutoParsedObjectPath&)> read;
        int line;
    } cases[] = {
        {[this](COrlWmiAutoParsedObjectPath& path) { manager.GetDeviceIdFromPath(path, context); }, 260},
        {[this](COrlWmiAutoParsedObjectPath& path) { manager.GetKeyFromPath(path, L"DeviceID", context); }, 288},
        {[this](COrlWmiAutoParsedObjectPath& path) { manager.GetIntKeyFromPath(path, L"DeviceID", context); }, 321},
    };
    for (const auto& row : cases)
    {
        COrlWmiAutoParsedObjectPath path = Parsed(text);
        ExpectRefusal([&] { row.read(path); }, {0x8004090F, text, 0x80041002, L"Src\\Zarn_FCOE", row.line});
    }
}

TEST_F(ObjectPath, EveryReaderTracesItsScope)
{
    COrlWmiAutoParsedObjectPath path = Parsed(L"C.DeviceID=\"X\",ID=1");
    const TraceCapture trace;
    manager.GetDeviceIdFromPath(path, context);
    manager.GetKeyFromPath(path, L"DeviceID", context);
    manager.GetIntKeyFromPath(path, L"ID", context);
    EXPECT_EQ(trace.Messages(), (std::vector<std::string>{
                                    "ENTRY:  CZarn_Fcoe::GetDeviceIdFromPath", "EXIT:  CZarn_Fcoe::GetDeviceIdFromPath",
                                    "ENTRY:  CZarn_Fcoe::GetKeyFromPath", "EXIT:  CZarn_Fcoe::GetKeyFromPath",
                                    "ENTRY:  CZarn_Fcoe::GetIntKeyFromPath", "EXIT:  CZarn_Fcoe::GetIntKeyFromPath"}));
}

TEST_F(ObjectPath, BuildersWriteOneFormAndTraceTheirScope)
{
    const struct
    {
        std::function<void(BSTR&)> make;
        const wchar_t* path;
        const char* scope;
    } cases[] = {
        {[this](BSTR& path) { manager.MakeDevicePathFromDeviceID(context, L"X", path); },
         L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\"", "CZarn_Fcoe::MakeDevicePathFromDeviceID"},
        {[this](BSTR& path) { manager.MakeHBAPathFromDeviceID(context, L"X", path); }, L"Zarn_FCOEHBA.DeviceID=\"X\"",
         "CZarn_Fcoe::MakeHBAPathFromDeviceID"},
        {[this](BSTR& path) { manager.MakeFabricPathFromDeviceIDWWN(context, L"X", L"N", path); },
         L"Zarn_FCoEFabric.DeviceID=\"X\",WorldWideNodeName=\"N\"", "CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN"},
        {[this](BSTR& path) { manager.MakePortPathFromWWN(context, L"X", L"P", path); },
         L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"P\"", "CZarn_Fcoe::MakePortPathFromWWN"},
        {[this](BSTR& path) { manager.MakeTargetPathFromWWPN(context, L"X", L"T", path); },
         L"Zarn_FcoeTarget.DeviceID=\"X\",WorldWidePortName=\"T\"", "CZarn_Fcoe::MakeTargetPathFromWWPN"},
        {[this](BSTR& path) { manager.MakeLUNPathFromID(context, L"X", 5, path); },
         L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"5\"", "CZarn_Fcoe::MakeLUNPathFromID"},
        {[this](BSTR& path) { manager.MakeLUNPathFromID(context, L"X", -1, path); },
         L"Zarn_FCoeLUN.DeviceID=\"X\",ID=\"-1\"", "CZarn_Fcoe::MakeLUNPathFromID"},
        {[this](BSTR& path) { manager.MakeVLANPathFromID(context, L"X", 100, path); },
         L"Zarn_FCoeVLAN.DeviceID=\"X\",VlanID=\"100\"", "CZarn_Fcoe::MakeVLANPathFromID"},
        {[this](BSTR& path) { manager.MakeStatisticPath(context, L"X", L"tx_frames", path); },
         L"Zarn_FCoEStatistics.DeviceID=\"X\",Statistic=\"tx_frames\"", "CZarn_Fcoe::MakeStatisticPath"},
    };
    for (const auto& row : cases)
    {
        // The adapter's path alone has more than the device's own keys, unless the client leaves them out.
        context.ulOmitSystemKeys = &row == &cases[0] ? 1 : 0;
        const TraceCapture trace;
        CComBSTR path;
        row.make(path.m_str);
        EXPECT_EQ(std::wstring(path.m_str), row.path);
        EXPECT_EQ(trace.Messages(),
                  (std::vector<std::string>{std::string("ENTRY:  ") + row.scope, std::string("EXIT:  ") + row.scope}));
    }
}

TEST_F(ObjectPath, ValuesAreWrittenAsTheyAre)
{
    CComBSTR path;
    manager.MakeHBAPathFromDeviceID(context, L"a\"b\\c", path.m_str);
    EXPECT_EQ(std::wstring(path.m_str), L"Zarn_FCOEHBA.DeviceID=\"a\"b\\c\"");
}

TEST_F(ObjectPath, BuilderReplacesTheBstrThatTheOutputHeld)
{
    CComBSTR path(L"an older path");
    manager.MakeHBAPathFromDeviceID(context, L"X", path.m_str);
    EXPECT_EQ(std::wstring(path.m_str), L"Zarn_FCOEHBA.DeviceID=\"X\"");
}

TEST_F(ObjectPath, PathLongerThanTheBufferIsCut)
{
    CComBSTR path;
    manager.MakeHBAPathFromDeviceID(context, COrlString(std::wstring(6000, L'x').c_str()), path.m_str);
    const std::wstring whole = L"Zarn_FCOEHBA.DeviceID=\"" + std::wstring(6000, L'x');
    EXPECT_EQ(std::wstring(path.m_str), whole.substr(0, 4999));
}

TEST_F(ObjectPath, AdapterPathCarriesTheSystemKeysUnlessTheClientLeavesThemOut)
{
    wchar_t host[256]{};
    DWORD size = 256;
    ASSERT_TRUE(GetComputerNameExW(ComputerNameDnsHostname, host, &size));
    CComBSTR path;
    manager.MakeDevicePathFromDeviceID(context, L"X", path.m_str);
    EXPECT_EQ(std::wstring(path.m_str),
              L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\",CreationClassName=\"Zarn_PhysicalEthernetAdapter\","
              L"SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"" +
                  std::wstring(host) + L"\"");
    for (const ULONG flag : {1U, 2U, 0x80000000U})
    {
        context.ulOmitSystemKeys = flag;
        manager.MakeDevicePathFromDeviceID(context, L"X", path.m_str);
        EXPECT_EQ(std::wstring(path.m_str), L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\"") << flag;
    }
}

TEST_F(ObjectPath, LackOfMemoryIsThrownAndLeavesTheOutputAlone)
{
    CComBSTR path(L"an older path");
    OrlFailBstrAllocation(1);
    try
    {
        manager.MakeHBAPathFromDeviceID(context, L"X", path.m_str);
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const CAtlException& failure)
    {
        EXPECT_EQ(failure.m_hr, E_OUTOFMEMORY);
    }
    OrlFailBstrAllocation(0);
    EXPECT_EQ(std::wstring(path.m_str), L"an older path");
}

TEST_F(ObjectPath, UpdateIsRefusedWithATraceAndDeleteWithout)
{
    CWomClassObject instance(context);
    COrlWmiAutoParsedObjectPath path = Parsed(L"Zarn_Plain.DeviceID=\"X\"");
    const TraceCapture trace;
    EXPECT_EQ(static_cast<ULONG>(manager.UpdateInstanceAsync(instance, context, 0, nullptr)), 0x80041003U);
    EXPECT_EQ(static_cast<ULONG>(manager.DeleteInstanceAsync(path, context, nullptr)), 0x80041003U);
    EXPECT_EQ(trace.Messages(), (std::vector<std::string>{"ENTRY:  CZarn_Fcoe::UpdateInstanceAsync",
                                                          "EXIT:  CZarn_Fcoe::UpdateInstanceAsync"}));
}

} // namespace
} // namespace orl::test
