// What tests of the trace log stand on.

#include "tests/common/TraceTest.h"

#include "Common/Src/ModuleTrace.h"

#include <cstdio>
#include <fstream>
#include <new>
#include <sstream>

ORL_MODULE_TRACE_OFF;

namespace orl::test
{

TraceTest::TraceTest() : m_clock(ReplaceTraceClock(StoppedClock))
{
    m_registry.SetText(ProductKey, L"InstalledDir", m_folder.Text());
    RestartLog();
}

TraceTest::~TraceTest()
{
    RestartLog();
    ReplaceTraceClock(m_clock);
}

void TraceTest::RestartLog()
{
    g_OrlDebug.~COrlDebug();
    new (&g_OrlDebug) COrlDebug;
}

void TraceTest::StartLog(ULONG level, const wchar_t* tag, ULONG maxFileSize)
{
    RestartLog();
    ASSERT_EQ(0, g_OrlDebug.Configure(tag, L".\\Test.txt", level, 0, maxFileSize, nullptr));
}

std::vector<std::string> TraceTest::Lines() const
{
    return SplitLines(BytesOfFile(LogFile()));
}

std::vector<std::string> TraceTest::Messages() const
{
    std::vector<std::string> messages;
    for (const std::string& line : Lines())
    {
        const size_t end = line.find("\t\t");
        messages.push_back(end == std::string::npos ? "no head: " + line : line.substr(end + 2));
    }
    return messages;
}

std::vector<std::string> TraceTest::TiersAndMessages() const
{
    std::vector<std::string> result;
    for (const std::string& line : Lines())
    {
        const size_t tier = line.find("\tTIER ");
        const size_t end = line.find("\t\t");
        const size_t number = tier + 6;
        result.push_back(tier == std::string::npos || end == std::string::npos
                             ? "no head: " + line
                             : line.substr(number, end - number) + " " + line.substr(end + 2));
    }
    return result;
}

TraceTime StoppedClock()
{
    TraceTime time = {};
    time.local.wHour = 7;
    time.local.wMinute = 8;
    time.local.wSecond = 9;
    time.local.wMilliseconds = 10;
    time.counter.QuadPart = 0x1234ABCDEF;
    return time;
}

std::string HeadOf(const std::string& tag, int tier)
{
    return tag + "\tPID:" + Hex(GetCurrentProcessId()) + "\tTID:" + Hex(GetCurrentThreadId()) +
           "\t07:08:09.010\t(1234ABCDEF)\tTIER " + std::to_string(tier) + "\t\t";
}

std::string Hex(unsigned long long value)
{
    std::ostringstream text;
    text << std::hex << value;
    return text.str();
}

std::string LineEnd()
{
    const std::filesystem::path file = UniquePath("line-end-");
    std::ofstream(file) << '\n';
    const std::string end = BytesOfFile(file);
    std::filesystem::remove(file);
    return end;
}

std::vector<std::string> SplitLines(const std::string& bytes)
{
    const std::string end = LineEnd();
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < bytes.size())
    {
        const size_t found = std::min(bytes.find(end, start), bytes.size());
        lines.push_back(bytes.substr(start, found - start));
        start = found + end.size();
    }
    return lines;
}

} // namespace orl::test
