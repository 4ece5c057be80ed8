// OrlWmiAppendSystemKeys: the keys by which other providers' devices name the system that they are part of.
#pragma once

#include "framework/include/OrlFrameworkApi.h"

#include <oleauto.h>

// Appends to an object path that has at least one key:
//   ,CreationClassName="<class>",SystemCreationClassName="CIM_ComputerSystem",SystemName="<host name>"
// The longer path is a new BSTR in place of the old one. Out of memory throws CAtlException with E_OUTOFMEMORY and
// leaves `path` alone. The host name is read once and kept.
ORL_FRAMEWORK_API void OrlWmiAppendSystemKeys(BSTR& path, const wchar_t* className);
