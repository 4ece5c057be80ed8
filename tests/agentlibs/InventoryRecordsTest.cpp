// What an inventory's keys become: every field of every record.

#include "Inventories.h"

namespace orl::test
{

TEST(InventoryRecords, AnEmptyObjectIsAnEmptySan)
{
    const auto inventory = ReadInventory("{}");
    EXPECT_EQ(inventory->HbaCount(), 0u);
    EXPECT_TRUE(RecordsOf<ORL_FCOE_HBA>(*inventory).empty());
    EXPECT_TRUE(inventory->Faults().Empty());
}

TEST(InventoryRecords, AByteOrderMarkInFrontIsNoMistake)
{
    EXPECT_EQ(ReadInventory("\xEF\xBB\xBF" + OneHba(""))->HbaCount(), 1u);
}

TEST(InventoryRecords, AnHbaHasAllItsFields)
{
    const auto inventory = ReadInventory(OneHba(R"(
        "name": "first", "hbaName": "host0", "fcid": "0x1A2B3C", "busInformation": "0000:00:03.0",
        "linkSpeed": "10 Gbit", "linkStatus": "Online", "model": "EXN-10",
        "worldWidePortName": "2000525400fc0001", "worldWideNodeName": "1000525400fc0001",
        "instancePath": "virtual\\net\\eth0\\host0")"));
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*inventory);
    ASSERT_EQ(hbas.size(), 1u);
    EXPECT_EQ(hbas[0].deviceId, L"eth0");
    EXPECT_EQ(hbas[0].name, L"first");
    EXPECT_EQ(hbas[0].hbaName, L"host0");
    EXPECT_EQ(hbas[0].fcid, 0x1A2B3Cu);
    EXPECT_EQ(hbas[0].busInformation, L"0000:00:03.0");
    EXPECT_EQ(hbas[0].linkSpeed, L"10 Gbit");
    EXPECT_EQ(hbas[0].linkStatus, L"Online");
    EXPECT_EQ(hbas[0].model, L"EXN-10");
    EXPECT_EQ(hbas[0].worldWidePortName, L"2000525400fc0001");
    EXPECT_EQ(hbas[0].worldWideNodeName, L"1000525400fc0001");
    EXPECT_EQ(hbas[0].instancePath, L"virtual\\net\\eth0\\host0");
}

TEST(InventoryRecords, WhatAnHbaLeavesOutIsEmptyOrZero)
{
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*ReadInventory(OneHba("")));
    ASSERT_EQ(hbas.size(), 1u);
    EXPECT_EQ(hbas[0].deviceId, L"eth0");
    EXPECT_EQ(hbas[0].name + hbas[0].hbaName + hbas[0].busInformation + hbas[0].linkSpeed + hbas[0].linkStatus, L"");
    EXPECT_EQ(hbas[0].model + hbas[0].worldWidePortName + hbas[0].worldWideNodeName + hbas[0].instancePath, L"");
    EXPECT_EQ(hbas[0].fcid, 0u);
}

TEST(InventoryRecords, TextsKeepEveryCharacter)
{
    const auto hbas =
        RecordsOf<ORL_FCOE_HBA>(*ReadInventory(OneHba("\"name\": \"\\\"\\\\ \xC3\xA4 \xE6\x97\xA5 \\u20ac\"")));
    ASSERT_EQ(hbas.size(), 1u);
    EXPECT_EQ(hbas[0].name, L"\"\\ \u00E4 \u65E5 \u20AC");
}

TEST(InventoryRecords, ATextOf1024BytesIsTaken)
{
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*ReadInventory(OneHba("\"name\": \"" + std::string(1024, 'x') + "\"")));
    ASSERT_EQ(hbas.size(), 1u);
    EXPECT_EQ(hbas[0].name, std::wstring(1024, L'x'));
}

TEST(InventoryRecords, NumbersReachTheirLimits)
{
    const auto inventory = ReadInventory(OneHba(
        R"("fcid": 4294967295, "statistics": [{"statistic": "a", "value": 18446744073709551615},
           {"statistic": "b", "value": "0XFFFFFFFFFFFFFFFF"}])"));
    EXPECT_EQ(RecordsOf<ORL_FCOE_HBA>(*inventory)[0].fcid, 0xFFFFFFFFu);
    const auto statistics = RecordsOf<ORL_FCOE_STATISTIC>(*inventory);
    ASSERT_EQ(statistics.size(), 2u);
    EXPECT_EQ(statistics[0].value, 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(statistics[1].value, 0xFFFFFFFFFFFFFFFFu);
}

TEST(InventoryRecords, WorldWideNamesComeOutInOneForm)
{
    const struct
    {
        const char* written;
        const wchar_t* carried;
    } names[] = {
        {"2000525400FC0001", L"2000525400fc0001"},   {"0x2000525400fc0001", L"2000525400fc0001"},
        {"0X2000525400Fc0001", L"2000525400fc0001"}, {"20:00:52:54:00:FC:00:01", L"2000525400fc0001"},
        {"0000000000000001", L"0000000000000001"},   {"", L""},
    };
    for (const auto& name : names)
    {
        const auto hbas = RecordsOf<ORL_FCOE_HBA>(
            *ReadInventory(OneHba("\"worldWidePortName\": \"" + std::string(name.written) + "\"")));
        ASSERT_EQ(hbas.size(), 1u);
        EXPECT_EQ(hbas[0].worldWidePortName, name.carried) << name.written;
    }
}

TEST(InventoryRecords, AFabricHasAllItsFields)
{
    const auto fabrics = RecordsOf<ORL_FCOE_FABRIC>(*ReadInventory(OneHba(R"("fabrics": [{
        "name": "fcf_1", "fabricName": "production", "worldWideNodeName": "20000000fc00000a",
        "worldWidePortName": "20010000fc00000a", "fcMap": "0x0EFC00", "fabricTypeId": 2, "fabricType": "VN2VN",
        "priority": 128, "vlanId": 1002, "reservedText": "52:54:00:fc:01:01"}])")));
    ASSERT_EQ(fabrics.size(), 1u);
    EXPECT_EQ(fabrics[0].deviceId, L"eth0");
    EXPECT_EQ(fabrics[0].name, L"fcf_1");
    EXPECT_EQ(fabrics[0].fabricName, L"production");
    EXPECT_EQ(fabrics[0].nodeWWN, L"20000000fc00000a");
    EXPECT_EQ(fabrics[0].portWWN, L"20010000fc00000a");
    EXPECT_EQ(fabrics[0].fcMap, 0x0EFC00u);
    EXPECT_EQ(fabrics[0].fabricTypeId, 2u);
    EXPECT_EQ(fabrics[0].fabricType, L"VN2VN");
    EXPECT_EQ(fabrics[0].priority, 128u);
    EXPECT_EQ(fabrics[0].vlanId, 1002u);
    EXPECT_EQ(fabrics[0].reservedText, L"52:54:00:fc:01:01");
}

TEST(InventoryRecords, AFabricIsASwitchedOneUnlessItSaysOtherwise)
{
    const auto fabrics = RecordsOf<ORL_FCOE_FABRIC>(*ReadInventory(OneHba(R"("fabrics": [{}])")));
    ASSERT_EQ(fabrics.size(), 1u);
    EXPECT_EQ(fabrics[0].fabricTypeId, 1u);
    EXPECT_EQ(fabrics[0].fabricType, L"Fabric");
}

TEST(InventoryRecords, APortHasAllItsFields)
{
    const auto ports = RecordsOf<ORL_FCOE_PORT>(*ReadInventory(OneHba(R"("ports": [{
        "name": "the port", "worldWideNodeName": "1000525400fc0001", "worldWidePortName": "2000525400fc0001",
        "fcid": 66304, "portTypeId": 6, "portType": "NLPort", "fabricWorldWideNodeName": "20000000fc00000a",
        "fabricName": "production"}])")));
    ASSERT_EQ(ports.size(), 1u);
    EXPECT_EQ(ports[0].deviceId, L"eth0");
    EXPECT_EQ(ports[0].name, L"the port");
    EXPECT_EQ(ports[0].nodeWWN, L"1000525400fc0001");
    EXPECT_EQ(ports[0].portWWN, L"2000525400fc0001");
    EXPECT_EQ(ports[0].fcid, 66304u);
    EXPECT_EQ(ports[0].portTypeId, 6u);
    EXPECT_EQ(ports[0].portType, L"NLPort");
    EXPECT_EQ(ports[0].fabricNodeWWN, L"20000000fc00000a");
    EXPECT_EQ(ports[0].fabricName, L"production");
}

TEST(InventoryRecords, VirtualPortsFollowThePortsAndAreOfTheirType)
{
    const auto ports = RecordsOf<ORL_FCOE_PORT>(
        *ReadInventory(OneHba(R"("virtualPorts": [{"name": "v"}], "ports": [{"name": "p"}, {"name": "q"}])")));
    ASSERT_EQ(ports.size(), 3u);
    EXPECT_EQ(ports[0].name, L"p");
    EXPECT_EQ(ports[0].portTypeId, 5u);
    EXPECT_EQ(ports[0].portType, L"NPort (fabric via point-to-point)");
    EXPECT_EQ(ports[1].name, L"q");
    EXPECT_EQ(ports[2].name, L"v");
    EXPECT_EQ(ports[2].portTypeId, 2u);
    EXPECT_EQ(ports[2].portType, L"NPIV VPORT");
    EXPECT_EQ(ports[2].deviceId, L"eth0");
}

TEST(InventoryRecords, ATargetHasAllItsFields)
{
    const auto targets = RecordsOf<ORL_FCOE_TARGET>(*ReadInventory(OneHba(R"("targets": [{
        "name": "rport-0:0-1", "fabricName": "production", "worldWideNodeName": "1000525400fc2000",
        "worldWidePortName": "2000525400fc2000", "fcid": "0x010200", "scsiBus": 1, "scsiTarget": 2,
        "vendor": "EXAMPLE", "serialNumber": "EX0001", "targetType": 3, "portWorldWidePortName": "2101525400fc0001",
        "reservedText": "FCP Target", "reservedNumber": 9007199254740993}])")));
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0].deviceId, L"eth0");
    EXPECT_EQ(targets[0].name, L"rport-0:0-1");
    EXPECT_EQ(targets[0].fabricName, L"production");
    EXPECT_EQ(targets[0].nodeWWN, L"1000525400fc2000");
    EXPECT_EQ(targets[0].portWWN, L"2000525400fc2000");
    EXPECT_EQ(targets[0].fcid, 0x010200u);
    EXPECT_EQ(targets[0].scsiBus, 1u);
    EXPECT_EQ(targets[0].scsiTarget, 2u);
    EXPECT_EQ(targets[0].vendor, L"EXAMPLE");
    EXPECT_EQ(targets[0].serialNumber, L"EX0001");
    EXPECT_EQ(targets[0].targetType, 3u);
    EXPECT_EQ(targets[0].localPortWWN, L"2101525400fc0001");
    EXPECT_EQ(targets[0].reservedText, L"FCP Target");
    EXPECT_EQ(targets[0].reservedNumber, 9007199254740993u);
}

TEST(InventoryRecords, ATargetIsOnlineAndSeenThroughTheHbasPortUnlessItSaysOtherwise)
{
    const auto targets = RecordsOf<ORL_FCOE_TARGET>(
        *ReadInventory(OneHba(R"("worldWidePortName": "2000525400fc0001", "targets": [{}])")));
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0].targetType, 1u);
    EXPECT_EQ(targets[0].localPortWWN, L"2000525400fc0001");
}

TEST(InventoryRecords, ALunKnowsFromItsTargetWhatItDoesNotSay)
{
    const auto luns = RecordsOf<ORL_FCOE_LUN>(*ReadInventory(OneHba(R"("targets": [
        {"luns": [{"id": 7}]},
        {"luns": [{"id": 8, "name": "EXAMPLE DISK", "osDeviceName": "/dev/sda", "capacity": "1073741824",
                   "blockSize": "512", "reservedText": "naa.6"}],
         "worldWidePortName": "2000525400fc2000", "portWorldWidePortName": "2101525400fc0001", "fcid": 66048,
         "scsiBus": 1, "scsiTarget": 2, "fabricName": "production"}])")));
    ASSERT_EQ(luns.size(), 2u);
    EXPECT_EQ(luns[0].lunId, 7u);
    EXPECT_EQ(luns[0].targetPortWWN, L"");
    EXPECT_EQ(luns[1].deviceId, L"eth0");
    EXPECT_EQ(luns[1].lunId, 8u);
    EXPECT_EQ(luns[1].name, L"EXAMPLE DISK");
    EXPECT_EQ(luns[1].osDeviceName, L"/dev/sda");
    EXPECT_EQ(luns[1].capacity, L"1073741824");
    EXPECT_EQ(luns[1].blockSize, L"512");
    EXPECT_EQ(luns[1].reservedText, L"naa.6");
    EXPECT_EQ(luns[1].targetPortWWN, L"2000525400fc2000");
    EXPECT_EQ(luns[1].localPortWWN, L"2101525400fc0001");
    EXPECT_EQ(luns[1].fcid, 66048u);
    EXPECT_EQ(luns[1].busNumber, 1u);
    EXPECT_EQ(luns[1].targetNumber, 2u);
    EXPECT_EQ(luns[1].fabricName, L"production");
}

TEST(InventoryRecords, ALunMaySayAllItselfEvenAgainstItsTarget)
{
    const auto luns = RecordsOf<ORL_FCOE_LUN>(*ReadInventory(OneHba(R"("targets": [
        {"worldWidePortName": "2000525400fc2000", "fcid": 1, "scsiBus": 1, "scsiTarget": 2, "fabricName": "a",
         "luns": [{"targetWorldWidePortName": "2000525400fc2009", "portWorldWidePortName": "2000525400fc0009",
                   "fcid": 9, "busNumber": 8, "targetNumber": 7, "fabricName": "b"}]}])")));
    ASSERT_EQ(luns.size(), 1u);
    EXPECT_EQ(luns[0].targetPortWWN, L"2000525400fc2009");
    EXPECT_EQ(luns[0].localPortWWN, L"2000525400fc0009");
    EXPECT_EQ(luns[0].fcid, 9u);
    EXPECT_EQ(luns[0].busNumber, 8u);
    EXPECT_EQ(luns[0].targetNumber, 7u);
    EXPECT_EQ(luns[0].fabricName, L"b");
}

TEST(InventoryRecords, AVlanHasAllItsFields)
{
    const auto vlans = RecordsOf<ORL_FCOE_VLAN>(*ReadInventory(OneHba(
        R"("vlans": [{"name": "VLAN 1002", "vlanName": "eth0.1002", "vlanId": 1002, "statusId": 2, "status": "Down"}])")));
    ASSERT_EQ(vlans.size(), 1u);
    EXPECT_EQ(vlans[0].deviceId, L"eth0");
    EXPECT_EQ(vlans[0].name, L"VLAN 1002");
    EXPECT_EQ(vlans[0].vlanName, L"eth0.1002");
    EXPECT_EQ(vlans[0].vlanId, 1002u);
    EXPECT_EQ(vlans[0].statusId, 2u);
    EXPECT_EQ(vlans[0].status, L"Down");
}

TEST(InventoryRecords, AStatisticHasAllItsFields)
{
    const auto statistics = RecordsOf<ORL_FCOE_STATISTIC>(*ReadInventory(
        OneHba(R"("statistics": [{"name": "Tx frames", "statistic": "tx_frames", "value": 4294967296}])")));
    ASSERT_EQ(statistics.size(), 1u);
    EXPECT_EQ(statistics[0].deviceId, L"eth0");
    EXPECT_EQ(statistics[0].name, L"Tx frames");
    EXPECT_EQ(statistics[0].statistic, L"tx_frames");
    EXPECT_EQ(statistics[0].value, 4294967296u);
}

TEST(InventoryRecords, RecordsThatDifferInNothingAreBothKept)
{
    const auto inventory = ReadInventory(OneHba(
        R"("fabrics": [{"worldWideNodeName": "20000000fc00000a"}, {"worldWideNodeName": "20000000fc00000a"}],
           "targets": [{"luns": [{"id": 3}, {"id": 3}]}])"));
    EXPECT_EQ(RecordsOf<ORL_FCOE_FABRIC>(*inventory).size(), 2u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_LUN>(*inventory).size(), 2u);
}

namespace
{

const std::string ThreeHbas = R"({"hbas": [
    {"deviceId": "b", "ports": [{"name": "b0"}], "statistics": [{"statistic": "x", "value": 1, "perSecond": 10}]},
    {"deviceId": "A", "ports": [{"name": "a0"}, {"name": "a1"}], "statistics": [{"statistic": "y", "value": 2}]},
    {"deviceId": "c", "statistics": [{"statistic": "z", "value": 3, "perSecond": 0.5}]}]})";

template <typename Record>
std::vector<std::wstring> NamesOf(const std::vector<Record>& records)
{
    std::vector<std::wstring> names;
    for (const Record& record : records)
        names.push_back(record.name);
    return names;
}

std::vector<ULONGLONG> ValuesAfter(const Inventory& inventory, const wchar_t* deviceId, double seconds)
{
    std::vector<ORL_FCOE_STATISTIC> statistics;
    inventory.AppendStatistics(COrlString(deviceId), seconds, statistics);
    std::vector<ULONGLONG> values;
    for (const ORL_FCOE_STATISTIC& statistic : statistics)
        values.push_back(statistic.value);
    return values;
}

using Names = std::vector<std::wstring>;
using Values = std::vector<ULONGLONG>;

} // namespace

TEST(InventoryRecords, AnEmptyDeviceIdAsksForAllInTheFilesOrder)
{
    const auto inventory = ReadInventory(ThreeHbas);
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*inventory);
    ASSERT_EQ(hbas.size(), 3u);
    EXPECT_EQ(hbas[0].deviceId, L"b");
    EXPECT_EQ(hbas[1].deviceId, L"A");
    EXPECT_EQ(hbas[2].deviceId, L"c");
    EXPECT_EQ(NamesOf(RecordsOf<ORL_FCOE_PORT>(*inventory)), (Names{L"b0", L"a0", L"a1"}));
}

TEST(InventoryRecords, ADeviceIdIsFoundWhateverItsCase)
{
    const auto inventory = ReadInventory(ThreeHbas);
    for (const wchar_t* deviceId : {L"A", L"a"})
    {
        const auto hbas = RecordsOf<ORL_FCOE_HBA>(*inventory, deviceId);
        ASSERT_EQ(hbas.size(), 1u);
        EXPECT_EQ(hbas[0].deviceId, L"A");
        EXPECT_EQ(NamesOf(RecordsOf<ORL_FCOE_PORT>(*inventory, deviceId)), (Names{L"a0", L"a1"}));
        EXPECT_TRUE(inventory->Knows(COrlString(deviceId)));
    }
}

TEST(InventoryRecords, AnUnknownDeviceIdHasNothing)
{
    const auto inventory = ReadInventory(ThreeHbas);
    EXPECT_TRUE(RecordsOf<ORL_FCOE_HBA>(*inventory, L"d").empty());
    EXPECT_TRUE(RecordsOf<ORL_FCOE_PORT>(*inventory, L"d").empty());
    EXPECT_FALSE(inventory->Knows(L"d"));
}

TEST(InventoryRecords, CountersAdvanceAtTheirRateAndOnlyThoseThatHaveOne)
{
    const auto inventory = ReadInventory(ThreeHbas);
    EXPECT_EQ(ValuesAfter(*inventory, L"", 0), (Values{1, 2, 3}));
    EXPECT_EQ(ValuesAfter(*inventory, L"", 3.9), (Values{40, 2, 4}));
    EXPECT_EQ(ValuesAfter(*inventory, L"C", 3.9), (Values{4}));
    EXPECT_EQ(ValuesAfter(*inventory, L"d", 3.9), (Values{}));
}

TEST(InventoryRecords, CountersStartAgainPastTheirLastValue)
{
    const auto inventory = ReadInventory(
        OneHba(R"("statistics": [{"statistic": "a", "value": 18446744073709551615, "perSecond": 10000000000}])"));
    EXPECT_EQ(ValuesAfter(*inventory, L"", 1), (Values{9999999999}));
    // Longer than a counter lasts: whatever it shows, it comes to that without leaving the range of its arithmetic.
    EXPECT_EQ(ValuesAfter(*inventory, L"", 1e30), (Values{9199999999999999999u}));
}

} // namespace orl::test
