// AdapterChoice: the adapters that a command line names.
#pragma once

#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Session.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace orl::client
{

// Whether a pattern of the command line means the name: without case, `*` for any text and `?` for one character. A
// name is also meant by itself, whatever it holds.
[[nodiscard]] bool NameMatches(std::string_view pattern, std::string_view name);

// A text constant of the query language.
[[nodiscard]] std::string WqlText(std::string_view text);

class AdapterChoice
{
public:
    // The adapters whose DeviceID one of the patterns means; all when there is no pattern. Asks the service when that
    // is needed to know. A pattern that means no adapter is a Failure with ExitCode::NotFound.
    AdapterChoice(const std::vector<std::string>& patterns, Session& session);

    // Whether something that belongs to this adapter is wanted.
    [[nodiscard]] bool Has(std::string_view deviceId) const;

    // The condition of the query language for what belongs to them, by the property that names the adapter. Empty for
    // all, and for so many that asking for all and leaving out the rest is cheaper.
    [[nodiscard]] std::string Condition(const std::string& property = "DeviceID") const;

private:
    bool m_all;
    std::vector<std::string> m_ids;          // each once, as the service writes them
    std::unordered_set<std::string> m_known; // the same in lower case
};

// The instances of a class that belong to the chosen adapters, and maybe others: AdapterChoice::Has decides.
[[nodiscard]] Results InstancesOf(const char* className, const AdapterChoice& choice, Session& session,
                                  const std::string& property = "DeviceID");

} // namespace orl::client
