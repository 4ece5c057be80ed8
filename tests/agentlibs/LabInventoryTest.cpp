// The inventories that are kept for tests and as examples.

#include "Inventories.h"

#include "agentlibs/inventory/InventoryFile.h"

namespace orl::test
{

namespace
{

std::shared_ptr<const Inventory> Example(const char* name)
{
    const std::filesystem::path path = std::filesystem::path(ORL_TEST_DATA) / "inventory" / name;
    return InventoryFile(path.wstring()).Read().inventory;
}

} // namespace

TEST(LabInventory, HasTwoAdaptersOfOneMachine)
{
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*Example("lab.json"));
    ASSERT_EQ(hbas.size(), 2u);
    EXPECT_EQ(hbas[0].deviceId, L"eth0.1002");
    EXPECT_EQ(hbas[0].name, L"fcoe v0.1 over eth0.1002");
    EXPECT_EQ(hbas[0].hbaName, L"host0");
    EXPECT_EQ(hbas[0].worldWidePortName, L"2000525400fc0001");
    EXPECT_EQ(hbas[0].worldWideNodeName, L"1000525400fc0001");
    EXPECT_EQ(hbas[0].fcid, 0x010300u);
    EXPECT_EQ(hbas[0].busInformation, L"0000:00:03.0");
    EXPECT_EQ(hbas[0].linkSpeed, L"1 Gbit");
    EXPECT_EQ(hbas[0].linkStatus, L"Online");
    EXPECT_EQ(hbas[0].instancePath, L"virtual\\net\\eth0.1002\\ctlr_0\\host0");
    EXPECT_EQ(hbas[0].model, L"Example Networks EXN-1");
    EXPECT_EQ(hbas[1].deviceId, L"eth1.1002");
    EXPECT_EQ(hbas[1].worldWidePortName, L"2000525400fc0002");
    EXPECT_EQ(hbas[1].linkSpeed, L"10 Gbit");
}

TEST(LabInventory, HasWhatBelongsToThem)
{
    const auto lab = Example("lab.json");
    EXPECT_EQ(RecordsOf<ORL_FCOE_FABRIC>(*lab, L"eth0.1002").size(), 2u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_FABRIC>(*lab, L"eth1.1002").size(), 1u);
    const auto ports = RecordsOf<ORL_FCOE_PORT>(*lab);
    ASSERT_EQ(ports.size(), 3u);
    EXPECT_EQ(ports[1].portWWN, L"2101525400fc0001");
    EXPECT_EQ(ports[1].portType, L"NPIV VPORT");
    EXPECT_EQ(RecordsOf<ORL_FCOE_TARGET>(*lab).size(), 3u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_LUN>(*lab).size(), 8u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_VLAN>(*lab).size(), 2u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_STATISTIC>(*lab).size(), 20u);
}

TEST(LabInventory, TheOtherExamplesCanBeRead)
{
    EXPECT_EQ(Example("large.json")->HbaCount(), 1000u);
    EXPECT_EQ(Example("faults.json")->HbaCount(), 2u);
    EXPECT_FALSE(Example("faults.json")->Faults().Empty());
}

} // namespace orl::test
