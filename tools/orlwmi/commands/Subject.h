// What a command line names: the instance that a command is about, and names that go into queries.
#pragma once

#include "tools/orlwmi/Session.h"

#include <string>

namespace orl::client
{

// The path of the instance: as it is given, or made from a class and its --key options. Throws Failure.
[[nodiscard]] std::string SubjectPath(const Options& options, Session& session);

// A name goes into a query unquoted, so nothing else may pass for one: Failure with ExitCode::Usage, in which `kind`
// says what was wanted ("class").
void CheckName(const std::string& name, const char* kind);

} // namespace orl::client
