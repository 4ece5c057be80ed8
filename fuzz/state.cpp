// Any bytes as a state file: it is read, or refused with a message that begins with the file's name. What is read comes
// out of writing as it went in, and writing one section leaves the others as they are.

#include "agentlibs/inventory/ChangedSan.h"
#include "Common/Src/ModuleTrace.h"
#include "agentlibs/BackendError.h"
#include "agentlibs/inventory/VirtualPortActions.h"
#include "agentlibs/inventory/VirtualPortState.h"

#include <cstdint>
#include <cstdlib>

ORL_MODULE_TRACE_OFF;

namespace
{

const std::wstring Name = L"san.json";
const std::string San = R"({"hbas": [{"deviceId": "a", "worldWidePortName": "2000000000000001", "fcid": 1,
  "virtualPorts": [{"worldWidePortName": "2100000000000001"}],
  "targets": [{"portWorldWidePortName": "2100000000000001", "luns": [{}]}]}], "generate": {"hbas": 2}})";

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void CheckSections(const orl::StateDocument& document)
{
    const orl::StateDocument changed(L"s", document.With("of this test", "[{}]"));
    Require(changed.Section("of this test") != nullptr);
    for (const char* key : {"virtualPorts", "settings"})
        Require((changed.Section(key) == nullptr) == (document.Section(key) == nullptr));
    Require(orl::StateDocument(L"s", changed.With("of this test", std::nullopt)).Section("of this test") == nullptr);
}

void CheckState(const orl::VirtualPortState& state)
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try
    {
        const orl::StateDocument document(L"s", std::string(reinterpret_cast<const char*>(data), size));
        CheckSections(document);
        CheckState(orl::VirtualPortState::Read(document));
    }
    catch (const orl::BackendError& error)
    {
        const std::wstring& text = error.Text();
        Require(error.Code() != 0 && (text.starts_with(L"s:") || text.starts_with(Name + L": ")));
    }
    return 0;
}
