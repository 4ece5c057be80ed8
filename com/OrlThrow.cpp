// Throwing in one place, where a debugger can wait for it.
#include "com/OrlThrow.h"

void AtlThrow(HRESULT hr)
{
    throw CAtlException(hr);
}
