// SettingState: the section of a state file that says which settings clients have changed, and to what.
#pragma once

#include "agentlibs/inventory/StateFile.h"
#include "agentlibs/settings/SettingDescription.h"
#include "Common/Src/OrlString.h"

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

// A value like any other; const calls may run in any number of threads. The case of device ids and names does not
// matter.
class SettingState
{
public:
    static constexpr std::string_view Section = "settings";

    // Nothing is changed in a document without the section. Throws BackendError with the place of what is wrong.
    static SettingState Read(const StateDocument& document);
    // The section's JSON.
    std::string Text() const;

    bool Empty() const { return m_hbas.empty(); }

    // Puts in the values that are changed. A value that the setting, as it is described now, cannot have is left out.
    void ApplyTo(const COrlString& deviceId, std::vector<SettingDescription>& settings) const;

    // Notes the value, or that the setting is as the inventory says. Answers whether that is any news.
    bool Set(const COrlString& deviceId, const COrlString& name, std::optional<LONG> value);

private:
    struct Value
    {
        COrlString name; // in the spelling of the inventory at the time
        LONG value = 0;
    };
    struct Hba
    {
        COrlString deviceId;                  // likewise
        std::map<std::wstring, Value> values; // by folded name
    };

    std::map<std::wstring, Hba> m_hbas; // by folded device id; none is without values
};

} // namespace orl
