// Records of several classes.
#include "tools/orlwmi/format/ResultWriter.h"

#include "tools/orlwmi/Text.h"

#include <unordered_map>
#include <utility>

namespace orl::client
{
namespace
{

class Grouped : public ResultWriter
{
public:
    Grouped(Format format, Output& output) : m_format(format), m_output(output) {}

    void Write(const Record& record) override
    {
        const auto [place, isNew] = m_places.try_emplace(record.className, m_groups.size());
        if (isNew)
        {
            m_groups.emplace_back();
        }
        m_groups[place->second].push_back(record);
    }

    void End() override
    {
        bool isFirst = true;
        for (const auto& group : m_groups)
        {
            m_output.Write((std::exchange(isFirst, false) ? "" : "\n") + Printable(group.front().className) + " (" +
                           std::to_string(group.size()) + ")\n\n");
            const auto writer = MakeResultWriter(m_format, Shape::Many, m_output);
            for (const auto& record : group)
            {
                writer->Write(record);
            }
            writer->End();
        }
    }

private:
    Format m_format;
    Output& m_output;
    std::vector<std::vector<Record>> m_groups;
    std::unordered_map<std::string, size_t> m_places;
};

class Named : public ResultWriter
{
public:
    explicit Named(std::unique_ptr<ResultWriter> writer) : m_writer(std::move(writer)) {}

    void Write(const Record& record) override
    {
        constexpr const char* className = "__CLASS";
        if (Find(record, className) != nullptr)
        {
            m_writer->Write(record);
            return;
        }
        Record named = record;
        named.properties.insert(named.properties.begin(), {className, record.className});
        m_writer->Write(named);
    }

    void End() override { m_writer->End(); }

private:
    std::unique_ptr<ResultWriter> m_writer;
};

} // namespace

std::unique_ptr<ResultWriter> MakeByClassWriter(Format format, Output& output)
{
    switch (format)
    {
    case Format::Json:
    case Format::Csv:
        return std::make_unique<Named>(MakeResultWriter(format, Shape::Many, output));
    case Format::Mof:
        return MakeMofWriter(output);
    case Format::Table:
    case Format::List:
        break;
    }
    return std::make_unique<Grouped>(format, output);
}

} // namespace orl::client
