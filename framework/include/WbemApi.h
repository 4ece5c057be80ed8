// The WBEM interfaces, with the one macro out of the way that renames a method of theirs.
#pragma once

#include <windows.h>

// The SDK's GDI header turns this word into GetObjectA or GetObjectW, and with it IWbemServices::GetObject.
#undef GetObject

#include <oleauto.h>
#include <wbemcli.h>
#include <wbemprov.h>

namespace orl
{

// A status code as a result: the SDK declares the codes as an enumeration of another sign.
template <typename Code>
constexpr HRESULT Hr(Code code)
{
    return static_cast<HRESULT>(code);
}

} // namespace orl
