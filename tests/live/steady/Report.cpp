// What one process was told that asked for every class again and again.
#include "tests/live/steady/Report.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace orl::test
{
namespace
{

std::size_t Total(const std::map<std::string, std::size_t>& events)
{
    std::size_t total = 0;
    for (const auto& [event, times] : events)
        total += times;
    return total;
}

void PrintEach(const char* what, const std::map<std::string, std::size_t>& events)
{
    for (const auto& [event, times] : events)
        std::printf("%s: %zu times %s\n", what, times, event.c_str());
}

} // namespace

void Report::RoundBegins()
{
    m_view.clear();
    m_seen = 0;
}

void Report::Failed(const std::string& call, std::string_view about, HRESULT status)
{
    std::array<char, 16> code{};
    std::snprintf(code.data(), code.size(), "0x%08X", static_cast<unsigned>(status));
    ++m_failures[std::string(code.data()) + " " + call + " " + std::string(about)];
}

void Report::Torn(std::string_view record, const std::string& why)
{
    ++m_torn[std::string(record) + " " + why];
}

// An enumeration may give instances of another class.
void Report::Enumerating(const std::string& className)
{
    m_view += "enumeration of " + className + "\n";
}

void Report::Counted(const std::string& className, std::size_t instances)
{
    Range& range = m_classes[className];
    range.least = std::min(range.least, instances);
    range.most = std::max(range.most, instances);
}

void Report::Saw(std::string_view text)
{
    ++m_seen;
    m_view.append(text) += '\n';
}

void Report::Open(std::size_t files)
{
    if (m_filesFirst == 0)
        m_filesFirst = files;
    m_filesMost = std::max(m_filesMost, files);
    m_filesLast = files;
}

void Report::PrintRound() const
{
    std::printf("round %zu: %zu instances\n", m_rounds, m_seen);
    std::fflush(stdout);
}

void Report::Print() const
{
    std::printf("rounds: %zu\n", m_rounds);
    std::printf("failures: %zu\n", Total(m_failures));
    PrintEach("failure", m_failures);
    std::printf("torn records: %zu\n", Total(m_torn));
    PrintEach("torn", m_torn);
    std::printf("open files: %zu at the begin, %zu at most, %zu at the end\n", m_filesFirst, m_filesMost, m_filesLast);
    for (const auto& [className, range] : m_classes)
        std::printf("instances of %s: %zu to %zu\n", className.c_str(), range.least, range.most);
    std::printf("view\n%s", m_view.c_str());
}

} // namespace orl::test
