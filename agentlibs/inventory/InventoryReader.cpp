// Inventory: reading one from its JSON text.

#include "agentlibs/inventory/Inventory.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/Text.h"
#include "agentlibs/inventory/RecordFields.h"
#include "agentlibs/inventory/SettingFields.h"

namespace orl
{

class Inventory::Reader
{
public:
    explicit Reader(Inventory& inventory) : m_inventory(inventory) {}

    void Read(ObjectReader& in)
    {
        COrlString description; // for those who read the file
        in.Text("description", description);
        in.ForEach("hbas", [this](ObjectReader& hba) { ReadHba(hba); });
        in.Object("generate", [this](ObjectReader& block) { ReadGenerate(block); });
        in.ForEach("faults", [this](ObjectReader& fault) { m_inventory.m_faults.Add(fault); });
    }

private:
    // What a list's records start from: fields that the file leaves out keep these values.
    template <typename Record>
    static Record Of(const ORL_FCOE_HBA& owner)
    {
        Record record;
        record.deviceId = owner.deviceId;
        return record;
    }

    // Appends each record of the list and hands it on with what else its object may hold.
    template <typename Record, typename Further>
    static void ReadList(ObjectReader& in, std::string_view key, ListedHba& hba, const Record& start, Further&& further)
    {
        auto& records = std::get<std::vector<Record>>(hba.records);
        in.ForEach(key,
                   [&](ObjectReader& element)
                   {
                       Record& record = records.emplace_back(start);
                       ReadFields(element, record);
                       further(element, record);
                   });
    }
    template <typename Record>
    static void ReadList(ObjectReader& in, std::string_view key, ListedHba& hba, const Record& start)
    {
        ReadList(in, key, hba, start, [](ObjectReader&, const Record&) {});
    }

    void ReadHba(ObjectReader& in)
    {
        ORL_FCOE_HBA owner;
        ReadFields(in, owner);
        in.Require("deviceId");
        if (in.Has("deviceId"))
            Register(in, owner.deviceId);

        ListedHba& hba = m_inventory.m_listed.emplace_back();
        std::get<std::vector<ORL_FCOE_HBA>>(hba.records).push_back(owner);
        ReadFabrics(in, hba, owner);
        ReadPorts(in, hba, owner);
        ReadTargets(in, hba, owner);
        Index(hba, owner);
        ReadList(in, "vlans", hba, Of<ORL_FCOE_VLAN>(owner));
        ReadList(in, "statistics", hba, Of<ORL_FCOE_STATISTIC>(owner),
                 [&](ObjectReader& statistic, const ORL_FCOE_STATISTIC&)
                 {
                     statistic.Require("statistic");
                     statistic.Real("perSecond", hba.rates.emplace_back(0), MaxRate);
                 });
        ReadSettings(in, hba.settings);
    }

    void Register(const ObjectReader& in, const COrlString& deviceId)
    {
        if (deviceId.empty())
            in.Refuse("deviceId", "the device id is empty");
        const auto [known, isNew] = m_inventory.m_index.emplace(FoldCase(deviceId), m_inventory.m_listed.size());
        if (!isNew)
            in.Refuse("deviceId", "another HBA has this device id, at " + in.LineAndColumn(m_places[known->second]));
        m_places.push_back(in.Offset("deviceId"));
    }

    static void ReadFabrics(ObjectReader& in, ListedHba& hba, const ORL_FCOE_HBA& owner)
    {
        auto start = Of<ORL_FCOE_FABRIC>(owner);
        start.fabricTypeId = 1;
        start.fabricType = L"Fabric";
        ReadList(in, "fabrics", hba, start);
    }

    // Virtual ports are ports behind the physical ones; that they are listed apart is what tells them.
    static void ReadPorts(ObjectReader& in, ListedHba& hba, const ORL_FCOE_HBA& owner)
    {
        auto start = Of<ORL_FCOE_PORT>(owner);
        start.portTypeId = 5;
        start.portType = L"NPort (fabric via point-to-point)";
        ReadList(in, "ports", hba, start);
        hba.physicalPorts = std::get<std::vector<ORL_FCOE_PORT>>(hba.records).size();
        start.portTypeId = 2;
        start.portType = L"NPIV VPORT";
        ReadList(in, "virtualPorts", hba, start);
    }

    // A LUN is written below its target and knows from it what it has in common with it.
    static void ReadTargets(ObjectReader& in, ListedHba& hba, const ORL_FCOE_HBA& owner)
    {
        auto start = Of<ORL_FCOE_TARGET>(owner);
        start.localPortWWN = owner.worldWidePortName;
        start.targetType = 1;
        ReadList(in, "targets", hba, start,
                 [&](ObjectReader& element, const ORL_FCOE_TARGET& target)
                 {
                     auto lun = Of<ORL_FCOE_LUN>(owner);
                     lun.busNumber = target.scsiBus;
                     lun.targetNumber = target.scsiTarget;
                     lun.fcid = target.fcid;
                     lun.targetPortWWN = target.portWWN;
                     lun.localPortWWN = target.localPortWWN;
                     lun.fabricName = target.fabricName;
                     ReadList(element, "luns", hba, lun);
                 });
    }

    void Index(const ListedHba& hba, const ORL_FCOE_HBA& owner)
    {
        const std::size_t number = m_inventory.m_listed.size() - 1;
        PortIndex& index = m_inventory.m_ports;
        index.Add({PortSite::Kind::Port, number}, owner.worldWidePortName, owner.fcid);
        std::size_t place = 0;
        for (const ORL_FCOE_PORT& port : std::get<std::vector<ORL_FCOE_PORT>>(hba.records))
        {
            const bool isVirtual = place++ >= hba.physicalPorts;
            index.Add({isVirtual ? PortSite::Kind::VirtualPort : PortSite::Kind::Port, number}, port.portWWN,
                      port.fcid);
        }
        for (const ORL_FCOE_TARGET& target : std::get<std::vector<ORL_FCOE_TARGET>>(hba.records))
            index.Add({PortSite::Kind::Target, number}, target.portWWN, target.fcid);
    }

    void ReadGenerate(ObjectReader& in)
    {
        const Generator& generator = m_inventory.m_generator.emplace(in);
        for (std::size_t i = 0; i < m_inventory.m_listed.size(); ++i)
        {
            const auto& hba = std::get<std::vector<ORL_FCOE_HBA>>(m_inventory.m_listed[i].records).front();
            if (generator.Find(hba.deviceId))
                in.Refuse({}, "an HBA that this generates has the device id " + Quoted(Narrow(hba.deviceId)) +
                                  ", which is listed at " + in.LineAndColumn(m_places[i]));
        }
    }

    Inventory& m_inventory;
    std::vector<std::size_t> m_places; // the offsets of the listed HBAs' device ids, for messages
};

std::shared_ptr<const Inventory> Inventory::Read(const std::wstring& name, const std::string& text)
{
    const auto refuse = [&](const char* reason)
    { throw BackendError(ERROR_INVALID_DATA, name + L": " + Widen(reason)); };
    if (text.find_first_not_of(" \t\r\n") == std::string::npos)
        refuse("is empty");
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        refuse("is UTF-16; an inventory is UTF-8");

    const JsonText source(name, text);
    const JsonValue root = source.Parse();
    auto inventory = std::make_shared<Inventory>();
    const JsonPlace place;
    ObjectReader in(source, place, root);
    Reader(*inventory).Read(in);
    in.Finish();
    return inventory;
}

} // namespace orl
