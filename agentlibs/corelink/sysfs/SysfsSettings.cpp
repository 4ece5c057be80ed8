// The sysfs back end: attributes of the kernel's FCoE stack, read and written in place. Keeps nothing between calls.

#include "agentlibs/corelink/SettingBackend.h"

#include "agentlibs/Text.h"
#include "agentlibs/corelink/sysfs/SettingTable.h"
#include "agentlibs/fcoelink/sysfs/SysfsErrors.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"
#include "agentlibs/fcoelink/sysfs/SysfsTree.h"
#include "agentlibs/settings/SettingMessages.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orl
{
namespace
{

using namespace sysfs;

constexpr const char* EnabledFile = "enabled";

const SettingAttribute& AttributeOf(const SettingDescription& setting)
{
    const auto table = SettingAttributes();
    return *std::find_if(table.begin(), table.end(),
                         [&](const SettingAttribute& attribute) { return setting.name == attribute.name; });
}

class KernelAdapter final : public SettingAdapter
{
public:
    explicit KernelAdapter(Controller controller)
        : m_controller(std::move(controller)), m_interface(Wide(m_controller.interfaceName))
    {
    }

    COrlString Name() const override { return Wide(m_controller.host.fc.Read("symbolic_name")); }
    std::vector<SettingDescription> Settings() const override;
    void Check(const SettingDescription& setting, LONG value, std::vector<WarningMessageObj>& advice) const override;
    void Write(const SettingDescription& setting, LONG value) override;

private:
    const Dir& FolderOf(const SettingAttribute& attribute) const;
    std::string TextOf(const SettingAttribute& attribute) const { return FolderOf(attribute).Read(attribute.file); }

    const Controller m_controller;
    const std::wstring m_interface;
};

const Dir& KernelAdapter::FolderOf(const SettingAttribute& attribute) const
{
    switch (attribute.place)
    {
    case AttributePlace::FcHost:
        return m_controller.host.fc;
    case AttributePlace::Interface:
        return m_controller.interfaceDir;
    case AttributePlace::Controller:
        break;
    }
    return m_controller.dir;
}

std::vector<SettingDescription> KernelAdapter::Settings() const
{
    std::vector<SettingDescription> settings;
    for (const SettingAttribute& attribute : SettingAttributes())
        if (auto setting = Describe(attribute, TextOf(attribute)))
            settings.push_back(std::move(*setting));
    return settings;
}

// The kernel answers a change of the mode with a bare "busy" while the controller is enabled. Said before, it can be
// said in full, and to those who only ask.
void KernelAdapter::Check(const SettingDescription& setting, LONG value, std::vector<WarningMessageObj>& advice) const
{
    if (setting.name == ControllerModeName && value != setting.current)
    {
        if (m_controller.dir.Read(EnabledFile) == "1")
            throw SettingRefusal(ERROR_BUSY, SettingMessage::ControllerEnabled, {setting.name, m_interface});
        advice.push_back(Advice(SettingMessage::WhenEnabledAgain, {setting.name, m_interface}));
    }
    if (setting.name == MtuName && value < FullFrameMtu)
        advice.push_back(Advice(SettingMessage::MtuTooSmall, {m_interface, std::to_wstring(value)}));
}

// What stands there already is not written: the kernel would take the mode that it has for a change of it.
void KernelAdapter::Write(const SettingDescription& setting, LONG value)
{
    if (value == setting.current)
        return;
    const SettingAttribute& attribute = AttributeOf(setting);
    if (const int error = FolderOf(attribute).Write(attribute.file, KernelText(attribute, value)))
        throw SettingRefusal(ErrorCode(error), SettingMessage::KernelRefused,
                             {setting.name, m_interface, ErrorText(error)});
    const std::string text = TextOf(attribute);
    const auto written = Describe(attribute, text);
    if (!written || written->current != value)
        throw SettingRefusal(ERROR_GEN_FAILURE, SettingMessage::ReadsOtherwise,
                             {setting.name, m_interface, orl::TextOf(setting, value), Wide(text)});
}

class SysfsSettings final : public SettingBackend
{
public:
    explicit SysfsSettings(const std::wstring& root) : m_root(root.empty() ? "/" : Narrow(root)) {}

    BackendStatus Status() override;
    std::unique_ptr<SettingAdapter> Open(Operation operation, const COrlString& adapterId) override;

private:
    const std::string m_root;
};

BackendStatus SysfsSettings::Status()
{
    BackendStatus status;
    status.source = Wide(m_root);
    try
    {
        const Tree tree(m_root);
        std::size_t adapters = 0;
        std::size_t settings = 0;
        tree.ForEachController({},
                               [&](const Controller& controller)
                               {
                                   ++adapters;
                                   settings += KernelAdapter(controller).Settings().size();
                               });
        status.ready = tree.HasFcoeBus();
        status.text = status.ready ? Counted(settings, L"setting") + L" of " + Counted(adapters, L"HBA")
                                   : std::wstring(NoFcoeBus);
    }
    catch (const BackendError& error)
    {
        status.text = error.Text();
    }
    return status;
}

std::unique_ptr<SettingAdapter> SysfsSettings::Open(Operation, const COrlString& adapterId)
{
    const Tree tree(m_root);
    if (const auto controller = tree.FindController(adapterId))
        return std::make_unique<KernelAdapter>(*controller);
    throw BackendError(ERROR_DEV_NOT_EXIST, L"there is no HBA \"" + adapterId + L"\"");
}

} // namespace

std::unique_ptr<SettingBackend> MakeSysfsSettings(const BackendConfig& config)
{
    return std::make_unique<SysfsSettings>(config.sysfsRoot);
}

} // namespace orl
