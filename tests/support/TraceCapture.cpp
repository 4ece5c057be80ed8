#include "tests/support/TraceCapture.h"

#include "Common/Src/OrlDebug.h"
#include "tests/support/TestFolder.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace orl::test
{

namespace
{

// The log's file, removed when the program ends.
class LogFile
{
public:
    LogFile() : m_path(UniquePath("trace-"))
    {
        // Level 3 does not ask the registry whether to trace, and the log of this tag lies in Temp whatever the
        // registry says: the test may have one of its own at this moment.
        const EnvironmentSetting temp(L"Temp", m_path.parent_path().wstring().c_str());
        if (g_OrlDebug.Configure(L"Orl2Setp", (L".\\" + m_path.filename().wstring()).c_str(), 3, 0, 0, nullptr) != 0)
            throw std::runtime_error("the trace log could not be opened at " + m_path.string());
    }

    std::string Bytes() const { return BytesOfFile(m_path); }

private:
    std::filesystem::path m_path;
};

const LogFile& Log()
{
    static const LogFile log;
    return log;
}

// The end of a line's head: from here on it is the message's.
constexpr char HeadEnd[] = "\t\t";

} // namespace

TraceCapture::TraceCapture() : m_begin(Log().Bytes().size()) {}

std::vector<std::string> TraceCapture::Lines() const
{
    std::vector<std::string> lines;
    std::istringstream text(Log().Bytes().substr(m_begin));
    for (std::string line; std::getline(text, line);)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> TraceCapture::Messages() const
{
    std::vector<std::string> messages = Lines();
    for (std::string& line : messages)
        line.erase(0, line.find(HeadEnd) + 2);
    return messages;
}

std::vector<std::string> TraceCapture::TieredMessages() const
{
    constexpr char tier[] = "TIER ";
    std::vector<std::string> messages = Lines();
    for (std::string& line : messages)
    {
        line.erase(0, line.find(tier) + sizeof(tier) - 1);
        line.replace(line.find(HeadEnd), 2, " ");
    }
    return messages;
}

} // namespace orl::test
