// Which object a path stands for, as a text to compare and to hash.
#pragma once

#include "wbem/ObjectPath.h"

#include <string>

namespace orl
{

class Namespace;

// Equal for two paths that name the same object, whoever wrote them: class and key names and texts without case, keys
// in any order, numbers with or without quotes, paths within values as paths. Server and namespace do not count, nor do
// the keys that name an object's system (CreationClassName, SystemCreationClassName, SystemName), which some writers
// leave out: all objects of a service are in one system.
std::wstring IdentityOf(const wbem::ObjectPath& path);

// Gives a path's only key, written without a name, the name of its class's only key.
void NameTheKey(wbem::ObjectPath& path, const Namespace& nameSpace);

// Whether a key only says which system an object is in.
bool IsSystemKey(std::wstring_view name);

} // namespace orl
