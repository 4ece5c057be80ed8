// The MOF format: the texts that the service makes of its objects.
#include "tools/orlwmi/format/ResultWriter.h"

#include "tools/orlwmi/Text.h"

namespace orl::client
{
namespace
{

// What a terminal would obey stands, in a text constant, as MOF's own escape, so that the text means the same and a
// terminal obeys none of it. Lines end with a line feed on every platform.
void AppendText(std::string& out, std::string_view mof)
{
    while (!mof.empty())
    {
        const char32_t c = TakeCodePoint(mof);
        if (c == U'\r')
        {
            continue;
        }
        if (SteersTerminal(c) && c != U'\n' && c != U'\t')
        {
            out += "\\x" + Hex(c, 4);
        }
        else
        {
            AppendUtf8(out, c);
        }
    }
}

class MofWriter : public ResultWriter
{
public:
    explicit MofWriter(Output& output) : m_output(output) {}

    void Write(const Record& record) override
    {
        const auto first = record.mof.find_first_not_of("\r\n");
        const auto last = record.mof.find_last_not_of("\r\n \t");
        if (first == std::string::npos)
        {
            return;
        }
        std::string text = m_first ? "" : "\n";
        m_first = false;
        AppendText(text, std::string_view(record.mof).substr(first, last + 1 - first));
        m_output.Write(text + "\n");
    }

private:
    Output& m_output;
    bool m_first = true;
};

} // namespace

std::unique_ptr<ResultWriter> MakeMofWriter(Output& output)
{
    return std::make_unique<MofWriter>(output);
}

} // namespace orl::client
