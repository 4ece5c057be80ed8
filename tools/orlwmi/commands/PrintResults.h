// From a result set to the output, in the format that was asked for.
#pragma once

#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Session.h"

namespace orl::client
{

// Prints each object as it comes, or their number with --count. A result that is cut short by a failure is ended as a
// whole document before the failure goes on.
void PrintResults(Results results, const Options& options, Session& session);

// An object as the record that the options ask for.
[[nodiscard]] Record ReadAsAsked(IWbemClassObject* object, const Options& options, Format format);

} // namespace orl::client
