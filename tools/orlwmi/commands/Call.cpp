// call: a method of an object or class.
#include "tools/orlwmi/commands/Commands.h"

#include "tools/orlwmi/Actions.h"
#include "tools/orlwmi/InstancePath.h"
#include "tools/orlwmi/Method.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Warnings.h"

#include <algorithm>

namespace orl::client
{
namespace
{

// What a method says of itself: 0 when it worked. A method that returns nothing, or something that is no number, has no
// such answer.
bool ReturnsFailure(const Record& out)
{
    const Value* value = Find(out, "ReturnValue");
    const auto* number = value == nullptr ? nullptr : std::get_if<Number>(value);
    return number != nullptr && number->literal != "0";
}

// Formats that are read line by line show messages on standard error; in the others they stay where they are.
bool ShowsWarningsApart(Format format)
{
    return format == Format::List || format == Format::Table;
}

void Print(IWbemClassObject* object, const Record& out, Format format, Session& session)
{
    const auto writer = MakeResultWriter(format, Shape::One, session.output);
    writer->Write(format == Format::Mof ? ReadMof(object) : ShowsWarningsApart(format) ? WithoutWarnings(out) : out);
    writer->End();
}

} // namespace

ExitCode RunCall(const Options& options, Session& session)
{
    const auto definition = GetObjectAt(session.services, ClassPathOf(options.subject), session.deadline);
    const Method method = FindMethod(definition, options.method);
    const auto in = MakeInParameters(method, options.parameters);
    const auto object = CallMethod(session.services, options.subject, method.name, in, session.deadline);
    session.timing.CountObject();
    if (!object)
    {
        return ExitCode::Done;
    }
    const Format format = options.format.value_or(Format::List);
    const Record out = ReadRecord(object);
    Print(object, out, format, session);
    session.output.Flush();
    const auto warnings = WarningsIn(out);
    if (ShowsWarningsApart(format))
    {
        for (const auto& warning : warnings)
        {
            session.errors(LineOf(warning));
        }
    }
    const bool failed = ReturnsFailure(out) || std::any_of(warnings.begin(), warnings.end(),
                                                           [](const Warning& warning) { return warning.isError; });
    return failed ? ExitCode::NotDone : ExitCode::Done;
}

} // namespace orl::client
