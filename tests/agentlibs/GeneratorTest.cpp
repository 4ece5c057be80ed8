// The SAN that a `generate` block makes.

#include "Inventories.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"
#include "winport/portable/Utf8.h"

#include <set>

namespace orl::test
{

namespace
{

const std::string Small = R"({"generate": {"seed": 7, "hbas": 20, "deviceIdPrefix": "Fc", "fabricsPerHba": 2,
    "portsPerHba": 2, "virtualPortsPerHba": 3, "targetsPerHba": 4, "lunsPerTarget": 5, "vlansPerHba": 2,
    "statisticsPerHba": 12}})";

template <typename Record, typename Key>
std::set<std::wstring> Distinct(const std::vector<Record>& records, Key key)
{
    std::set<std::wstring> values;
    for (const Record& record : records)
        values.insert(FoldCase(key(record)));
    return values;
}

std::wstring AllOf(const ORL_FCOE_LUN& lun)
{
    return std::to_wstring(lun.lunId) + L' ' + std::to_wstring(lun.fcid) + L' ' + lun.osDeviceName + L' ' +
           lun.capacity + L' ' + lun.blockSize + L' ' + lun.targetPortWWN + L' ' + lun.reservedText + L' ' +
           lun.localPortWWN + L' ' + lun.fabricName + L' ' + lun.deviceId + L' ' + lun.name;
}

std::wstring AllOf(const ORL_FCOE_HBA& hba)
{
    return hba.hbaName + L' ' + hba.deviceId + L' ' + hba.name + L' ' + hba.worldWidePortName + L' ' +
           hba.worldWideNodeName + L' ' + std::to_wstring(hba.fcid) + L' ' + hba.busInformation + L' ' + hba.linkSpeed +
           L' ' + hba.linkStatus + L' ' + hba.instancePath + L' ' + hba.model;
}

template <typename Record>
std::vector<std::wstring> AllOf(const std::vector<Record>& records)
{
    std::vector<std::wstring> texts;
    for (const Record& record : records)
        texts.push_back(AllOf(record));
    return texts;
}

} // namespace

TEST(Generator, MakesAsManyOfEachKindAsTheBlockSays)
{
    const auto inventory = ReadInventory(Small);
    EXPECT_EQ(inventory->HbaCount(), 20u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_HBA>(*inventory).size(), 20u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_FABRIC>(*inventory).size(), 40u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_PORT>(*inventory).size(), 100u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_TARGET>(*inventory).size(), 80u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_LUN>(*inventory).size(), 400u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_VLAN>(*inventory).size(), 40u);
    EXPECT_EQ(RecordsOf<ORL_FCOE_STATISTIC>(*inventory).size(), 240u);
}

TEST(Generator, MakesAFirstAdapterLikeThis)
{
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*ReadInventory(Small), L"fc0");
    EXPECT_EQ(AllOf(hbas), std::vector<std::wstring>{
                               L"host0 Fc0 Example Networks EXN-25 adapter 0 2000020700000000 1000020700000000 65536 "
                               L"0000:00:00.0 25 Gbit Online simulated\\net\\Fc0\\host0 EXN-25"});
}

TEST(Generator, MakesTheSameFromTheSameBlockAndAnotherFromAnotherSeed)
{
    std::string otherSeed = Small;
    otherSeed.replace(otherSeed.find("7"), 1, "8");
    const auto luns = AllOf(RecordsOf<ORL_FCOE_LUN>(*ReadInventory(Small)));
    EXPECT_EQ(AllOf(RecordsOf<ORL_FCOE_LUN>(*ReadInventory(Small))), luns);
    EXPECT_NE(AllOf(RecordsOf<ORL_FCOE_LUN>(*ReadInventory(otherSeed))), luns);
}

TEST(Generator, AnswersForOneAdapterAsItDoesForAll)
{
    const auto inventory = ReadInventory(Small);
    const auto all = AllOf(RecordsOf<ORL_FCOE_LUN>(*inventory));
    const auto one = AllOf(RecordsOf<ORL_FCOE_LUN>(*inventory, L"FC3"));
    EXPECT_EQ(one, std::vector<std::wstring>(all.begin() + 60, all.begin() + 80));
}

TEST(Generator, GivesNoTwoThingsOneName)
{
    const auto inventory = ReadInventory(Small);
    EXPECT_EQ(Distinct(RecordsOf<ORL_FCOE_HBA>(*inventory), [](const auto& r) { return r.deviceId; }).size(), 20u);
    EXPECT_EQ(Distinct(RecordsOf<ORL_FCOE_HBA>(*inventory), [](const auto& r) { return r.busInformation; }).size(),
              20u);
    const auto ports = RecordsOf<ORL_FCOE_PORT>(*inventory);
    EXPECT_EQ(Distinct(ports, [](const auto& r) { return r.portWWN; }).size(), 100u);
    EXPECT_EQ(Distinct(ports, [](const auto& r) { return std::to_wstring(r.fcid); }).size(), 100u);
    EXPECT_EQ(
        Distinct(RecordsOf<ORL_FCOE_LUN>(*inventory, L"fc1"), [](const auto& r) { return std::to_wstring(r.lunId); })
            .size(),
        20u);
    EXPECT_EQ(
        Distinct(RecordsOf<ORL_FCOE_STATISTIC>(*inventory, L"fc1"), [](const auto& r) { return r.statistic; }).size(),
        12u);
}

// Both are computed, not looked up: they have to agree with what the adapters enumerate.
TEST(Generator, KnowsWhoseEachNameIsAndWhichAddressesAreFree)
{
    std::string text = Small;
    text.insert(1, R"("hbas": [{"deviceId": "eth0", "fcid": "0x010063"}], )");
    const auto inventory = ReadInventory(text);
    std::set<std::uint64_t> names;
    std::set<ULONG> fcids;
    const auto expect = [&](const COrlString& portName, ULONG fcid, const PortSite& site)
    {
        const std::uint64_t name = *ParseWorldWideName(portName);
        EXPECT_EQ(inventory->SitesOf(name), std::vector<PortSite>{site}) << ToUtf8(portName);
        names.insert(name);
        fcids.insert(fcid);
    };
    for (std::size_t hba = 1; hba <= 20; ++hba)
    {
        std::vector<ORL_FCOE_PORT> ports;
        inventory->AppendOf(hba, ports);
        EXPECT_EQ(inventory->PhysicalPorts(hba), 2u);
        for (std::size_t i = 0; i < ports.size(); ++i)
            expect(ports[i].portWWN, ports[i].fcid, {i < 2 ? PortSite::Kind::Port : PortSite::Kind::VirtualPort, hba});
        std::vector<ORL_FCOE_TARGET> targets;
        inventory->AppendOf(hba, targets);
        for (const ORL_FCOE_TARGET& target : targets)
            expect(target.portWWN, target.fcid, {PortSite::Kind::Target, 1});
    }
    EXPECT_EQ(names.size(), 20u * 5 + 4);
    for (const std::uint64_t name : names)
    {
        for (int bit = 0; bit < 64; ++bit)
        {
            const std::uint64_t neighbour = name ^ std::uint64_t{1} << bit;
            EXPECT_EQ(inventory->SitesOf(neighbour).empty(), !names.contains(neighbour))
                << ToUtf8(FormatWorldWideName(neighbour));
        }
    }
    for (ULONG fcid = 0x00FFFF; fcid < 0x010070; ++fcid)
        EXPECT_EQ(inventory->FreeFcid(fcid) == fcid, !fcids.contains(fcid)) << fcid;
    EXPECT_EQ(inventory->FreeFcid(0x010000), 0x010064u) << "behind the generated ones, the last of which eth0 has too";
    EXPECT_EQ(inventory->FreeFcid(0xEF0001), 0xEF0004u) << "behind the targets";
    EXPECT_EQ(inventory->FreeFcid(0xFFFF00), 0u);
}

TEST(Generator, TiesItsRecordsTogether)
{
    const auto inventory = ReadInventory(Small);
    const auto hba = RecordsOf<ORL_FCOE_HBA>(*inventory, L"Fc5").at(0);
    const auto ports = RecordsOf<ORL_FCOE_PORT>(*inventory, L"Fc5");
    const auto portNames = Distinct(ports, [](const auto& r) { return r.portWWN; });
    const auto fabrics =
        Distinct(RecordsOf<ORL_FCOE_FABRIC>(*inventory, L"Fc5"), [](const auto& r) { return r.nodeWWN; });
    const auto targets =
        Distinct(RecordsOf<ORL_FCOE_TARGET>(*inventory, L"Fc5"), [](const auto& r) { return r.portWWN; });
    EXPECT_EQ(ports.at(0).portWWN, hba.worldWidePortName);
    EXPECT_EQ(ports.at(0).nodeWWN, hba.worldWideNodeName);
    EXPECT_EQ(ports.at(0).fcid, hba.fcid);
    EXPECT_EQ(ports.at(4).portType, L"NPIV VPORT");
    for (const auto& port : ports)
        EXPECT_EQ(fabrics.count(port.fabricNodeWWN), 1u) << ToUtf8(port.fabricNodeWWN);
    for (const auto& target : RecordsOf<ORL_FCOE_TARGET>(*inventory, L"Fc5"))
        EXPECT_EQ(portNames.count(target.localPortWWN), 1u) << ToUtf8(target.localPortWWN);
    for (const auto& lun : RecordsOf<ORL_FCOE_LUN>(*inventory, L"Fc5"))
    {
        EXPECT_EQ(targets.count(lun.targetPortWWN), 1u) << ToUtf8(lun.targetPortWWN);
        EXPECT_EQ(portNames.count(lun.localPortWWN), 1u) << ToUtf8(lun.localPortWWN);
        EXPECT_EQ(lun.deviceId, L"Fc5");
    }
}

TEST(Generator, KnowsTheAdaptersThatItMakesAndNoOthers)
{
    const auto inventory = ReadInventory(Small);
    for (const wchar_t* known : {L"Fc0", L"fc19", L"FC7"})
        EXPECT_TRUE(inventory->Knows(known)) << ToUtf8(known);
    for (const wchar_t* unknown :
         {L"", L"Fc", L"Fc20", L"Fc01", L"Fc-1", L"Fc1 ", L"Fc4294967297", L"sim0", L"F", L"0"})
        EXPECT_FALSE(inventory->Knows(unknown)) << ToUtf8(unknown);
}

TEST(Generator, FollowsTheAdaptersThatTheFileLists)
{
    const auto inventory = ReadInventory(R"({"generate": {"hbas": 2}, "hbas": [{"deviceId": "eth0"}]})");
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*inventory);
    ASSERT_EQ(hbas.size(), 3u);
    EXPECT_EQ(hbas[0].deviceId, L"eth0");
    EXPECT_EQ(hbas[1].deviceId, L"sim0");
    EXPECT_EQ(hbas[2].deviceId, L"sim1");
    EXPECT_EQ(inventory->HbaCount(), 3u);
}

TEST(Generator, MakesNothingOfWhatTheBlockHasNone)
{
    const auto inventory = ReadInventory(
        R"({"generate": {"hbas": 1, "fabricsPerHba": 0, "portsPerHba": 0, "targetsPerHba": 1, "lunsPerTarget": 1,
            "vlansPerHba": 0, "statisticsPerHba": 0}})");
    EXPECT_TRUE(RecordsOf<ORL_FCOE_FABRIC>(*inventory).empty());
    EXPECT_TRUE(RecordsOf<ORL_FCOE_PORT>(*inventory).empty());
    EXPECT_TRUE(RecordsOf<ORL_FCOE_VLAN>(*inventory).empty());
    EXPECT_TRUE(RecordsOf<ORL_FCOE_STATISTIC>(*inventory).empty());
    const auto targets = RecordsOf<ORL_FCOE_TARGET>(*inventory);
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0].localPortWWN, L"");
    EXPECT_EQ(targets[0].fabricName, L"");
}

TEST(Generator, FindsOneOfTenMillionAdaptersWithoutMakingTheOthers)
{
    const auto inventory = ReadInventory(R"({"generate": {"hbas": 10000000, "targetsPerHba": 0,
        "statisticsPerHba": 0}})");
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*inventory, L"sim9999999");
    ASSERT_EQ(hbas.size(), 1u);
    EXPECT_EQ(hbas[0].deviceId, L"sim9999999");
    EXPECT_LE(hbas[0].fcid, 0xFFFFFFu);
}

TEST(Generator, MakesAHundredThousandAdapters)
{
    const auto inventory = ReadInventory(R"({"generate": {"hbas": 100000}})");
    const auto hbas = RecordsOf<ORL_FCOE_HBA>(*inventory);
    ASSERT_EQ(hbas.size(), 100000u);
    EXPECT_EQ(hbas.back().deviceId, L"sim99999");
    EXPECT_EQ(Distinct(hbas, [](const auto& r) { return r.worldWidePortName; }).size(), 100000u);
}

TEST(Generator, MakesAMillionLuns)
{
    const auto inventory = ReadInventory(R"({"generate": {"hbas": 1000, "targetsPerHba": 10, "lunsPerTarget": 100}})");
    const auto luns = RecordsOf<ORL_FCOE_LUN>(*inventory);
    ASSERT_EQ(luns.size(), 1000000u);
    EXPECT_EQ(luns.back().lunId, 999u);
    EXPECT_EQ(luns.back().deviceId, L"sim999");
}

} // namespace orl::test
