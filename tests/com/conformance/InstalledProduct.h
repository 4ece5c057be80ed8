// InstalledProduct: the registry of an installation of the build, with the lab's inventory.
#pragma once

#include "tests/support/TestFolder.h"
#include "tests/support/TestRegistry.h"

#include <filesystem>

namespace orl::test
{

// One a process: the agents keep the inventory that they found first.
class InstalledProduct
{
public:
    InstalledProduct()
    {
        const std::filesystem::path inventory = std::filesystem::path(m_folder.Text()) / "lab.json";
        std::filesystem::copy_file(std::filesystem::path(ORL_TEST_DATA) / "inventory" / "lab.json", inventory);
        const std::wstring bin = std::filesystem::path(ORL_BIN_DIR).wstring();
        m_registry.SetText(ProductKey, L"InstalledDir", m_folder.Text());
        m_registry.SetText(ProductKey, L"ResourcePath", bin);
        m_registry.SetText(ProductKey, L"InstalledLangShortString", L"ENU");
        m_registry.SetNumber(ProductKey, L"TRACE", 0);
        for (const wchar_t* agent : {L"Fcoelink", L"Corelink"})
        {
            const std::wstring key = std::wstring(AgentsKey) + L"\\" + agent;
            m_registry.SetText(key, L"InstalledDir", bin);
            m_registry.SetText(key, L"Backend", L"inventory");
            m_registry.SetText(key, L"Inventory", inventory.wstring());
        }
    }

private:
    TestRegistry m_registry;
    TestFolder m_folder;
};

} // namespace orl::test
