// A client that changes an adapter: creates and deletes virtual ports, writes and resets a setting.
#pragma once

#include "tests/stress/Account.h"
#include "tests/stress/World.h"

#include <functional>

namespace orl::test
{

class Writer
{
public:
    // Told about every change before it is asked for and when it was answered as done: "create NAME", "created NAME",
    // "delete NAME", "deleted NAME", "write VALUE", "written VALUE".
    using Witness = std::function<void(const std::string& line)>;

    Writer(Ledger& ledger, CComPtr<IWbemServices> services, const std::wstring& hba, Witness witness = {});

    void Step(Dice& dice);
    const Account& Known() const { return m_account; }

private:
    void Create(Dice& dice);
    void Delete(Dice& dice);
    void Write(Dice& dice);
    void Reset();
    bool CallMethod(const std::wstring& path, const wchar_t* method, IWbemClassObject* in,
                    CComPtr<IWbemClassObject>& out);
    void Tell(const std::string& line) const;
    void WrittenAs(LONG value);

    Ledger& m_ledger;
    const CComPtr<IWbemServices> m_services;
    const Witness m_witness;
    Account m_account;
};

// The change that one of a witness's lines tells.
void Enter(Account& account, const std::string& line);

// What is there really. Nothing when the service cannot say.
std::optional<std::set<std::wstring>> VirtualPortsOf(IWbemServices& services, const std::wstring& hba);
std::optional<LONG> SettingOf(IWbemServices& services, const std::wstring& hba);
// Holds what is there against what was answered. To be called when the agents behave.
void CheckAccount(Ledger& ledger, IWbemServices& services, const Account& account);

} // namespace orl::test
