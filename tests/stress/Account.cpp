// What a client knows of an adapter that it alone changes.
#include "tests/stress/Account.h"

#include <algorithm>

namespace orl::test
{

// A port that is there already stays, whatever comes of asking for it again.
void Account::AskCreate(const std::wstring& name)
{
    Port& port = m_ports.try_emplace(name, Port::Gone).first->second;
    if (port == Port::Gone)
        port = Port::Unknown;
}

void Account::AskDelete(const std::wstring& name)
{
    Port& port = m_ports.try_emplace(name, Port::Gone).first->second;
    if (port == Port::There)
        port = Port::Unknown;
}

std::size_t Account::Promises() const
{
    return static_cast<std::size_t>(std::count_if(m_ports.begin(), m_ports.end(),
                                                  [](const auto& port) { return port.second != Port::Unknown; })) +
           (m_values.size() == 1 ? 1 : 0);
}

std::vector<std::string> Account::Broken(const std::set<std::wstring>& virtualPorts, std::optional<LONG> setting) const
{
    std::vector<std::string> broken;
    const auto add = [&](const std::wstring& text) { broken.emplace_back(text.begin(), text.end()); };
    for (const auto& [name, port] : m_ports)
    {
        if (port == Port::There && !virtualPorts.contains(name))
            add(m_hba + L": the port " + name + L" was answered as created and is not there");
        if (port == Port::Gone && virtualPorts.contains(name))
            add(m_hba + L": the port " + name + L" was answered as deleted and is there");
    }
    for (const std::wstring& name : virtualPorts)
    {
        if (!m_ports.contains(name))
            add(m_hba + L": nobody asked for the port " + name);
    }
    if (!setting || !m_values.contains(*setting))
    {
        std::wstring known;
        for (const LONG value : m_values)
            known += L" " + std::to_wstring(value);
        add(m_hba + L": the setting is " + (setting ? std::to_wstring(*setting) : L"not there") +
            L" and can only be one of" + known);
    }
    return broken;
}

} // namespace orl::test
