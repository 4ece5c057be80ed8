// CZarn_FcoeHBA: what is its own among the device classes.

#include "tests/provider/DeviceCases.h"

#include "classes/Zarn_FcoeHBA.h"

namespace orl::test
{
namespace
{

class HbaManager : public ManagerTest
{
protected:
    HbaManager() { services->Add(hbaClass); }

    FakeClassPtr hbaClass = MakeFakeClass(L"Zarn_FCOEHBA");
    CZarn_FcoeHBA manager{&agent};
};

TEST_F(HbaManager, FcidIsUpperCaseHexadecimalWithoutLeadingZeros)
{
    const struct
    {
        ULONG fcid;
        const wchar_t* text;
    } cases[] = {{0x1A2B3C, L"0x1A2B3C"}, {0, L"0x0"}, {0xFFFFFFFF, L"0xFFFFFFFF"}, {0xa, L"0xA"}};
    for (const auto& row : cases)
    {
        agent.hbas = {SampleHba(L"X")};
        agent.hbas[0].fcid = row.fcid;
        const Outcome outcome = Enumerate(manager);
        ASSERT_EQ(outcome.instances.size(), 1U);
        EXPECT_EQ(ValueOf(outcome.instances[0], L"FCID"), row.text);
    }
}

TEST_F(HbaManager, HbaIdIsWhatFollowsTheLastBackslash)
{
    const struct
    {
        const wchar_t* instancePath;
        const wchar_t* id;
    } cases[] = {{L"PCI\\VEN\\3&1", L"3&1"}, {L"host0", L"host0"}, {L"PCI\\VEN\\", L""}, {L"", L""}, {L"a/b", L"a/b"}};
    for (const auto& row : cases)
    {
        agent.hbas = {SampleHba(L"X")};
        agent.hbas[0].instancePath = row.instancePath;
        const Outcome outcome = Enumerate(manager);
        ASSERT_EQ(outcome.instances.size(), 1U);
        EXPECT_EQ(ValueOf(outcome.instances[0], L"HBAID"), row.id) << Narrow(row.instancePath);
    }
}

TEST_F(HbaManager, AdapterCarriesTheSystemKeysUnlessTheyAreUnwanted)
{
    agent.hbas = {SampleHba(L"X")};
    omitSystemKeys = 0;
    const std::wstring adapter = ValueOf(Enumerate(manager).instances.at(0), L"Adapter");
    EXPECT_EQ(adapter.rfind(L"Zarn_PhysicalEthernetAdapter.DeviceID=\"X\","
                            L"CreationClassName=\"Zarn_PhysicalEthernetAdapter\",",
                            0),
              0U)
        << Narrow(adapter);
}

TEST_F(HbaManager, RefusalOfTheFrameworkIsTracedInItsOwnWords)
{
    hbaClass->spawn = [](ULONG n) { return n == 2 ? static_cast<HRESULT>(WBEM_E_FAILED) : S_OK; };
    agent.hbas = {SampleHba(L"A"), SampleHba(L"B"), SampleHba(L"C")};
    const TraceCapture trace;
    const Outcome outcome = Enumerate(manager);
    EXPECT_EQ(outcome.status, 0);
    ASSERT_EQ(outcome.instances.size(), 2U);
    EXPECT_EQ(ValueOf(outcome.instances[0], L"DeviceID"), L"A");
    EXPECT_EQ(ValueOf(outcome.instances[1], L"DeviceID"), L"C");

    std::vector<std::string> failures;
    for (const std::string& message : trace.Messages())
    {
        if (message.rfind("SendInstance failed for ", 0) == 0)
            failures.push_back(message);
    }
    ASSERT_EQ(failures.size(), 1U);
    // The exception's own line, not the record's name.
    EXPECT_NE(failures[0].find("0x80041001"), std::string::npos) << failures[0];
    EXPECT_EQ(failures[0].find("host of B"), std::string::npos) << failures[0];
}

} // namespace
} // namespace orl::test
