// The commands. Each prints to the session's output and throws Failure when it cannot do what it was asked.
#pragma once

#include "tools/orlwmi/Session.h"

#include <string>

namespace orl::client
{

void RunTree(const Options& options, Session& session);
void RunEnum(const Options& options, Session& session);
void RunGet(const Options& options, Session& session);
void RunQuery(const Options& options, Session& session);
void RunClass(const Options& options, Session& session);
void RunClasses(const Options& options, Session& session);

// The query that `enum` stands for with --select or --where.
[[nodiscard]] std::string MakeQuery(const Options& options);

} // namespace orl::client
