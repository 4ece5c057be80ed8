// The CSV format (RFC 4180): lines end in CR LF, fields with special characters are quoted.
#include "tools/orlwmi/format/ResultWriter.h"

namespace orl::client
{
namespace
{

std::string Field(const std::string& text)
{
    if (!text.empty() && text.find_first_of(",\"\r\n") == std::string::npos)
    {
        return text;
    }
    std::string field = "\"";
    for (const char c : text)
    {
        field += c == '"' ? "\"\"" : std::string(1, c);
    }
    return field + "\"";
}

std::string Field(const Value& value)
{
    if (value.IsNull())
    {
        return {};
    }
    if (const auto* text = std::get_if<std::string>(&value))
    {
        return Field(*text);
    }
    std::string json;
    AppendJson(json, value, OneLine);
    return Field(json);
}

class CsvWriter : public ResultWriter
{
public:
    explicit CsvWriter(Output& output) : m_output(output) {}

    void Write(const Record& record) override
    {
        if (!m_open || !SameColumns(m_names, record))
        {
            Begin(record);
        }
        std::string line;
        for (const auto& property : record.properties)
        {
            line += (&property == &record.properties.front() ? "" : ",") + Field(property.value);
        }
        m_output.Write(line + "\r\n");
    }

private:
    void Begin(const Record& record)
    {
        std::string header = m_open ? "\r\n" : "";
        m_open = true;
        m_names.clear();
        for (const auto& property : record.properties)
        {
            header += (m_names.empty() ? "" : ",") + Field(property.name);
            m_names.push_back(property.name);
        }
        m_output.Write(header + "\r\n");
    }

    Output& m_output;
    std::vector<std::string> m_names;
    bool m_open = false;
};

} // namespace

std::unique_ptr<ResultWriter> MakeCsvWriter(Output& output)
{
    return std::make_unique<CsvWriter>(output);
}

} // namespace orl::client
