// The inventory back end: the settings of a simulated SAN's adapters.

#include "agentlibs/corelink/SettingBackend.h"

#include "agentlibs/inventory/InventoryFile.h"
#include "agentlibs/inventory/SettingState.h"
#include "agentlibs/inventory/StateFile.h"
#include "agentlibs/inventory/VirtualPortActions.h"

#include <utility>

namespace orl
{

namespace
{

class InventorySettings final : public SettingBackend
{
public:
    explicit InventorySettings(const std::wstring& path) : m_file(path), m_stateFile(path) {}

    BackendStatus Status() override;
    std::unique_ptr<SettingAdapter> Open(Operation operation, const COrlString& adapterId) override;

    std::shared_ptr<const SettingState> ReadState() { return m_state.Of(m_stateFile.Read(), &SettingState::Read); }
    void Change(const COrlString& deviceId, const COrlString& name, std::optional<LONG> value);

private:
    InventoryFile m_file;
    StateFile m_stateFile;
    StateSection<SettingState> m_state;
};

class InventoryAdapter final : public SettingAdapter
{
public:
    InventoryAdapter(InventorySettings& backend, std::shared_ptr<const Inventory> inventory, std::size_t hba)
        : m_backend(backend), m_inventory(std::move(inventory)), m_hba(hba)
    {
    }

    COrlString Name() const override
    {
        std::vector<ORL_FCOE_HBA> hbas;
        m_inventory->AppendOf(m_hba, hbas);
        return hbas.front().name;
    }

    std::vector<SettingDescription> Settings() const override
    {
        std::vector<SettingDescription> settings = m_inventory->SettingsOf(m_hba);
        m_backend.ReadState()->ApplyTo(m_inventory->DeviceIdOf(m_hba), settings);
        return settings;
    }

    // A simulated adapter takes whatever its file allows.
    void Check(const SettingDescription&, LONG, std::vector<WarningMessageObj>&) const override {}

    void Write(const SettingDescription& setting, LONG value) override
    {
        const std::vector<SettingDescription> listed = m_inventory->SettingsOf(m_hba);
        const SettingDescription* unchanged = FindSetting(listed, setting.name);
        const bool isAsListed = unchanged != nullptr && unchanged->current == value;
        m_backend.Change(m_inventory->DeviceIdOf(m_hba), setting.name,
                         isAsListed ? std::nullopt : std::optional<LONG>(value));
    }

private:
    InventorySettings& m_backend;
    const std::shared_ptr<const Inventory> m_inventory;
    const std::size_t m_hba;
};

BackendStatus InventorySettings::Status()
{
    BackendStatus status;
    status.source = m_file.Path();
    try
    {
        const auto inventory = m_file.Read().inventory;
        ReadState();
        status.text = Counted(inventory->SettingCount(), L"setting") + L" of " + Counted(inventory->HbaCount(), L"HBA");
        status.ready = true;
    }
    catch (const BackendError& error)
    {
        status.text = error.Text();
    }
    return status;
}

std::unique_ptr<SettingAdapter> InventorySettings::Open(Operation operation, const COrlString& adapterId)
{
    auto inventory = m_file.Read().inventory;
    inventory->Faults().Apply(operation, adapterId);
    const std::size_t hba = RequireHba(m_file.Path(), *inventory, adapterId);
    return std::make_unique<InventoryAdapter>(*this, std::move(inventory), hba);
}

void InventorySettings::Change(const COrlString& deviceId, const COrlString& name, std::optional<LONG> value)
{
    m_stateFile.Change(SettingState::Section,
                       [&](const StateDocument& document, StateFile::Section& section)
                       {
                           SettingState state = SettingState::Read(document);
                           const bool isNews = state.Set(deviceId, name, value);
                           if (!state.Empty())
                               section = state.Text();
                           return isNews;
                       });
}

} // namespace

std::unique_ptr<SettingBackend> MakeInventorySettings(const BackendConfig& config)
{
    return std::make_unique<InventorySettings>(config.inventory);
}

} // namespace orl
