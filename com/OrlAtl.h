// ATL's smart pointers and values: its own where the compiler brings it, ours elsewhere.
#pragma once

#include "com/OrlIid.h"

#ifdef _MSC_VER
#include <atlbase.h>
#else
#include "com/OrlComBstr.h"
#include "com/OrlComPtr.h"
#include "com/OrlComVariant.h"
#include "com/OrlThrow.h"
#endif
