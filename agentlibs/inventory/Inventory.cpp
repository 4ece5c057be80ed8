// Inventory: what is asked of it once it is read.

#include "agentlibs/inventory/Inventory.h"

#include "agentlibs/Text.h"

#include <cmath>

namespace orl
{

namespace
{

// Counters start again at 0 past their last value, as those of hardware do.
ULONGLONG Advance(ULONGLONG value, double rate, double seconds)
{
    constexpr double most = 9.2e18; // what surely converts
    const double counts = std::floor(rate * seconds);
    return counts > 0 ? value + static_cast<ULONGLONG>(std::min(counts, most)) : value;
}

} // namespace

const Inventory::ListedHba* Inventory::FindListed(const COrlString& deviceId) const
{
    const auto found = m_index.find(FoldCase(deviceId));
    return found == m_index.end() ? nullptr : &m_listed[found->second];
}

bool Inventory::Knows(const COrlString& deviceId) const
{
    return FindListed(deviceId) != nullptr || (m_generator && m_generator->Find(deviceId));
}

void Inventory::AppendStatistics(const COrlString& deviceId, double seconds, std::vector<ORL_FCOE_STATISTIC>& out) const
{
    std::size_t next = out.size();
    Append(deviceId, out);
    const auto advance = [&](const ListedHba& hba)
    {
        for (double rate : hba.rates)
        {
            out[next].value = Advance(out[next].value, rate, seconds);
            ++next;
        }
    };
    if (!deviceId.empty())
    {
        if (const ListedHba* hba = FindListed(deviceId))
            advance(*hba);
        return;
    }
    for (const ListedHba& hba : m_listed)
        advance(hba);
}

} // namespace orl
