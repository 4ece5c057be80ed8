// What the agent libraries' export "OrlAgentStatus" answers.

#include "agentlibs/AgentStatus.h"

#include <algorithm>

namespace orl
{

std::wstring AgentStatusText(const std::wstring& backend, const std::wstring& source, const std::wstring& state)
{
    const auto shown = [](const std::wstring& text) { return text.empty() ? std::wstring(L"none") : text; };
    return L"back end: " + shown(backend) + L"\nsource: " + shown(source) + L"\nstate: " + state;
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
