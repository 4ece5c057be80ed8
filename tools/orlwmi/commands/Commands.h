// The commands. Each prints to the session's output and throws Failure when it cannot do what it was asked.
#pragma once

#include "tools/orlwmi/Session.h"

#include <string>

namespace orl::client
{

void RunTree(const Options& options, Session& session);
void RunStats(const Options& options, Session& session);
void RunGraph(const Options& options, Session& session);
void RunSettings(const Options& options, Session& session);
void RunEnum(const Options& options, Session& session);
void RunGet(const Options& options, Session& session);
void RunQuery(const Options& options, Session& session);
// `assoc` and `refs`.
void RunAssociations(const Options& options, Session& session);
// NotDone when the method answered that it did not do what it was asked.
[[nodiscard]] ExitCode RunCall(const Options& options, Session& session);
// NotDone when the adapter of a setting refused it.
[[nodiscard]] ExitCode RunSet(const Options& options, Session& session);
[[nodiscard]] ExitCode RunReset(const Options& options, Session& session);
// The code of the first path that could not be deleted, told to the session's errors as all of them are.
[[nodiscard]] ExitCode RunDelete(const Options& options, Session& session);
void RunClass(const Options& options, Session& session);
void RunClasses(const Options& options, Session& session);

// The query that `enum` stands for with --select or --where.
[[nodiscard]] std::string MakeQuery(const Options& options);

// The query that `assoc` and `refs` stand for, about the object at a path. Throws Failure for what is no name.
[[nodiscard]] std::string MakeAssociationQuery(const Options& options, const std::string& path);

} // namespace orl::client
