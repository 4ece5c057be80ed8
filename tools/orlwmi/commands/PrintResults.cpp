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

RecordReader::RecordReader(const Options& options, Format format, Session& session)
    : m_options(options), m_format(format),
      m_explains(!options.raw && (format == Format::Table || format == Format::List)), m_names(session)
{
}

Record RecordReader::Read(IWbemClassObject* object)
{
    if (m_format == Format::Mof)
    {
        return ReadMof(object);
    }
    Record record = m_options.select.empty() ? ReadRecord(object) : ReadProperties(object, m_options.select);
    if (m_explains)
    {
        m_names.Explain(record);
    }
    return record;
}

void PrintResults(Results results, const Options& options, Session& session, bool byClass)
{
    if (options.count)
    {
        PrintCount(results, session);
        return;
    }
    const Format format = options.format.value_or(Format::Table);
    const auto writer =
        byClass ? MakeByClassWriter(format, session.output) : MakeResultWriter(format, Shape::Many, session.output);
    RecordReader reader(options, format, session);
    try
    {
        while (const auto object = results.Next(session.deadline, session.output))
        {
            session.timing.CountObject();
            writer->Write(reader.Read(object));
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
