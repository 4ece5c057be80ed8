// doctor: whether this installation can work, and what to do where it cannot.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/doctor/Finding.h"

namespace orl::client
{

// Examines and prints. ExitCode::Unhealthy when anything is wrong.
[[nodiscard]] ExitCode RunDoctor(const Options& options, Output& output, const Deadline& deadline);

// Plain lines, or records of a format when one is given.
void PrintFindings(const Findings& findings, std::optional<Format> format, Output& output);

[[nodiscard]] ExitCode Verdict(const Findings& findings);

} // namespace orl::client
