// Which back end the registry asks for, and the one that cannot be had.

#include "agentlibs/corelink/SettingBackend.h"

namespace orl
{

namespace
{

class UnavailableSettings final : public SettingBackend
{
public:
    // Kept to be thrown later. NOLINTNEXTLINE(bugprone-throw-keyword-missing)
    UnavailableSettings(std::wstring source, const BackendError& error) : m_source(std::move(source)), m_error(error) {}

    BackendStatus Status() override { return {false, m_source, m_error.Text()}; }
    std::unique_ptr<SettingAdapter> Open(Operation, const COrlString&) override { throw m_error; }

private:
    const std::wstring m_source;
    const BackendError m_error;
};

} // namespace

std::unique_ptr<SettingBackend> MakeUnavailableSettings(std::wstring source, const BackendError& error)
{
    return std::make_unique<UnavailableSettings>(std::move(source), error);
}

std::unique_ptr<SettingBackend> MakeSettingBackend(const BackendConfig& config)
{
    const auto backend = BackendOf(L"Corelink", config);
    if (const auto* problem = std::get_if<BackendError>(&backend))
        return MakeUnavailableSettings({}, *problem);
    return std::get<BackendKind>(backend) == BackendKind::Inventory ? MakeInventorySettings(config)
                                                                    : MakeSysfsSettings(config);
}

} // namespace orl
