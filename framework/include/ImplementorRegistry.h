// ImplementorRegistry: where an implementor library hands over its class managers.
#pragma once

#include "com/OrlAtl.h"
#include "framework/include/CResult.h"
#include "framework/include/CWomClassManagerRoot.h"

class ImplementorRegistry
{
public:
    // Must stay the first operation: implementors are built apart from the framework.
    //
    // The registry owns the manager from here on, also when it refuses it: WBEM_E_INVALID_PARAMETER without a name or a
    // manager, WBEM_E_ALREADY_EXISTS for a name that is taken. Names are kept letter for letter.
    virtual HRESULT AddClassManager(CComBSTR className, CWomClassManagerRoot* manager) = 0;

protected:
    ~ImplementorRegistry() = default;
};

// What an implementor library exports under the name "RegisterCimImplementors". The framework calls it once. Success is
// a result of (0, 0); the result comes in as a failure, so an implementor that fails may leave it alone. The context
// says nothing and is null.
using RegisterCimImplementorsFunction = void (*)(void* context, ImplementorRegistry* registry, CResult* result);
