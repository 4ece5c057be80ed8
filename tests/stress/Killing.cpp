// Processes that change adapters and are killed while they do.
#include "tests/stress/Killing.h"

#include "tests/stress/Inventory.h"
#include "tests/stress/Writer.h"
#include "tests/support/ChildProcess.h"

#include <cstdio>
#include <thread>

namespace orl::test
{
namespace
{

constexpr std::uint64_t LongestLife = 60000; // microseconds after its first line

void KillOne(World& world, const std::filesystem::path& inventory, std::uint64_t seed, KilledAccounts& killed,
             Dice& dice)
{
    // The others want the state file too.
    std::this_thread::sleep_for(std::chrono::milliseconds(10 + dice.Below(40)));
    if (killed.size() == KillHbas)
        return;
    const std::size_t number = killed.size();
    Account& account = killed.emplace_back(KillHba(number), SettingDefault);
    ChildProcess victim(BuiltProgram("stress"), {"--victim", inventory.string(), std::to_string(number),
                                                 std::to_string(seed * KillHbas + number)});
    std::string line;
    if (!victim.ReadLine(line))
    {
        world.ledger.Wrong("a process that was to be killed did nothing");
        return;
    }
    Enter(account, line);
    std::this_thread::sleep_for(std::chrono::microseconds(dice.Below(LongestLife)));
    victim.Kill();
    while (victim.ReadLine(line))
        Enter(account, line);
    if (victim.Wait() != -1)
        world.ledger.Wrong("a process ended before it was killed");
    world.ledger.Add(Ledger::Kills);
}

} // namespace

Actor MakeKiller(World& world, const std::filesystem::path& inventory, std::uint64_t seed, KilledAccounts& killed)
{
    return {"killer",
            [&world, inventory, seed, &killed](Dice& dice) { KillOne(world, inventory, seed, killed, dice); }};
}

int RunVictim(const std::filesystem::path& inventory, const std::wstring& hba, std::uint64_t seed)
{
    const Agents agents(inventory);
    WholeService service(*agents.fcoe, *agents.adapter);
    Ledger ledger;
    Dice dice(seed, 0);
    Writer writer(ledger, service.Connect(), hba,
                  [](const std::string& line)
                  {
                      std::printf("%s\n", line.c_str());
                      std::fflush(stdout);
                  });
    while (ledger.Wrongs().empty())
        writer.Step(dice);
    return 1;
}

} // namespace orl::test
