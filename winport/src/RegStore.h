// The registry file: reading it when it has changed, replacing it as a whole.
#pragma once

#include "winport/src/RegFile.h"

#include <functional>
#include <memory>

namespace winport
{

// The file's content as it is now; the version that a caller holds does not change. What is damaged is reported on
// standard error once in the process.
std::shared_ptr<const RegFile> ReadRegistry();

// Runs the change on the file's content and, when it answers ERROR_SUCCESS, replaces the file. Other processes and
// threads that change it wait for their turn. Returns the change's answer or the error that kept it from being written;
// then the file is as it was.
LSTATUS ChangeRegistry(const std::function<LSTATUS(RegFile&)>& change);

} // namespace winport
