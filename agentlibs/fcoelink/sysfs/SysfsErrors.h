// What the kernel answers when it refuses.
#pragma once

#include <windows.h>

#include <string>

namespace orl::sysfs
{

// The agents' code for an errno.
ULONG ErrorCode(int error);

// The errno in words: "Device or resource busy".
std::wstring ErrorText(int error);

} // namespace orl::sysfs
