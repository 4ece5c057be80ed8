// What all who take part in a run share.
#pragma once

#include "tests/common/FailingNew.h"
#include "tests/stress/CountingSink.h"
#include "tests/stress/Dice.h"
#include "tests/stress/Ledger.h"
#include "tests/whole/WholeService.h"

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace orl::test
{

class World
{
public:
    World(WholeService& ofService, Ledger& ofLedger) : service(ofService), ledger(ofLedger) {}

    WholeService& service;
    Ledger& ledger;

    // A sink that the run keeps to its end, to see what is sent to it late. Thread safe.
    CComPtr<CountingSink> MakeSink();
    // To be called when nothing runs any more: whether each sink had its one status, and nobody holds it.
    void CheckSinks();

private:
    std::mutex m_mutex;
    std::vector<CComPtr<CountingSink>> m_sinks;
};

// One call of a client. The memory of the service may fail in it, the client's own does not.
template <typename Call>
HRESULT Ask(Ledger& ledger, Call&& call)
{
    HRESULT code = E_UNEXPECTED;
    try
    {
        const Exposed exposed;
        code = call();
    }
    catch (...)
    {
        ledger.Wrong("an exception left a COM method");
    }
    ledger.Add(Ledger::Calls);
    if (FAILED(code))
        ledger.Add(Ledger::Failures);
    return code;
}

// The adapters that writers work on: each has its own.
std::wstring WorkHba(std::size_t number);
std::wstring KillHba(std::size_t number);
inline constexpr std::size_t WorkHbas = 4;
inline constexpr std::size_t KillHbas = 200;
// The setting that each of them has, a number from 1 to this.
inline constexpr const wchar_t* SettingName = L"QueueDepth";
inline constexpr LONG SettingDefault = 32;
inline constexpr LONG SettingMax = 100000;
void WriteInventory(const std::filesystem::path& file, std::uint64_t seed);

std::wstring HbaPath(const std::wstring& hba);
std::wstring PortPath(const std::wstring& hba, const std::wstring& name);
std::wstring SettingPath(const std::wstring& hba);

} // namespace orl::test
