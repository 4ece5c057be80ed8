// From a result set to the output, in the format that was asked for.
#pragma once

#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Session.h"
#include "tools/orlwmi/ValueNames.h"

namespace orl::client
{

// Prints each object as it comes, or their number with --count. A result that is cut short by a failure is ended as a
// whole document before the failure goes on.
//
// `byClass`: the objects may be of several classes, and show which.
void PrintResults(Results results, const Options& options, Session& session, bool byClass = false);

// Objects as the records that the options ask for: for people, numbers with what they stand for.
class RecordReader
{
public:
    RecordReader(const Options& options, Format format, Session& session);

    [[nodiscard]] Record Read(IWbemClassObject* object);

private:
    const Options& m_options;
    Format m_format;
    bool m_explains;
    ValueNames m_names;
};

} // namespace orl::client
