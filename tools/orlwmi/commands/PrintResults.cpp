// The loop behind enum and query.
#include "tools/orlwmi/commands/PrintResults.h"

#include "tools/orlwmi/Objects.h"

namespace orl::client
{
namespace
{

void PrintCount(Results& results, Session& session)
{
    unsigned long long count = 0;
    while (results.Next(session.deadline, session.output))
    {
        ++count;
        session.timing.CountObject();
    }
    session.output.Write(std::to_string(count) + "\n");
}

} // namespace

Record ReadAsAsked(IWbemClassObject* object, const Options& options, Format format)
{
    if (format == Format::Mof)
    {
        return ReadMof(object);
    }
    return options.select.empty() ? ReadRecord(object) : ReadProperties(object, options.select);
}

void PrintResults(Results results, const Options& options, Session& session)
{
    if (options.count)
    {
        PrintCount(results, session);
        return;
    }
    const Format format = options.format.value_or(Format::Table);
    const auto writer = MakeResultWriter(format, Shape::Many, session.output);
    try
    {
        while (const auto object = results.Next(session.deadline, session.output))
        {
            session.timing.CountObject();
            writer->Write(ReadAsAsked(object, options, format));
        }
    }
    catch (const Failure&)
    {
        writer->End();
        throw;
    }
    writer->End();
}

} // namespace orl::client
