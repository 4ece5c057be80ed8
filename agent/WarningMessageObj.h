// WarningMessageObj: one message from an agent to the user, carried to the client beside a method's return value.
#pragma once

#include "Common/Src/OrlString.h"

#include <windows.h>

struct WarningMessageObj
{
    // The kind that means that the action was refused or failed; every other kind is advice about one that was done.
    static constexpr ULONG KindError = 1;

    ULONG ulKind = 0;
    ULONG ulMessageId = 0; // string number of the text in the common resource library, 0 for a text of the agent's own
    COrlString strMessage;
};
