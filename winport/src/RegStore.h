// The registry file: reading it when it has changed, replacing it as a whole.
#pragma once

#include "winport/src/RegFile.h"

#include <chrono>
#include <functional>
#include <memory>

namespace winport
{

// The file's content as it is now; the version that a caller holds does not change. What is damaged is reported on
// standard error once in the process.
std::shared_ptr<const RegFile> ReadRegistry();

// Runs the change on the file's content and, when it answers ERROR_SUCCESS, replaces the file. Other processes and
// threads that change it wait for their turn, no longer than `patience`: ERROR_BUSY then. Returns the change's answer
// or the error that kept it from being written; then the file is as it was. Beside a file `registry.reg` lie
// `registry.reg.lock`, which stays, and, while somebody writes, `registry.reg.new`; neither is followed through a
// symbolic link.
inline constexpr std::chrono::milliseconds RegistryPatience{10000};
LSTATUS ChangeRegistry(const std::function<LSTATUS(RegFile&)>& change,
                       std::chrono::milliseconds patience = RegistryPatience);

} // namespace winport
