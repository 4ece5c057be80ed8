// Which object a path or an instance stands for, as a text to compare and to hash.
#pragma once

#include "host/ObjectBody.h"
#include "wbem/ObjectPath.h"

#include <cstddef>
#include <string>
#include <vector>

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

// The path that names an instance by these properties, as one of that class (its own or one above it).
wbem::ObjectPath PathBy(const ObjectBody& body, const ClassDef& ofClass, const std::vector<std::size_t>& properties);

// Whether a key only says which system an object is in.
bool IsSystemKey(std::wstring_view name);

} // namespace orl
