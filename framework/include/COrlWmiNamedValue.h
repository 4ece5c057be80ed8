// COrlWmiNamedValue: a name with its value, as an object path's key or a query's condition states it.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"

struct COrlWmiNamedValue
{
    COrlString name; // empty for a key whose name the path leaves out
    // VT_BSTR for text, VT_I4 for an integer (a decimal VT_BSTR when it needs 64 bits), VT_BOOL for TRUE and FALSE.
    CComVariant value;
};
