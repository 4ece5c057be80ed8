// What a module traces while a test runs.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orl::test
{

// Turns the program's own trace log (g_OrlDebug) on, once, into a file below the build's folder, and reads what was
// written since this object was made. The program defines the log with ORL_MODULE_TRACE_OFF.
class TraceCapture
{
public:
    TraceCapture();

    // The messages in order, without the heads of their lines.
    std::vector<std::string> Messages() const;
    // The messages with the tier that their line shows: "2 ENTRY:  name".
    std::vector<std::string> TieredMessages() const;

private:
    std::vector<std::string> Lines() const;

    std::size_t m_begin;
};

} // namespace orl::test
