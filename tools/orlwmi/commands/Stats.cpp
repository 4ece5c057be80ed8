// stats: the counters of the adapters, once or again and again.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/AdapterChoice.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/stats/CounterViews.h"

#include <algorithm>
#include <charconv>
#include <thread>

namespace orl::client
{
namespace
{

std::uint64_t ValueOf(const Record& record)
{
    const std::string text = TextOf(record, "Value");
    std::uint64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

Counters Read(const AdapterChoice& choice, const Deadline& deadline, Session& session)
{
    Results results = InstancesOf("Zarn_FCoEStatistics", choice, session);
    Counters counters;
    while (const auto object = results.Next(deadline, session.output))
    {
        session.timing.CountObject();
        const Record record = ReadRecord(object);
        Counter counter;
        counter.deviceId = TextOf(record, "DeviceID");
        counter.statistic = TextOf(record, "Statistic");
        counter.name = TextOf(record, "Name");
        counter.value = ValueOf(record);
        if (choice.Has(counter.deviceId))
        {
            counters.push_back(std::move(counter));
        }
    }
    return counters;
}

// Waits for the time of the next sample. Ctrl-C ends it as it ends a request: by a Failure.
void WaitUntil(CounterRates::Clock::time_point time)
{
    const Deadline none(std::nullopt);
    for (auto now = CounterRates::Clock::now(); now < time; now = CounterRates::Clock::now())
    {
        const auto slice = std::chrono::milliseconds(none.Slice());
        std::this_thread::sleep_for(std::min<CounterRates::Clock::duration>(slice, time - now));
    }
}

} // namespace

void RunStats(const Options& options, Session& session)
{
    const AdapterChoice choice(options.operands, session);
    const auto view = MakeCounterView({options.format.value_or(Format::Table), options.watch.has_value(), options.all},
                                      session.output);
    CounterRates rates;
    auto next = CounterRates::Clock::now();
    for (unsigned taken = 0;;)
    {
        // The time that a request may take is that of one sample, not of the watch.
        const Deadline deadline(options.timeout);
        const auto time = CounterRates::Clock::now();
        Counters sample = Read(choice, deadline, session);
        rates.Add(sample, time);
        view->Write(sample, std::chrono::system_clock::now());
        if (!options.watch || ++taken == options.samples)
        {
            return;
        }
        session.output.Flush();
        // A sample that took longer than the interval makes the next one late, not many at once.
        next = std::max(next + *options.watch, CounterRates::Clock::now());
        WaitUntil(next);
    }
}

} // namespace orl::client
