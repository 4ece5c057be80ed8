// What a client knows of an adapter that it alone changes, from what it asked for and what it was answered.
#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orl::test
{

// Between asking and the answer, and for good when the answer is a failure or never comes, a change may have happened
// or not; what was answered as done has happened.
class Account
{
public:
    explicit Account(std::wstring hba, LONG setting) : m_hba(std::move(hba)), m_values{setting} {}

    void AskCreate(const std::wstring& name);
    void Created(const std::wstring& name) { m_ports[name] = Port::There; }
    void AskDelete(const std::wstring& name);
    void Deleted(const std::wstring& name) { m_ports[name] = Port::Gone; }
    void AskWrite(LONG value) { m_values.insert(value); }
    void Written(LONG value) { m_values = {value}; }

    const std::wstring& Hba() const { return m_hba; }
    // How many answers there are to be kept.
    std::size_t Promises() const;
    // What of it does not hold, given what is there; empty when all holds.
    std::vector<std::string> Broken(const std::set<std::wstring>& virtualPorts, std::optional<LONG> setting) const;

private:
    enum class Port
    {
        There,
        Gone,
        Unknown
    };

    std::wstring m_hba;
    std::map<std::wstring, Port> m_ports; // those that are not named here are gone
    std::set<LONG> m_values;              // one of them is the setting's
};

} // namespace orl::test
