// Tables for people, lines for programs.
#include "tools/orlwmi/stats/CounterViews.h"

#include <array>
#include <charconv>
#include <ctime>

namespace orl::client
{
namespace
{

std::string Padded(long long number, size_t digits)
{
    std::string text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

// "2026-11-21T12:50:00Z"
std::string TimeText(std::chrono::system_clock::time_point time)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const auto days = std::chrono::floor<std::chrono::days>(seconds);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss clock(seconds - days);
    return Padded(int(date.year()), 4) + "-" + Padded(unsigned(date.month()), 2) + "-" +
           Padded(unsigned(date.day()), 2) + "T" + Padded(clock.hours().count(), 2) + ":" +
           Padded(clock.minutes().count(), 2) + ":" + Padded(clock.seconds().count(), 2) + "Z";
}

Value RateValue(const std::optional<double>& perSecond)
{
    if (!perSecond)
    {
        return {};
    }
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), *perSecond, std::chars_format::fixed, 2);
    return Number{std::string(digits.data(), end.ptr)};
}

class TableView : public CounterView
{
public:
    TableView(const CounterStyle& style, Output& output) : m_style(style), m_output(output) {}

    void Write(const Counters& sample, std::chrono::system_clock::time_point taken) override
    {
        m_output.Write(m_first ? "" : "\n");
        if (m_style.watching)
        {
            m_output.Write(TimeText(taken) + "\n");
        }
        const auto writer = MakeTableWriter(m_output);
        size_t hidden = 0;
        for (const auto& counter : sample)
        {
            if (counter.value == 0 && !m_style.all)
            {
                ++hidden;
                continue;
            }
            writer->Write(Row(counter));
        }
        writer->End();
        m_first = false;
        if (hidden != 0)
        {
            m_output.Write((hidden < sample.size() ? "\n" : "") + std::to_string(hidden) +
                           (hidden == 1 ? " counter stands" : " counters stand") + " at 0; --all shows them\n");
        }
    }

private:
    Record Row(const Counter& counter) const
    {
        Record row;
        row.properties = {
            {"Adapter", counter.deviceId}, {"Counter", counter.name}, {"Value", Number{std::to_string(counter.value)}}};
        if (!m_first)
        {
            row.properties.push_back({"Per second", RateValue(counter.perSecond)});
        }
        row.properties.push_back({"Statistic", counter.statistic});
        return row;
    }

    CounterStyle m_style;
    Output& m_output;
    bool m_first = true;
};

Record DataRow(const Counter& counter, bool watching, std::chrono::system_clock::time_point taken)
{
    Record row;
    if (watching)
    {
        row.properties.push_back({"Time", TimeText(taken)});
    }
    row.properties.push_back({"DeviceID", counter.deviceId});
    row.properties.push_back({"Statistic", counter.statistic});
    row.properties.push_back({"Name", counter.name});
    row.properties.push_back({"Value", Number{std::to_string(counter.value)}});
    if (watching)
    {
        row.properties.push_back({"PerSecond", RateValue(counter.perSecond)});
    }
    return row;
}

class CsvView : public CounterView
{
public:
    CsvView(const CounterStyle& style, Output& output) : m_watching(style.watching), m_writer(MakeCsvWriter(output)) {}

    void Write(const Counters& sample, std::chrono::system_clock::time_point taken) override
    {
        for (const auto& counter : sample)
        {
            m_writer->Write(DataRow(counter, m_watching, taken));
        }
    }

private:
    bool m_watching;
    std::unique_ptr<ResultWriter> m_writer;
};

class JsonLinesView : public CounterView
{
public:
    JsonLinesView(const CounterStyle& style, Output& output) : m_watching(style.watching), m_output(output) {}

    void Write(const Counters& sample, std::chrono::system_clock::time_point taken) override
    {
        for (const auto& counter : sample)
        {
            std::string line;
            AppendJson(line, DataRow(counter, m_watching, taken), OneLine);
            m_output.Write(line + "\n");
        }
    }

private:
    bool m_watching;
    Output& m_output;
};

} // namespace

std::unique_ptr<CounterView> MakeCounterView(const CounterStyle& style, Output& output)
{
    switch (style.format)
    {
    case Format::Json:
        return std::make_unique<JsonLinesView>(style, output);
    case Format::Csv:
        return std::make_unique<CsvView>(style, output);
    default:
        return std::make_unique<TableView>(style, output);
    }
}

} // namespace orl::client
