// The round of checks, and how their findings read.
#include "tools/orlwmi/doctor/Doctor.h"

#include "tools/orlwmi/Text.h"
#include "tools/orlwmi/doctor/Checks.h"

#include <algorithm>

namespace orl::client
{
namespace
{

const char* Word(Health health)
{
    switch (health)
    {
    case Health::Right:
        return "ok";
    case Health::Note:
        return "note";
    case Health::Wrong:
        break;
    }
    return "wrong";
}

// The text with each of its lines after the first under the first one's beginning.
std::string Indented(const std::string& text, const std::string& indent)
{
    std::string out;
    for (size_t begin = 0; begin <= text.size();)
    {
        const size_t end = std::min(text.find('\n', begin), text.size());
        out += (begin == 0 ? "" : "\n" + indent) + Printable(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return out;
}

void PrintLines(const Findings& findings, Output& output)
{
    const std::string indent(7, ' ');
    for (const auto& finding : findings)
    {
        const std::string word = Word(finding.health);
        output.Write(word + std::string(indent.size() - word.size(), ' ') + finding.area + " " +
                     Printable(finding.subject) + "\n");
        output.Write(indent + Indented(finding.found, indent) + "\n");
        if (!finding.advice.empty())
        {
            output.Write(indent + "-> " + Indented(finding.advice, indent) + "\n");
        }
    }
    const auto count = [&findings](Health health)
    {
        return std::to_string(std::count_if(findings.begin(), findings.end(),
                                            [health](const Finding& finding) { return finding.health == health; }));
    };
    output.Write("\n" + count(Health::Right) + " ok, " + count(Health::Note) + " to note, " + count(Health::Wrong) +
                 " wrong\n");
}

void PrintRecords(const Findings& findings, Format format, Output& output)
{
    const auto writer = MakeResultWriter(format, Shape::Many, output);
    for (const auto& finding : findings)
    {
        Record record;
        record.properties = {{"State", std::string(Word(finding.health))},
                             {"Area", finding.area},
                             {"Subject", finding.subject},
                             {"Found", finding.found},
                             {"Advice", finding.advice.empty() ? Value() : Value(finding.advice)}};
        writer->Write(record);
    }
    writer->End();
}

} // namespace

void PrintFindings(const Findings& findings, std::optional<Format> format, Output& output)
{
    if (format)
    {
        PrintRecords(findings, *format, output);
    }
    else
    {
        PrintLines(findings, output);
    }
}

ExitCode Verdict(const Findings& findings)
{
    const bool wrong = std::any_of(findings.begin(), findings.end(),
                                   [](const Finding& finding) { return finding.health == Health::Wrong; });
    return wrong ? ExitCode::Unhealthy : ExitCode::Done;
}

ExitCode RunDoctor(const Options& options, Output& output, const Deadline& deadline)
{
    Findings findings;
    try
    {
        CheckRegistry(findings);
        CheckLibraries(findings);
        CheckAgents(findings);
        CheckSchemaFolder(findings);
        CheckService(options, deadline, findings);
        CheckTrace(findings);
    }
    catch (const Failure&)
    {
        PrintFindings(findings, options.format, output);
        throw;
    }
    PrintFindings(findings, options.format, output);
    return Verdict(findings);
}

} // namespace orl::client
