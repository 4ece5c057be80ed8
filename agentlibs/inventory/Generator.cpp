// Generator: a SAN of any size.

#include "agentlibs/inventory/Generator.h"

#include "agentlibs/Text.h"
#include "agentlibs/fcoelink/WorldWideName.h"

#include <algorithm>
#include <string>

namespace orl
{

namespace
{

constexpr ULONG MaxPorts = 256;         // a port's number is part of its name's vendor extension, 12 bits of which
constexpr ULONG MaxVirtualPorts = 3840; // the virtual ports get the rest (FC-FS, name format 2)
constexpr ULONG MaxFabrics = 256;
constexpr ULONG MaxVlans = 3000; // from FirstVlan upwards within the 4094 that there are
constexpr ULONG MaxTargets = 65536;
constexpr ULONG MaxLuns = 65536;
constexpr ULONG MaxStatistics = 1024;
constexpr ULONG MaxSettings = 1024;
constexpr ULONG FirstVlan = 1002;
constexpr ULONG FirstPortFcid = 0x010000;

// Well-known kinds of the random numbers, so that no two of them run alike.
enum Kind : std::uint64_t
{
    KindSpeed,
    KindStatus,
    KindCapacity,
    KindCounter
};

struct Hex
{
    std::uint64_t value;
    std::size_t digits;
};

std::size_t LengthOf(std::wstring_view part)
{
    return part.size();
}

std::size_t LengthOf(std::uint64_t number)
{
    std::size_t digits = 1;
    while ((number /= 10) != 0)
        ++digits;
    return digits;
}

std::size_t LengthOf(Hex number)
{
    return number.digits;
}

wchar_t* Write(wchar_t* place, std::wstring_view part)
{
    return std::copy(part.begin(), part.end(), place);
}

wchar_t* Write(wchar_t* place, std::uint64_t number)
{
    wchar_t* const end = place + LengthOf(number);
    wchar_t* digit = end;
    do
        *--digit = static_cast<wchar_t>(L'0' + number % 10);
    while ((number /= 10) != 0);
    return end;
}

wchar_t* Write(wchar_t* place, Hex number)
{
    for (std::size_t digit = number.digits; digit-- > 0;)
        *place++ = L"0123456789abcdef"[number.value >> (4 * digit) & 0xF];
    return place;
}

// Making a million records is mostly making their texts, so each is measured first and gets its memory at once.
template <typename... Parts>
void Put(std::wstring& text, const Parts&... parts)
{
    text.resize((LengthOf(parts) + ...));
    wchar_t* place = text.data();
    ((place = Write(place, parts)), ...);
}

void PutName(std::wstring& text, std::uint64_t name)
{
    Put(text, Hex{name, WorldWideNameDigits});
}

// Targets are seen by all adapters under the same names.
constexpr std::uint64_t FirstTargetPortName = 0x2000525400000000;
std::uint64_t TargetNodeName(ULONG target)
{
    return 0x1000525400000000 | target;
}
std::uint64_t TargetPortName(ULONG target)
{
    return FirstTargetPortName | target;
}
// Behind the addresses of the most ports that there can be; see MaxTargets.
constexpr ULONG FirstTargetFcid = 0xEF0000;
ULONG TargetFcid(ULONG target)
{
    return FirstTargetFcid | target;
}

constexpr const wchar_t* Counters[] = {
    L"tx_frames",           L"tx_words",
    L"rx_frames",           L"rx_words",
    L"error_frames",        L"invalid_crc_count",
    L"link_failure_count",  L"fcp_input_requests",
    L"fcp_output_requests", L"fcp_control_requests",
};

struct Model
{
    const wchar_t* name;
    const wchar_t* speed;
};
constexpr Model Models[] = {{L"EXN-10", L"10 Gbit"}, {L"EXN-25", L"25 Gbit"}, {L"EXN-40", L"40 Gbit"}};

} // namespace

Generator::Generator(ObjectReader& in)
{
    m_prefix = L"sim";
    in.Number("seed", m_seed);
    in.Text("deviceIdPrefix", m_prefix);
    in.Number("hbas", m_hbas, 1, static_cast<ULONG>(MaxRecords));
    in.Require("hbas");
    in.Number("fabricsPerHba", m_fabrics, 0, MaxFabrics);
    in.Number("portsPerHba", m_ports, 0, MaxPorts);
    in.Number("virtualPortsPerHba", m_virtualPorts, 0, MaxVirtualPorts);
    in.Number("targetsPerHba", m_targets, 0, MaxTargets);
    in.Number("lunsPerTarget", m_luns, 0, MaxLuns);
    in.Number("vlansPerHba", m_vlans, 0, MaxVlans);
    in.Number("statisticsPerHba", m_statistics, 0, MaxStatistics);
    in.Number("settingsPerHba", m_settings, 0, MaxSettings);

    const struct
    {
        const char* name;
        ULONGLONG perHba;
    } kinds[] = {{"fabrics", m_fabrics},  {"ports", ULONGLONG{m_ports} + m_virtualPorts},
                 {"targets", m_targets},  {"LUNs", ULONGLONG{m_targets} * m_luns},
                 {"VLANs", m_vlans},      {"statistics", m_statistics},
                 {"settings", m_settings}};
    for (const auto& kind : kinds)
    {
        if (m_hbas * kind.perHba > MaxRecords)
            in.Refuse({}, std::to_string(m_hbas) + " HBAs with " + std::to_string(kind.perHba) + " " + kind.name +
                              " each are more than " + std::to_string(MaxRecords) + " " + kind.name);
    }
}

// Numbers and switches by turns.
std::vector<SettingDescription> Generator::Settings() const
{
    std::vector<SettingDescription> settings(m_settings);
    for (ULONG number = 0; number < m_settings; ++number)
    {
        SettingDescription& setting = settings[number];
        const std::wstring text = std::to_wstring(number);
        if (number % 2 == 0)
        {
            setting.name = L"Limit" + text;
            setting.displayName = L"Limit " + text;
            setting.max = 1000;
            setting.defaultValue = 100;
        }
        else
        {
            setting.kind = SettingDescription::Kind::Enumeration;
            setting.name = L"Switch" + text;
            setting.displayName = L"Switch " + text;
            setting.choices = {{0, L"Off"}, {1, L"On"}};
        }
        setting.caption = setting.name;
        setting.registryKeyword = L"*" + setting.name;
        setting.current = setting.defaultValue;
    }
    return settings;
}

std::optional<ULONG> Generator::Find(std::wstring_view deviceId) const
{
    if (FoldCase(deviceId.substr(0, m_prefix.size())) != FoldCase(m_prefix))
        return std::nullopt;
    const std::wstring_view digits = deviceId.substr(m_prefix.size());
    if (digits.empty() || digits.size() > 9 || (digits.size() > 1 && digits[0] == L'0'))
        return std::nullopt;
    ULONG number = 0;
    for (wchar_t c : digits)
    {
        if (c < L'0' || c > L'9')
            return std::nullopt;
        number = number * 10 + static_cast<ULONG>(c - L'0');
    }
    if (number >= m_hbas)
        return std::nullopt;
    return number;
}

// The finalizer of a 64-bit mixing function over all four numbers: neighbours come out far apart.
std::uint64_t Generator::Random(std::uint64_t hba, std::uint64_t kind, std::uint64_t number) const
{
    std::uint64_t x = m_seed + 0x9E3779B97F4A7C15 * (hba + 1) + 0xC2B2AE3D27D4EB4F * (kind + 1) + number;
    x = (x ^ x >> 30) * 0xBF58476D1CE4E5B9;
    x = (x ^ x >> 27) * 0x94D049BB133111EB;
    return x ^ x >> 31;
}

// A locally administered MAC address of the seed and the number.
std::uint64_t Generator::AddressOf(ULONG hba) const
{
    return std::uint64_t{0x02} << 40 | (m_seed & 0xFF) << 32 | hba;
}

// Name format 2: a vendor extension, then the MAC address.
std::uint64_t Generator::PortName(ULONG hba, ULONG extension) const
{
    return std::uint64_t{0x2000} << 48 | std::uint64_t{extension} << 48 | AddressOf(hba);
}

std::optional<PortSite> Generator::SiteOf(std::uint64_t portName) const
{
    if (portName >= FirstTargetPortName && portName - FirstTargetPortName < m_targets)
        return PortSite{PortSite::Kind::Target, 0};
    const auto hba = static_cast<ULONG>(portName & 0xFFFFFFFF);
    const auto extension = static_cast<ULONG>(portName >> 48 & 0xFFF);
    if (hba >= m_hbas || PortName(hba, extension) != portName)
        return std::nullopt;
    if (extension < std::max<ULONG>(m_ports, 1)) // the first one is the adapter's own, also without ports
        return PortSite{PortSite::Kind::Port, hba};
    if (extension >= MaxPorts && extension - MaxPorts < m_virtualPorts)
        return PortSite{PortSite::Kind::VirtualPort, hba};
    return std::nullopt;
}

// No two ports share one: all of them fit in behind the first switch's addresses.
ULONG Generator::PortFcid(ULONG hba, ULONG port) const
{
    return FirstPortFcid + hba * std::max<ULONG>(m_ports + m_virtualPorts, 1) + port;
}

ULONG Generator::BehindFcids(ULONG fcid) const
{
    const ULONG behindPorts = PortFcid(m_hbas, 0);
    if (fcid >= FirstPortFcid && fcid < behindPorts)
        fcid = behindPorts;
    if (fcid >= FirstTargetFcid && fcid < FirstTargetFcid + m_targets)
        fcid = FirstTargetFcid + m_targets;
    return fcid;
}

void Generator::PutFabricNode(std::wstring& text, ULONG number) const
{
    if (m_fabrics != 0)
        PutName(text, 0x20000000FC000000 | (number % m_fabrics));
}

void Generator::PutFabric(std::wstring& text, ULONG number) const
{
    if (m_fabrics != 0)
        PutName(text, 0x10000000FC000000 | (number % m_fabrics));
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_HBA>& out) const
{
    ORL_FCOE_HBA& record = out.emplace_back();
    const Model& model = Models[Random(hba, KindSpeed, 0) % std::size(Models)];
    Put(record.hbaName, L"host", hba);
    Put(record.deviceId, m_prefix, hba);
    Put(record.name, L"Example Networks ", model.name, L" adapter ", hba);
    PutName(record.worldWidePortName, PortName(hba, 0));
    PutName(record.worldWideNodeName, 0x1000000000000000 | (PortName(hba, 0) & 0xFFFFFFFFFFFF));
    record.fcid = PortFcid(hba, 0);
    Put(record.busInformation, Hex{hba >> 16, 4}, L":", Hex{hba >> 8, 2}, L":", Hex{hba >> 3 & 0x1F, 2}, L".",
        Hex{hba & 7, 1});
    Put(record.linkSpeed, model.speed);
    Put(record.linkStatus, Random(hba, KindStatus, 0) % 16 == 0 ? L"Linkdown" : L"Online");
    Put(record.instancePath, L"simulated\\net\\", m_prefix, hba, L"\\host", hba);
    Put(record.model, model.name);
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_FABRIC>& out) const
{
    for (ULONG i = 0; i < m_fabrics; ++i)
    {
        ORL_FCOE_FABRIC& record = out.emplace_back();
        PutFabricNode(record.nodeWWN, i);
        PutFabric(record.fabricName, i);
        Put(record.reservedText, L"52:54:00:fc:00:", Hex{i, 2});
        record.fcMap = 0x0EFC00 + i;
        Put(record.deviceId, m_prefix, hba);
        Put(record.name, L"fcf_", i);
        Put(record.fabricType, L"Fabric");
        record.fabricTypeId = 1;
        record.priority = 128;
        record.vlanId = FirstVlan + (m_vlans == 0 ? 0 : i % m_vlans);
    }
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_PORT>& out) const
{
    for (ULONG i = 0; i < m_ports + m_virtualPorts; ++i)
    {
        const bool isVirtual = i >= m_ports;
        const ULONG number = isVirtual ? i - m_ports : i;
        ORL_FCOE_PORT& record = out.emplace_back();
        const std::uint64_t name = PortName(hba, isVirtual ? MaxPorts + number : number);
        PutName(record.portWWN, name);
        PutName(record.nodeWWN, name - 0x1000000000000000);
        record.portTypeId = isVirtual ? 2 : 5;
        Put(record.portType, isVirtual ? L"NPIV VPORT" : L"NPort (fabric via point-to-point)");
        record.fcid = PortFcid(hba, i);
        Put(record.deviceId, m_prefix, hba);
        Put(record.name, isVirtual ? L"virtual port " : L"port ", number);
        PutFabricNode(record.fabricNodeWWN, number);
        PutFabric(record.fabricName, number);
    }
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_TARGET>& out) const
{
    for (ULONG i = 0; i < m_targets; ++i)
    {
        ORL_FCOE_TARGET& record = out.emplace_back();
        PutName(record.nodeWWN, TargetNodeName(i));
        PutName(record.portWWN, TargetPortName(i));
        record.scsiTarget = i;
        record.fcid = TargetFcid(i);
        Put(record.vendor, L"EXAMPLE");
        Put(record.serialNumber, L"EX", Hex{i, 8});
        if (m_ports != 0)
            PutName(record.localPortWWN, PortName(hba, i % m_ports));
        Put(record.reservedText, L"FCP Target");
        PutFabric(record.fabricName, i);
        Put(record.deviceId, m_prefix, hba);
        Put(record.name, L"rport-", hba, L":0-", i);
        record.targetType = 1;
    }
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_LUN>& out) const
{
    for (ULONG id = 0; id < m_targets * m_luns; ++id)
    {
        const ULONG target = id / m_luns;
        ORL_FCOE_LUN& record = out.emplace_back();
        record.lunId = id;
        record.targetNumber = target;
        record.fcid = TargetFcid(target);
        Put(record.osDeviceName, L"/dev/sim", hba, L"-", id);
        Put(record.capacity, (Random(hba, KindCapacity, id) % 64 + 1) << 30);
        Put(record.blockSize, id % 4 == 3 ? L"4096" : L"512");
        PutName(record.targetPortWWN, TargetPortName(target));
        Put(record.reservedText, L"naa.6", Hex{hba, 15}, Hex{id, 16});
        if (m_ports != 0)
            PutName(record.localPortWWN, PortName(hba, target % m_ports));
        PutFabric(record.fabricName, target);
        Put(record.deviceId, m_prefix, hba);
        Put(record.name, L"EXAMPLE DISK 1.0");
    }
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_VLAN>& out) const
{
    for (ULONG i = 0; i < m_vlans; ++i)
    {
        ORL_FCOE_VLAN& record = out.emplace_back();
        Put(record.vlanName, m_prefix, hba, L".", FirstVlan + i);
        record.vlanId = FirstVlan + i;
        record.statusId = 1;
        Put(record.status, L"Up");
        Put(record.deviceId, m_prefix, hba);
        Put(record.name, L"VLAN ", FirstVlan + i);
    }
}

void Generator::Append(ULONG hba, std::vector<ORL_FCOE_STATISTIC>& out) const
{
    for (ULONG i = 0; i < m_statistics; ++i)
    {
        ORL_FCOE_STATISTIC& record = out.emplace_back();
        Put(record.deviceId, m_prefix, hba);
        if (i < std::size(Counters))
            Put(record.statistic, Counters[i]);
        else
            Put(record.statistic, L"counter_", i);
        Put(record.name, record.statistic);
        std::replace(record.name.begin(), record.name.end(), L'_', L' ');
        record.name.front() = static_cast<wchar_t>(record.name.front() - L'a' + L'A');
        record.value = Random(hba, KindCounter, i) >> 24;
    }
}

} // namespace orl
