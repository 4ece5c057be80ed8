// ExtendedStatus: the object that tells a client in words why its call failed.
#pragma once

#include "framework/include/CWomContext.h"

namespace orl
{

struct FailureWords
{
    const wchar_t* operation;     // as the client knows it: "GetObject"
    const wchar_t* parameterInfo; // what the operation was asked about: a path, a class, a query
    const wchar_t* description;
    HRESULT status;
};

// An instance of __ExtendedStatus with those words, or null when the service does not know the class or memory is
// short: the status itself must get through without it.
CComPtr<IWbemClassObject> MakeExtendedStatus(CWomContext& context, const FailureWords& words) noexcept;

} // namespace orl
