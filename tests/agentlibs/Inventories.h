// Inventories as tests write them down.
#pragma once

#include "agentlibs/inventory/Inventory.h"

#include <memory>
#include <string>
#include <vector>

namespace orl::test
{

inline std::shared_ptr<const Inventory> ReadInventory(const std::string& text)
{
    return Inventory::Read(L"san.json", text);
}

// An inventory of one HBA, "eth0", with these members more.
inline std::string OneHba(const std::string& members)
{
    return R"({"hbas": [{"deviceId": "eth0")" + (members.empty() ? members : ", " + members) + "}]}";
}

template <typename Record>
std::vector<Record> RecordsOf(const Inventory& inventory, const wchar_t* deviceId = L"")
{
    std::vector<Record> records;
    inventory.Append(COrlString(deviceId), records);
    return records;
}

} // namespace orl::test
