// classes: what there is to ask for.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Qualifiers.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

bool IsSystemClass(const Record& record)
{
    return record.className.compare(0, 2, "__") == 0;
}

Record Describe(IWbemClassObject* definition)
{
    Record record;
    record.className = ReadText(definition, L"__CLASS");
    const std::string superclass = ReadText(definition, L"__SUPERCLASS");
    record.properties = {{"Class", record.className},
                         {"Superclass", superclass.empty() ? Value() : Value(superclass)},
                         {"Provider", ClassQualifier(definition, "provider")}};
    return record;
}

// Without case, as class names are compared; the names themselves decide between two that only differ in case.
bool ComesBefore(const Record& left, const Record& right)
{
    return Lower(left.className) < Lower(right.className);
}

} // namespace

void RunClasses(const Options& options, Session& session)
{
    std::vector<Record> classes;
    Results results = Results::Classes(session.services);
    while (const auto definition = results.Next(session.deadline, session.output))
    {
        Record record = Describe(definition);
        if (options.all || !IsSystemClass(record))
        {
            session.timing.CountObject();
            classes.push_back(std::move(record));
        }
    }
    if (options.count)
    {
        session.output.Write(std::to_string(classes.size()) + "\n");
        return;
    }
    std::stable_sort(classes.begin(), classes.end(), ComesBefore);
    const auto writer = MakeResultWriter(options.format.value_or(Format::Table), Shape::Many, session.output);
    for (const auto& record : classes)
    {
        writer->Write(record);
    }
    writer->End();
}

} // namespace orl::client
