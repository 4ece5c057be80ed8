// What the provider's library exports of the common library.
#pragma once

// ORL_COMMON_EXPORT is defined for every source of the module that exports these names (it comes with the target
// orl_common_exported). Everywhere else the names are the module's own; a user of the exports needs no import mark.
#ifdef ORL_COMMON_EXPORT
#define ORL_COMMON_API __declspec(dllexport)
#else
#define ORL_COMMON_API
#endif
