// Deleting an instance of Zarn_FCoEPort: the virtual port goes, or the client reads why not.

#include "tests/provider/DeviceCases.h"

#include "classes/Zarn_FcoePort.h"
#include "com/OrlBstr.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

constexpr const wchar_t* PortPath = L"Zarn_FCoEPort.DeviceID=\"X\",WorldWidePortName=\"2101525400FC0001\"";

class PortDelete : public ManagerTest
{
protected:
    CZarn_FcoePort manager{&agent};
};

TEST_F(PortDelete, AsksTheAgentForThePortOfThePath)
{
    status = 0x55;
    const Outcome outcome = Delete(manager, PortPath);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.instances.empty());
    EXPECT_EQ(agent.calls, std::vector<std::wstring>{L"DeleteVirtualPort(X, 2101525400FC0001)"});
    EXPECT_EQ(agent.statusSeen.ulErrCode, 0x55U);
    EXPECT_EQ(agent.statusSeen.ulReserved, 0U);
}

TEST_F(PortDelete, FailsWhenTheAgentRefusesOrWarnsOfAnError)
{
    const WarningMessageObj advice{2, 0, L"slow"};
    const WarningMessageObj zero{0, 0, L""};
    const WarningMessageObj error{1, 0, L"in use"};
    const struct
    {
        bool answer;
        std::vector<WarningMessageObj> warnings;
        bool deleted;
    } rows[] = {
        {true, {}, true},       {true, {advice}, true},         {true, {advice, zero, advice}, true},
        {true, {error}, false}, {true, {advice, error}, false}, {true, {error, advice}, false},
        {false, {}, false},     {false, {advice}, false},       {false, {error}, false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(::testing::Message() << row.answer << " with " << row.warnings.size() << " warnings");
        agent.answer = row.answer;
        agent.warnings = row.warnings;
        if (row.deleted)
            EXPECT_EQ(Delete(manager, PortPath).status, 0);
        else
            ExpectRefusal([&] { Delete(manager, PortPath); },
                          {0x8004091A, L"DeleteVirtualPort()", 0x80041002, L"Src\\Zarn_FcoePort", 101});
    }
    EXPECT_EQ(agent.calls.size(), std::size(rows));
    EXPECT_TRUE(sink->Objects().empty());
}

TEST_F(PortDelete, PathWithoutAKeyIsRefusedBeforeTheAgentIsAsked)
{
    const struct
    {
        const wchar_t* path;
        int line;
    } rows[] = {{L"Zarn_FCoEPort.A=\"1\",WorldWidePortName=\"2\"", 260},
                {L"Zarn_FCoEPort.DeviceID=\"X\",B=\"2\"", 288}};
    for (const auto& row : rows)
        ExpectRefusal([&] { Delete(manager, row.path); },
                      {0x8004090F, row.path, 0x80041002, L"Src\\Zarn_FCOE", row.line});
    EXPECT_TRUE(agent.calls.empty());
}

TEST_F(PortDelete, LackOfMemoryForTheFailuresTextTakesItsPlace)
{
    agent.answer = false;
    COrlWmiAutoParsedObjectPath parsed;
    ASSERT_EQ(parsed.Parse(PortPath), WBEM_S_NO_ERROR);
    CWomContext context(services);
    OrlFailBstrAllocation(1);
    EXPECT_THROW(manager.DeleteInstanceAsync(parsed, context, CComPtr<IWbemObjectSink>(sink.p)), CAtlException);
    OrlFailBstrAllocation(0);
    EXPECT_EQ(agent.calls.size(), 1U);
}

TEST_F(PortDelete, TracesItsKeyReadersOnly)
{
    const TraceCapture trace;
    Delete(manager, PortPath);
    EXPECT_EQ(trace.TieredMessages(), (std::vector<std::string>{"1 ENTRY:  CZarn_Fcoe::GetDeviceIdFromPath",
                                                                "1 EXIT:  CZarn_Fcoe::GetDeviceIdFromPath",
                                                                "1 ENTRY:  CZarn_Fcoe::GetKeyFromPath",
                                                                "1 EXIT:  CZarn_Fcoe::GetKeyFromPath"}));
}

} // namespace
} // namespace orl::test
