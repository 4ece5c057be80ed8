// Settings of adapters, as the two setting classes tell them.
#pragma once

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/Record.h"
#include "tools/orlwmi/Session.h"

#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

// Numbers are decimal literals.
struct Setting
{
    std::string path; // of the instance, in the namespace that was asked
    std::string adapter;
    std::string name;        // unique on its adapter
    std::string displayName; // with the unit, where there is one
    std::string description;
    std::string help;
    std::string value;
    std::string text; // of the value; empty when it has none
    std::string defaultValue;
    bool isWritable = false;
    bool isEnumeration = false;
    std::vector<std::pair<std::string, std::string>> choices; // of an enumeration: value and text
    std::string min;                                          // of a number, as the next three
    std::string max;
    std::string step;
    std::string base;
};

[[nodiscard]] Setting ReadSetting(const std::string& path, const Record& record);

// The settings of the chosen adapters: adapter by adapter, enumerations before numbers. Throws Failure.
[[nodiscard]] std::vector<Setting> ReadSettings(const AdapterChoice& choice, Session& session);

// The settings of one name, which is theirs or their display name, without case; a setting whose own name it is hides
// those of that display name. Failure with ExitCode::NotFound when there is none; it tells the nearest name.
[[nodiscard]] std::vector<Setting> FindSettings(const std::vector<Setting>& settings, const std::string& name);

// A value in words: the text of the choice, or the number in the setting's base.
[[nodiscard]] std::string ValueText(const Setting& setting, const std::string& value);

// What the setting takes: "Fabric, VN2VN" or "0 to 600 by 10".
[[nodiscard]] std::string AllowedText(const Setting& setting);

// The parameter or property that gives the setting a value of the command line, and its value there. A text of a choice
// counts before a number. Failure with ExitCode::Usage for what the setting cannot have.
[[nodiscard]] std::pair<std::string, std::string> NewValue(const Setting& setting, const std::string& value);

} // namespace orl::client
