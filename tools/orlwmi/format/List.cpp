// The list format: one property a line.
#include "tools/orlwmi/format/ResultWriter.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

class ListWriter : public ResultWriter
{
public:
    explicit ListWriter(Output& output) : m_output(output) {}

    void Write(const Record& record) override
    {
        size_t width = 0;
        for (const auto& property : record.properties)
        {
            width = std::max(width, DisplayWidth(Printable(property.name)));
        }
        std::string lines = m_first ? "" : "\n";
        m_first = false;
        for (const auto& [name, value] : record.properties)
        {
            const std::string label = Printable(name);
            const std::string text = DisplayText(value);
            lines += label + std::string(width - DisplayWidth(label), ' ') + " :";
            lines += (text.empty() ? "" : " ") + text + "\n";
        }
        m_output.Write(lines);
    }

private:
    Output& m_output;
    bool m_first = true;
};

} // namespace

std::unique_ptr<ResultWriter> MakeListWriter(Output& output)
{
    return std::make_unique<ListWriter>(output);
}

} // namespace orl::client
