// Connection: the way from a namespace's name to its services.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/Wmi.h"

#include <string>

namespace orl::client
{

// COM for this thread and the process's side of security, from construction to destruction.
class ComRuntime
{
public:
    ComRuntime();
    ComRuntime(const ComRuntime&) = delete;
    ComRuntime& operator=(const ComRuntime&) = delete;
    ~ComRuntime();
};

// "\\SERVER\root\KESTA", or the namespace alone when the server is empty. Either slash is accepted in the namespace.
[[nodiscard]] std::string NamespacePath(const std::string& server, const std::string& nameSpace);

// The services of a namespace, ready for calls. Throws Failure with ExitCode::NoConnection when there is no service or
// no such namespace.
[[nodiscard]] CComPtr<IWbemServices> Connect(const std::string& namespacePath, const Deadline& deadline);

} // namespace orl::client
