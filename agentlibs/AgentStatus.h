// What the agent libraries' export "OrlAgentStatus" answers, for whoever diagnoses an installation.
#pragma once

#include "agentlibs/BackendConfig.h"

#include <windows.h>

#include <exception>
#include <string>

namespace orl
{

struct AgentState
{
    std::wstring backend; // as the registry names it
    BackendStatus status;
};

// Three lines: where the data comes from and how it stands there.
//
//     back end: inventory
//     source: C:\lab.json
//     state: ready, 2 HBAs
std::wstring AgentStatusText(const AgentState& state);

// Copies the text into room for `capacity` characters, cut to fit, always with a terminator; nothing when there is no
// room at all.
void PutAgentStatus(const std::wstring& status, wchar_t* text, ULONG capacity);

// What the export does with what `look()` finds, an AgentState.
template <typename Look>
ULONG AnswerAgentStatus(wchar_t* text, ULONG capacity, Look&& look)
{
    try
    {
        const AgentState state = look();
        PutAgentStatus(AgentStatusText(state), text, capacity);
        return state.status.ready ? 0 : 1;
    }
    catch (const std::exception&)
    {
        PutAgentStatus({}, text, capacity);
        return 1;
    }
}

} // namespace orl

// What an agent library exports under the name "OrlAgentStatus": fills `text` as above and answers 0 when the agent can
// serve, 1 when the text says why it cannot. Looks afresh at each call; never throws.
using OrlAgentStatusFunction = ULONG (*)(wchar_t* text, ULONG capacity);
