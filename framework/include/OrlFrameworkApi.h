// ORL_FRAMEWORK_API: marks what the framework's library exports to the implementors.
#pragma once

#include <windows.h>

// Defined where the library itself is built. Its users need no counterpart: imports resolve by name.
#ifdef ORL_FRAMEWORK_EXPORT
#define ORL_FRAMEWORK_API __declspec(dllexport)
#else
#define ORL_FRAMEWORK_API
#endif
