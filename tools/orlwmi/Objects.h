// Objects of the service, read into records.
#pragma once

#include "tools/orlwmi/Record.h"

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

struct IWbemClassObject;
typedef struct tagVARIANT VARIANT;

namespace orl::client
{

// The value that a VARIANT of a CIM type stands for: unsigned numbers travel in signed ones, 64-bit numbers as texts.
[[nodiscard]] Value ReadValue(const VARIANT& variant, LONG cimType, int depth = 0);

// All properties but the system's, in the object's own order. Throws Failure when the object cannot be read. The depth
// counts the objects that this one is embedded in.
[[nodiscard]] Record ReadRecord(IWbemClassObject* object, int depth = 0);

// The properties that are asked for, in that order; system properties are allowed. One that the object does not have is
// a Failure with ExitCode::NotFound that names it.
[[nodiscard]] Record ReadProperties(IWbemClassObject* object, const std::vector<std::string>& names);

// The record with the object's MOF text only.
[[nodiscard]] Record ReadMof(IWbemClassObject* object);

// A system or plain property as text; empty when it is null or missing.
[[nodiscard]] std::string ReadText(IWbemClassObject* object, const wchar_t* name);

// Whether the object is a class and not an instance.
[[nodiscard]] bool IsClass(IWbemClassObject* object);

} // namespace orl::client
