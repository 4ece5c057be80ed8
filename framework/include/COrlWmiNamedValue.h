// COrlWmiNamedValue: a name with its value, as an object path's key or a query's condition states it.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"
#include "framework/include/OrlFrameworkApi.h"

struct ORL_FRAMEWORK_API COrlWmiNamedValue
{
    COrlString name;
    // VT_BSTR for text, VT_I4 for an integer (a decimal VT_BSTR when it needs 64 bits), VT_BOOL for TRUE and FALSE.
    CComVariant value;

    // The value in words, whatever its type: text as it is, integers in decimal, TRUE or FALSE.
    COrlString Text() const;
};
