// Inventory: a simulated SAN as one JSON text describes it.
#pragma once

#include "agentlibs/inventory/Faults.h"
#include "agentlibs/inventory/Generator.h"
#include "agentlibs/inventory/PortIndex.h"
#include "agentlibs/settings/SettingDescription.h"
#include "agent/OrlFcoeRecords.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace orl
{

// Never changes once it is read (but for the counters of its faults), so any number of threads may ask it at once.
class Inventory
{
public:
    // The fastest that a counter may advance, in counts a second.
    static constexpr double MaxRate = 1e10;

    // `name` is the file's, for messages. Throws BackendError when the text is no inventory.
    static std::shared_ptr<const Inventory> Read(const std::wstring& name, const std::string& text);

    std::size_t HbaCount() const { return m_listed.size() + (m_generator ? m_generator->HbaCount() : 0); }
    bool Knows(const COrlString& deviceId) const { return Find(deviceId).has_value(); }
    // The adapter's number, from 0 to HbaCount() in the order in which clients see them.
    std::optional<std::size_t> Find(const COrlString& deviceId) const;
    COrlString DeviceIdOf(std::size_t hba) const;

    // Appends the records of one adapter, which it finds without walking the others; of all of them, those that are
    // listed in the file first, for an empty device id; nothing for an unknown one.
    template <typename Record>
    void Append(const COrlString& deviceId, std::vector<Record>& out) const
    {
        if (const auto hba = deviceId.empty() ? std::nullopt : Find(deviceId))
            AppendOf(*hba, out);
        else if (deviceId.empty())
        {
            Reserve(out);
            AppendOf(0, HbaCount(), out);
        }
    }
    // Makes room for what Append appends of all adapters.
    template <typename Record>
    void Reserve(std::vector<Record>& out) const
    {
        out.reserve(out.size() + Count<Record>());
    }
    // As Append, of the adapter of this number, and of those from `first` to before `last`.
    template <typename Record>
    void AppendOf(std::size_t hba, std::vector<Record>& out) const
    {
        if (hba < m_listed.size())
            m_listed[hba].Append(out);
        else
            m_generator->Append(static_cast<ULONG>(hba - m_listed.size()), out);
    }
    template <typename Record>
    void AppendOf(std::size_t first, std::size_t last, std::vector<Record>& out) const
    {
        for (; first < last; ++first)
            AppendOf(first, out);
    }

    // How many of the adapter's ports are physical: they come before the virtual ones.
    std::size_t PhysicalPorts(std::size_t hba) const;
    // The ports and targets that have this name; of a target that several adapters see, the first one alone.
    std::vector<PortSite> SitesOf(std::uint64_t portName) const;
    // The lowest address from `from` upwards that no port and no target has; 0 when there is none.
    ULONG FreeFcid(ULONG from) const;

    // The counters as they stand so many seconds after the moment that the file describes.
    void AppendStatistics(const COrlString& deviceId, double seconds, std::vector<ORL_FCOE_STATISTIC>& out) const;

    // The settings of the adapter of this number, as the file says.
    std::vector<SettingDescription> SettingsOf(std::size_t hba) const;
    std::size_t SettingCount() const;

    const FaultPlan& Faults() const { return m_faults; }

private:
    struct ListedHba
    {
        std::tuple<std::vector<ORL_FCOE_HBA>, std::vector<ORL_FCOE_FABRIC>, std::vector<ORL_FCOE_PORT>,
                   std::vector<ORL_FCOE_TARGET>, std::vector<ORL_FCOE_LUN>, std::vector<ORL_FCOE_VLAN>,
                   std::vector<ORL_FCOE_STATISTIC>>
            records;
        std::vector<double> rates; // of the statistics, in their order
        std::size_t physicalPorts = 0;
        std::vector<SettingDescription> settings;

        template <typename Record>
        void Append(std::vector<Record>& out) const
        {
            const auto& own = std::get<std::vector<Record>>(records);
            out.insert(out.end(), own.begin(), own.end());
        }
    };

    class Reader;

    template <typename Record>
    std::size_t Count() const
    {
        std::size_t count = m_generator ? std::size_t{m_generator->HbaCount()} *
                                              m_generator->CountPerHba(static_cast<const Record*>(nullptr))
                                        : 0;
        for (const ListedHba& hba : m_listed)
            count += std::get<std::vector<Record>>(hba.records).size();
        return count;
    }
    const ListedHba* FindListed(const COrlString& deviceId) const;

    std::vector<ListedHba> m_listed;
    std::unordered_map<std::wstring, std::size_t> m_index; // by folded device id
    std::optional<Generator> m_generator;
    PortIndex m_ports; // of the listed adapters
    FaultPlan m_faults;
};

} // namespace orl
