// CResult: the status record that every agent operation takes as its last argument.
#pragma once

#include <windows.h>

// ulErrCode is 0 on success. Before an agent call it holds a copy of the request's status word, so an agent that never
// touches the record leaves what the client's request carried. The second word belongs to whoever fills the record.
struct CResult
{
    ULONG ulErrCode = 0;
    ULONG ulReserved = 0;
};

static_assert(sizeof(CResult) == 8, "two 32-bit words: the record is shared with agents built apart from the provider");
