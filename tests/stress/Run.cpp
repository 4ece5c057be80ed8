// One run: everybody at once for a while, then the reckoning.
#include "tests/stress/Run.h"

#include "tests/stress/Actors.h"
#include "tests/stress/Inventory.h"
#include "tests/stress/Killing.h"
#include "tests/stress/MischievousAgents.h"
#include "tests/stress/Writer.h"
#include "tests/support/TestFolder.h"

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <thread>

namespace orl::test
{
namespace
{

using Clock = std::chrono::steady_clock;

// What a run must have met to have shown anything.
constexpr Ledger::Count Needed[] = {Ledger::Objects,    Ledger::Cancelled,    Ledger::Refusing,
                                    Ledger::Abandoned,  Ledger::Created,      Ledger::Deleted,
                                    Ledger::Written,    Ledger::AgentThrows,  Ledger::AgentFailures,
                                    Ledger::AgentHangs, Ledger::AgentGarbage, Ledger::Kills};

// Allocations fail in some of the time slices only, so that in others something is brought to its end.
class Saboteur
{
public:
    explicit Saboteur(std::uint64_t seed) : m_seed(seed) {}

    void Step(Dice& dice)
    {
        constexpr unsigned chances[] = {0, 0, 200, 1000, 5000, 30000};
        MakeMemoryFlaky(chances[dice.Below(std::size(chances))], m_seed);
        for (std::uint64_t slices = dice.Below(10); slices > 0; --slices)
        {
            if (dice.OneIn(2))
                OrlFailBstrAllocation(static_cast<ULONG>(1 + dice.Below(300)));
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

private:
    const std::uint64_t m_seed;
};

// Actors at work, each on its thread. Its loop ends with Stop.
class Stage
{
public:
    Stage(Ledger& ledger, std::uint64_t seed) : m_ledger(ledger), m_seed(seed) {}

    void Enter(Actor actor) { m_parts.emplace_back(std::move(actor)); }
    void Begin()
    {
        std::uint64_t stream = 0;
        for (Part& part : m_parts)
            part.thread = std::thread([this, &part, number = ++stream] { Play(part, Dice(m_seed, number)); });
    }
    // Ends the process when somebody has waited too long for an answer: there is no way to go on.
    void Watch() const
    {
        for (const Part& part : m_parts)
        {
            if (Clock::now() - part.since.load() < 3 * LongestAnswer)
                continue;
            std::printf("stress: the %s has waited too long for its answer\n", part.actor.name.c_str());
            std::fflush(stdout);
            std::abort();
        }
    }
    void Stop()
    {
        m_stops = true;
        for (Part& part : m_parts)
            part.thread.join();
    }

private:
    struct Part
    {
        explicit Part(Actor ofActor) : actor(std::move(ofActor)) {}

        Actor actor;
        std::atomic<Clock::time_point> since{Clock::now()};
        std::thread thread;
    };

    void Play(Part& part, Dice dice)
    {
        const Sheltered own;
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        while (!m_stops)
        {
            part.since = Clock::now();
            try
            {
                part.actor.step(dice);
            }
            catch (const CAtlException&)
            {
                m_ledger.Add(Ledger::ClientOutOfMemory); // of a BSTR, which knows no shelter
            }
            catch (const std::exception& failure)
            {
                m_ledger.Wrong(part.actor.name + " failed: " + failure.what());
            }
        }
        CoUninitialize();
    }

    Ledger& m_ledger;
    const std::uint64_t m_seed;
    std::atomic<bool> m_stops{false};
    std::deque<Part> m_parts;
};

bool HasMetAll(const Ledger& ledger)
{
    for (const Ledger::Count each : Needed)
    {
        if (ledger.Of(each) == 0)
            return false;
    }
    return FlakyFailures() != 0;
}

class Run
{
public:
    Run(const RunOptions& options, const std::filesystem::path& inventory)
        : m_options(options), m_inventory(inventory), m_agents(inventory)
    {
    }

    void Play()
    {
        {
            WholeService service(m_fcoe, m_adapter);
            World world(service, m_ledger);
            const CComPtr<IWbemServices> services = service.Connect();
            std::deque<Writer> writers;
            KilledAccounts killed;
            killed.reserve(KillHbas);
            Perform(world, services, writers, killed);

            MakeMemoryFlaky(0, 0);
            OrlFailBstrAllocation(0);
            m_mischief.Pause();
            service.Own().Workers().Stop();
            world.CheckSinks();
            for (const Writer& writer : writers)
                CheckAccount(m_ledger, *services, writer.Known());
            for (const Account& account : killed)
            {
                CheckAccount(m_ledger, *services, account);
                m_ledger.Add(Ledger::Promises, account.Promises());
            }
        }
        SetErrorInfo(0, nullptr);
        if (ModuleReferences() != 0)
            m_ledger.Wrong(std::to_string(ModuleReferences()) + " objects are left behind");
        if (!HasMetAll(m_ledger))
            m_ledger.Wrong("the run met too little to show anything");
    }

    const Ledger& Result() const { return m_ledger; }

private:
    void Perform(World& world, const CComPtr<IWbemServices>& services, std::deque<Writer>& writers,
                 KilledAccounts& killed)
    {
        Stage stage(m_ledger, m_options.seed);
        for (int i = 0; i < 2; ++i)
        {
            stage.Enter(MakeReader(world, services));
            stage.Enter(MakeRefuser(world, services));
            stage.Enter(MakeDeserter(world, services));
        }
        for (std::size_t i = 0; i < WorkHbas; ++i)
        {
            Writer& writer = writers.emplace_back(m_ledger, services, WorkHba(i));
            stage.Enter({"writer", [&writer](Dice& dice) { writer.Step(dice); }});
        }
        stage.Enter(MakeKiller(world, m_inventory, m_options.seed, killed));
        stage.Enter({"saboteur", [saboteur = Saboteur(m_options.seed)](Dice& dice) mutable { saboteur.Step(dice); }});

        const Clock::time_point begin = Clock::now();
        const Clock::time_point end = begin + std::chrono::seconds(m_options.seconds);
        stage.Begin();
        // A slow machine gets more time, within bounds, to show something at all.
        while (Clock::now() < end || (!HasMetAll(m_ledger) && Clock::now() < end + LongestAnswer))
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            stage.Watch();
        }
        stage.Stop();
    }

    const RunOptions m_options;
    const std::filesystem::path m_inventory;
    Ledger m_ledger;
    const Agents m_agents;
    Mischief m_mischief{m_options.seed, m_ledger};
    MischievousAgent m_fcoe{*m_agents.fcoe, m_mischief, m_ledger};
    MischievousAdapterAgent m_adapter{*m_agents.adapter, m_mischief, m_ledger};
};

} // namespace

int RunStress(const RunOptions& options)
{
    std::printf("stress: seed %llu, %u seconds\n", static_cast<unsigned long long>(options.seed), options.seconds);
    std::fflush(stdout);
    const Sheltered own;
    const TestFolder folder;
    const std::filesystem::path inventory = folder / "san.json";
    WriteInventory(inventory, options.seed);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Run run(options, inventory);
    run.Play();
    CoUninitialize();
    std::printf("%s  %-36s%12llu\n", run.Result().Text().c_str(), "allocations that failed",
                static_cast<unsigned long long>(FlakyFailures()));
    for (const std::string& wrong : run.Result().Wrongs())
        std::printf("WRONG: %s\n", wrong.c_str());
    std::printf("stress: %s\n", run.Result().Wrongs().empty() ? "passed" : "FAILED");
    return run.Result().Wrongs().empty() ? 0 : 1;
}

} // namespace orl::test
