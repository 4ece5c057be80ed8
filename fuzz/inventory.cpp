// Any bytes as an inventory: it is read, or refused with a message that begins
// with the file's name.

#include "agentlibs/inventory/Inventory.h"
#include "Common/Src/ModuleTrace.h"
#include "agentlibs/BackendError.h"

#include <cstdint>
#include <cstdlib>

ORL_MODULE_TRACE_OFF;

namespace
{

template <typename Record>
void Enumerate(const orl::Inventory& inventory, const COrlString& deviceId)
{
    std::vector<Record> records;
    inventory.Append(deviceId, records);
    for (const Record& record : records)
        if (record.deviceId.empty())
            std::abort();
}

// Of a few adapters only: an inventory of a few bytes can make millions of
// records.
void Walk(const orl::Inventory& inventory)
{
    constexpr std::size_t most = 100;
    if (inventory.HbaCount() > most)
        return;
    std::vector<ORL_FCOE_HBA> hbas;
    inventory.Append(COrlString(), hbas);
    if (hbas.size() != inventory.HbaCount())
        std::abort();
    for (const ORL_FCOE_HBA& hba : hbas)
    {
        if (!inventory.Knows(hba.deviceId))
            std::abort();
        Enumerate<ORL_FCOE_FABRIC>(inventory, hba.deviceId);
        Enumerate<ORL_FCOE_VLAN>(inventory, hba.deviceId);
        std::vector<ORL_FCOE_STATISTIC> statistics;
        inventory.AppendStatistics(hba.deviceId, 1e6, statistics);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    try
    {
        Walk(*orl::Inventory::Read(L"san.json", text));
    }
    catch (const orl::BackendError& error)
    {
        if (error.Code() == 0 || error.Text().rfind(L"san.json:", 0) != 0)
            std::abort();
    }
    return 0;
}
