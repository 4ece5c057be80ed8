// What the doctor examines. Each check adds its findings and stops at what makes the rest of it pointless.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/Options.h"
#include "tools/orlwmi/doctor/Finding.h"

namespace orl::client
{

void CheckRegistry(Findings& findings);
void CheckLibraries(Findings& findings);
void CheckAgents(Findings& findings);
void CheckSchemaFolder(Findings& findings);
void CheckTrace(Findings& findings);

// Connects as any client does and asks for the provider's registration, the classes and their instances. Throws Failure
// only when the user or the deadline ends the wait.
void CheckService(const Options& options, const Deadline& deadline, Findings& findings);

} // namespace orl::client
