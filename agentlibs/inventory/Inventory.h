// Inventory: a simulated SAN as one JSON text describes it.
#pragma once

#include "agentlibs/inventory/Faults.h"
#include "agentlibs/inventory/Generator.h"
#include "agent/OrlFcoeRecords.h"

#include <cstddef>
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
    bool Knows(const COrlString& deviceId) const;

    // Appends the records of one adapter, which it finds without walking the others; of all of them, those that are
    // listed in the file first, for an empty device id; nothing for an unknown one.
    template <typename Record>
    void Append(const COrlString& deviceId, std::vector<Record>& out) const
    {
        if (deviceId.empty())
        {
            out.reserve(out.size() + Count<Record>());
            for (const ListedHba& hba : m_listed)
                hba.Append(out);
            for (ULONG number = 0; m_generator && number < m_generator->HbaCount(); ++number)
                m_generator->Append(number, out);
            return;
        }
        if (const ListedHba* hba = FindListed(deviceId))
            hba->Append(out);
        else if (const auto number = m_generator ? m_generator->Find(deviceId) : std::nullopt)
            m_generator->Append(*number, out);
    }

    // The counters as they stand so many seconds after the moment that the file describes.
    void AppendStatistics(const COrlString& deviceId, double seconds, std::vector<ORL_FCOE_STATISTIC>& out) const;

    const FaultPlan& Faults() const { return m_faults; }

private:
    struct ListedHba
    {
        std::tuple<std::vector<ORL_FCOE_HBA>, std::vector<ORL_FCOE_FABRIC>, std::vector<ORL_FCOE_PORT>,
                   std::vector<ORL_FCOE_TARGET>, std::vector<ORL_FCOE_LUN>, std::vector<ORL_FCOE_VLAN>,
                   std::vector<ORL_FCOE_STATISTIC>>
            records;
        std::vector<double> rates; // of the statistics, in their order

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
    FaultPlan m_faults;
};

} // namespace orl
