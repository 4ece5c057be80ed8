// ManagerTable: the class managers, by class name.
#pragma once

#include "framework/include/ImplementorRegistry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

// Owns the managers. It is filled once and then only read, from any thread.
class ManagerTable final : public ImplementorRegistry
{
public:
    ManagerTable() = default;
    ManagerTable(const ManagerTable&) = delete;
    ManagerTable& operator=(const ManagerTable&) = delete;

    HRESULT AddClassManager(CComBSTR className, CWomClassManagerRoot* manager) override;

    // Letter for letter; null when no manager has the name.
    CWomClassManagerRoot* Find(std::wstring_view className) const;
    std::size_t Size() const { return m_entries.size(); }

private:
    struct Entry
    {
        std::wstring className;
        std::unique_ptr<CWomClassManagerRoot> manager;
    };

    std::vector<Entry> m_entries;
};

} // namespace orl
