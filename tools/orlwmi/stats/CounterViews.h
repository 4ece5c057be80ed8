// Samples of counters on their way to the output.
#pragma once

#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/format/ResultWriter.h"
#include "tools/orlwmi/stats/Counters.h"

#include <chrono>
#include <memory>

namespace orl::client
{

class CounterView
{
public:
    CounterView() = default;
    CounterView(const CounterView&) = delete;
    CounterView& operator=(const CounterView&) = delete;
    virtual ~CounterView() = default;

    virtual void Write(const Counters& sample, std::chrono::system_clock::time_point taken) = 0;
};

// How samples are shown. `watching`: there is more than one, and they tell times and rates.
struct CounterStyle
{
    Format format = Format::Table;
    bool watching = false;
    bool all = false; // counters that stand at 0 too; the formats for programs always have them
};

// Table: one table a sample. JSON: one object a line. CSV: one header, then one line a counter.
[[nodiscard]] std::unique_ptr<CounterView> MakeCounterView(const CounterStyle& style, Output& output);

} // namespace orl::client
