// What tests of virtual ports ask of an inventory back end in a folder of their own.
#pragma once

#include "agentlibs/fcoelink/Backend.h"
#include "tests/support/TestFolder.h"
#include "winport/portable/Utf8.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace orl::test
{

class VirtualPortFixture : public testing::Test
{
protected:
    std::unique_ptr<FcoeBackend> Backend() const { return MakeInventoryBackend({L"inventory", m_path.wstring(), {}}); }
    std::unique_ptr<FcoeBackend> Backend(const std::string& inventory) const
    {
        std::ofstream(m_path, std::ios::binary | std::ios::trunc) << inventory;
        return Backend();
    }
    void WriteState(const std::string& text) const
    {
        std::ofstream(m_statePath, std::ios::binary | std::ios::trunc) << text;
    }
    std::string State() const { return BytesOfFile(m_statePath); }

    // The name that was assigned, or the text of the error behind the inventory's name.
    std::string Create(FcoeBackend& backend, const wchar_t* hba, const wchar_t* name = L"")
    {
        COrlString text = name;
        const std::string error = ErrorOf([&] { return backend.CreateVirtualPort(hba, text, m_warnings, m_status); });
        return error.empty() ? ToUtf8(text) : error;
    }
    std::string Delete(FcoeBackend& backend, const wchar_t* hba, const wchar_t* name)
    {
        return ErrorOf([&] { return backend.DeleteVirtualPort(hba, name, m_warnings, m_status); });
    }
    std::string Generate(FcoeBackend& backend, const wchar_t* hba)
    {
        COrlString text;
        const std::string error =
            ErrorOf([&] { return backend.GenerateVirtualPortWWPN(hba, text, m_warnings, m_status); });
        return error.empty() ? ToUtf8(text) : error;
    }

    std::vector<ORL_FCOE_PORT> Ports(FcoeBackend& backend, const wchar_t* hba = L"")
    {
        std::vector<ORL_FCOE_PORT> ports;
        EXPECT_TRUE(backend.EnumeratePorts(hba, ports, m_status));
        return ports;
    }
    std::vector<std::string> Names(FcoeBackend& backend, const wchar_t* hba = L"")
    {
        std::vector<std::string> names;
        for (const ORL_FCOE_PORT& port : Ports(backend, hba))
            names.push_back(ToUtf8(port.portWWN));
        return names;
    }

    // The files beside the inventory, without its name.
    std::set<std::string> Beside() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path()))
            names.insert(entry.path().filename().string());
        return names;
    }

    // Empty when the call answered true; "refused" when it answered false; else the error's text.
    template <typename Call>
    std::string ErrorOf(Call&& call)
    {
        try
        {
            return call() ? "" : "refused";
        }
        catch (const BackendError& error)
        {
            m_code = error.Code();
            const std::string text = ToUtf8(error.Text());
            const std::string name = ToUtf8(m_path.wstring());
            return text.starts_with(name) ? text.substr(name.size()) : text;
        }
    }

    TestFolder m_folder;
    const std::filesystem::path m_path = m_folder / "san.json";
    const std::filesystem::path m_statePath = m_folder / "san.json.state";
    CResult m_status;
    std::vector<WarningMessageObj> m_warnings;
    ULONG m_code = 0; // of the last error
};

} // namespace orl::test
