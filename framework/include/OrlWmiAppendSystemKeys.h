// OrlWmiAppendSystemKeys: the keys by which other providers' devices name the system that they are part of.
#pragma once

#include "Common/Src/OrlString.h"
#include "framework/include/OrlFrameworkApi.h"

// Appends to an object path that has at least one key:
//   ,CreationClassName="<class>",SystemCreationClassName="CIM_ComputerSystem",SystemName="<host name>"
// The host name is read once and kept.
ORL_FRAMEWORK_API void OrlWmiAppendSystemKeys(COrlString& path, const wchar_t* className);
