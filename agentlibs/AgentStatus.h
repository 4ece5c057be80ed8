// What the agent libraries' export "OrlAgentStatus" answers, for whoever diagnoses an installation.
#pragma once

#include <windows.h>

#include <string>

namespace orl
{

// Three lines: where the data comes from and how it stands there.
//
//     back end: inventory
//     source: C:\lab.json
//     state: ready, 2 HBAs
std::wstring AgentStatusText(const std::wstring& backend, const std::wstring& source, const std::wstring& state);

// Copies the text into room for `capacity` characters, cut to fit, always with a terminator; nothing when there is no
// room at all.
void PutAgentStatus(const std::wstring& status, wchar_t* text, ULONG capacity);

} // namespace orl

// What an agent library exports under the name "OrlAgentStatus": fills `text` as above and answers 0 when the agent can
// serve, 1 when the text says why it cannot. Looks afresh at each call; never throws.
using OrlAgentStatusFunction = ULONG (*)(wchar_t* text, ULONG capacity);
