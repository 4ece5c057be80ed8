// Which provider serves a class, by the registration instances of the namespace.
#pragma once

#include "host/Repository.h"

#include <optional>
#include <string>

namespace orl
{

struct Registration
{
    const Namespace* nameSpace = nullptr; // where it is registered
    std::wstring name;                    // of the __Win32Provider
    std::wstring clsid;                   // as written
    bool isInstanceProvider = false;
    bool isMethodProvider = false;
    bool supportsGet = false;
    bool supportsEnumeration = false;
    bool supportsPut = false;
    bool supportsDelete = false;
    bool supportsQueries = false; // WQL over one class
};

// Whether the class names a provider; a class without one has the instances that the MOF declares.
bool HasProvider(const ClassDef& ofClass);

// The registration of the class's provider. Throws CallFailure: WBEM_E_PROVIDER_NOT_FOUND when the class names a
// provider that is not registered, WBEM_E_INVALID_PROVIDER_REGISTRATION when it has no CLSID. Read once: the namespace
// does not change, and every request asks.
const Registration& FindRegistration(const ClassDef& ofClass);

} // namespace orl
