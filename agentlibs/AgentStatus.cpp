// What the agent libraries' export "OrlAgentStatus" answers.

#include "agentlibs/AgentStatus.h"

#include <algorithm>

namespace orl
{

std::wstring AgentStatusText(const AgentState& state)
{
    const auto shown = [](const std::wstring& text) { return text.empty() ? std::wstring(L"none") : text; };
    return L"back end: " + shown(state.backend) + L"\nsource: " + shown(state.status.source) + L"\nstate: " +
           (state.status.ready ? L"ready, " : L"error, ") + state.status.text;
}

void PutAgentStatus(const std::wstring& status, wchar_t* text, ULONG capacity)
{
    if (text == nullptr || capacity == 0)
        return;
    const std::size_t length = std::min<std::size_t>(status.size(), capacity - 1);
    std::copy_n(status.begin(), length, text);
    text[length] = L'\0';
}

} // namespace orl
