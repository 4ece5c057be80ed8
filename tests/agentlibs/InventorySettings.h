// Settings of an inventory in a folder of its own.
#pragma once

#include "SettingTests.h"

#include "agentlibs/corelink/CoreAgent.h"
#include "tests/support/TestFolder.h"

#include <fstream>

namespace orl::test
{

class InventorySettingFixture : public SettingFixture
{
protected:
    std::unique_ptr<CoreAgent> Agent() const
    {
        return std::make_unique<CoreAgent>(MakeInventorySettings({L"inventory", m_path.wstring(), {}}));
    }
    std::unique_ptr<CoreAgent> Agent(const std::string& inventory) const
    {
        WriteInventory(inventory);
        return Agent();
    }
    void WriteInventory(const std::string& text) const
    {
        std::ofstream(m_path, std::ios::binary | std::ios::trunc) << text;
    }
    void WriteState(const std::string& text) const
    {
        std::ofstream(m_statePath, std::ios::binary | std::ios::trunc) << text;
    }
    std::string State() const { return BytesOfFile(m_statePath); }
    // Without the inventory's path.
    std::string Local(const std::wstring& text) const
    {
        std::string local = ToUtf8(text);
        const std::string name = ToUtf8(m_path.wstring());
        for (std::size_t at = local.find(name); at != std::string::npos; at = local.find(name))
            local.replace(at, name.size(), "san.json");
        return local;
    }

    TestFolder m_folder;
    const std::filesystem::path m_path = m_folder / "san.json";
    const std::filesystem::path m_statePath = m_folder / "san.json.state";
};

} // namespace orl::test
