// The names of an object: its path, relative and whole, and the keys in it.
#pragma once

#include "host/ObjectBody.h"
#include "wbem/ObjectPath.h"

#include <optional>
#include <string>

namespace orl
{

// Class.Key="value" with the keys in the class's order, Class=@ for a singleton, Class for a class. Nothing for an
// instance that a path cannot name: its class has no key, a key is null or holds a null character, or the path would be
// longer than wbem::kMaxPathLength.
std::optional<std::wstring> RelativePath(const ObjectBody& body);

// \\SERVER\root\KESTA:Class.Key="value"
std::optional<std::wstring> FullPath(const ObjectBody& body);

// Whether the path names this instance: every key of the class is in the path with the instance's value, and nothing
// else is. Texts compare without case, quoted numbers as numbers, references as paths. `why` names the key at fault.
bool MatchesPath(const ObjectBody& body, const wbem::ObjectPath& path, std::wstring& why);

// The name of this machine, as __SERVER has it.
const std::wstring& ServerName();
// Whether a path's server part means this machine: empty, ".", "localhost" or the machine's name.
bool IsThisServer(const std::wstring& server);

} // namespace orl
