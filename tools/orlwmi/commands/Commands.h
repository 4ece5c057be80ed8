// The commands. Each prints to the session's output and throws Failure when it cannot do what it was asked.
#pragma once

#include "tools/orlwmi/Session.h"

#include <string>

namespace orl::client
{

void RunTree(const Options& options, Session& session);
void RunStats(const Options& options, Session& session);
void RunEnum(const Options& options, Session& session);
void RunGet(const Options& options, Session& session);
void RunQuery(const Options& options, Session& session);
// NotDone when the method answered that it did not do what it was asked.
[[nodiscard]] ExitCode RunCall(const Options& options, Session& session);
// The code of the first path that could not be deleted, told to the session's errors as all of them are.
[[nodiscard]] ExitCode RunDelete(const Options& options, Session& session);
void RunClass(const Options& options, Session& session);
void RunClasses(const Options& options, Session& session);

// The query that `enum` stands for with --select or --where.
[[nodiscard]] std::string MakeQuery(const Options& options);

} // namespace orl::client
