// Any bytes as a state file: it is read, or refused with a message that begins with the file's name. What is read comes
// out of writing as it went in, and writing one section leaves the others as they are.

#include "agentlibs/inventory/ChangedSan.h"
#include "Common/Src/ModuleTrace.h"
#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/SettingState.h"
#include "agentlibs/inventory/VirtualPortActions.h"
#include "agentlibs/inventory/VirtualPortState.h"

#include "fuzz/Require.h"

#include <cstdint>

ORL_MODULE_TRACE_OFF;

namespace
{

const std::wstring Name = L"san.json";
const std::string San = R"({"hbas": [{"deviceId": "a", "worldWidePortName": "2000000000000001", "fcid": 1,
  "virtualPorts": [{"worldWidePortName": "2100000000000001"}],
  "targets": [{"portWorldWidePortName": "2100000000000001", "luns": [{}]}]}], "generate": {"hbas": 2}})";

void CheckSections(const orl::StateDocument& document)
{
    const orl::StateDocument changed(L"s", document.With("of this test", "[{}]"));
    Require(changed.Section("of this test") != nullptr);
    for (const char* key : {"virtualPorts", "settings"})
        Require((changed.Section(key) == nullptr) == (document.Section(key) == nullptr));
    Require(orl::StateDocument(L"s", changed.With("of this test", std::nullopt)).Section("of this test") == nullptr);
}

void CheckVirtualPorts(const orl::VirtualPortState& state)
{
    static const auto inventory = orl::Inventory::Read(Name, San);
    const std::string text = state.Text();
    const orl::StateDocument document(L"s", orl::StateDocument(L"s").With(orl::VirtualPortState::Section, text));
    const orl::VirtualPortState again = orl::VirtualPortState::Read(document);
    Require(again.Text() == text);

    const orl::ChangedSan san(inventory, std::make_shared<orl::VirtualPortState>(again));
    std::vector<ORL_FCOE_PORT> ports;
    san.Append(COrlString(), ports);
    std::vector<ORL_FCOE_LUN> luns;
    san.Append(COrlString(L"a"), luns);
    const orl::VirtualPortActions actions(Name, *inventory, L"a");
    orl::VirtualPortState changed = again;
    const std::uint64_t created = actions.Create(changed, std::nullopt);
    actions.Delete(changed, created);
}

// What a state of settings may say something of: one setting of each kind.
std::vector<orl::SettingDescription> Listed()
{
    std::vector<orl::SettingDescription> settings(3);
    settings[0].kind = orl::SettingDescription::Kind::Enumeration;
    settings[0].name = L"Mode";
    settings[0].choices = {{0, L"off"}, {5, L"on"}};
    settings[1].name = L"Depth";
    settings[1].min = -8;
    settings[1].max = 64;
    settings[1].step = 8;
    settings[2].kind = orl::SettingDescription::Kind::Other;
    settings[2].name = L"Odd";
    return settings;
}

void CheckSettings(const orl::SettingState& state)
{
    const std::string text = state.Text();
    const orl::StateDocument document(L"s", orl::StateDocument(L"s").With(orl::SettingState::Section, text));
    orl::SettingState again = orl::SettingState::Read(document);
    Require(again.Text() == text && again.Empty() == state.Empty());

    // Only values that a setting can have are put in, and what nobody changed stays as it is listed.
    std::vector<orl::SettingDescription> settings = Listed();
    again.ApplyTo(COrlString(L"A"), settings);
    for (const orl::SettingDescription& setting : settings)
        Require(setting.current == 0 || Admits(setting, setting.current));
    settings = Listed();
    again.ApplyTo(COrlString(L"an adapter that was never changed"), settings);
    for (const orl::SettingDescription& setting : settings)
        Require(setting.current == 0);

    again.Set(COrlString(L"a"), COrlString(L"DEPTH"), 16);
    Require(!again.Set(COrlString(L"A"), COrlString(L"depth"), 16) && !again.Empty());
    settings = Listed();
    again.ApplyTo(COrlString(L"a"), settings);
    Require(settings[1].current == 16);
    Require(again.Set(COrlString(L"a"), COrlString(L"Depth"), std::nullopt));
    Require(!again.Set(COrlString(L"a"), COrlString(L"Depth"), std::nullopt));
}

// Reads a section: what is wrong with it is told with the file's name in front.
template <typename Section, typename Check>
void ReadAndCheck(const orl::StateDocument& document, Check&& check)
{
    try
    {
        check(Section::Read(document));
    }
    catch (const orl::BackendError& error)
    {
        const std::wstring& text = error.Text();
        Require(error.Code() != 0 && (text.starts_with(L"s:") || text.starts_with(Name + L": ")));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try
    {
        const orl::StateDocument document(L"s", std::string(reinterpret_cast<const char*>(data), size));
        CheckSections(document);
        ReadAndCheck<orl::VirtualPortState>(document, CheckVirtualPorts);
        ReadAndCheck<orl::SettingState>(document, CheckSettings);
    }
    catch (const orl::BackendError& error)
    {
        Require(error.Code() != 0 && error.Text().starts_with(L"s:"));
    }
    return 0;
}
