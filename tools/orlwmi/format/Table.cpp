// The table format.
#include "tools/orlwmi/format/ResultWriter.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>
#include <utility>

namespace orl::client
{
namespace
{

constexpr size_t SampleRows = 500;

struct Column
{
    std::string name;
    size_t width = 0;
    bool hasNumbers = false;
    bool hasOthers = false; // numbers with a meaning too; nulls are neither

    [[nodiscard]] bool IsRightAligned() const { return hasNumbers && !hasOthers; }
};

struct Cell
{
    std::string text;
    size_t width = 0;
};

using Row = std::vector<Cell>;

Cell MakeCell(std::string text)
{
    const size_t width = DisplayWidth(text);
    return {std::move(text), width};
}

class TableWriter : public ResultWriter
{
public:
    explicit TableWriter(Output& output) : m_output(output) {}

    void Write(const Record& record) override
    {
        if (!m_open || !SameColumns(m_names, record))
        {
            Begin(record);
        }
        Row row;
        for (size_t i = 0; i < record.properties.size(); ++i)
        {
            row.push_back(MakeCell(DisplayText(record.properties[i].value)));
            Measure(m_columns[i], record.properties[i].value, row.back());
        }
        if (!m_sampling)
        {
            WriteRow(row);
            return;
        }
        m_sample.push_back(std::move(row));
        if (m_sample.size() == SampleRows)
        {
            EndSample();
        }
    }

    void End() override { EndSample(); }

private:
    void Begin(const Record& record)
    {
        EndSample();
        if (m_open)
        {
            m_output.Write("\n");
        }
        m_open = true;
        m_sampling = true;
        m_names.clear();
        m_columns.clear();
        for (const auto& property : record.properties)
        {
            m_names.push_back(property.name);
            std::string label = Printable(property.name);
            const size_t width = DisplayWidth(label);
            m_columns.push_back({std::move(label), width});
        }
    }

    void Measure(Column& column, const Value& value, const Cell& cell) const
    {
        if (m_sampling)
        {
            column.width = std::max(column.width, cell.width);
            const auto* number = std::get_if<Number>(&value);
            const bool isBare = number != nullptr && number->meaning.empty();
            column.hasNumbers = column.hasNumbers || isBare;
            column.hasOthers = column.hasOthers || !(isBare || value.IsNull());
        }
    }

    void EndSample()
    {
        if (!std::exchange(m_sampling, false))
        {
            return;
        }
        Row header;
        Row rule;
        for (const auto& column : m_columns)
        {
            header.push_back(MakeCell(column.name));
            rule.push_back(MakeCell(std::string(column.width, '-')));
        }
        WriteRow(header);
        WriteRow(rule);
        for (const auto& row : m_sample)
        {
            WriteRow(row);
        }
        m_sample.clear();
    }

    void WriteRow(const Row& row)
    {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i)
        {
            const std::string blanks(m_columns[i].width - std::min(m_columns[i].width, row[i].width), ' ');
            line += i == 0 ? "" : "  ";
            line += m_columns[i].IsRightAligned() ? blanks + row[i].text : row[i].text + blanks;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        m_output.Write(line + "\n");
    }

    Output& m_output;
    std::vector<std::string> m_names;
    std::vector<Column> m_columns;
    std::vector<Row> m_sample;
    bool m_open = false;
    bool m_sampling = false;
};

} // namespace

std::unique_ptr<ResultWriter> MakeTableWriter(Output& output)
{
    return std::make_unique<TableWriter>(output);
}

} // namespace orl::client
