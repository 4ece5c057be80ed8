// Buffering in front of standard output.
#include "tools/orlwmi/Output.h"

#include "tools/orlwmi/ExitCodes.h"
#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Platform.h"

#include <utility>

namespace orl::client
{

void Output::Write(std::string_view bytes)
{
    m_held += bytes;
    if (m_held.size() >= BufferSize)
    {
        Flush();
    }
}

void Output::Flush()
{
    // Taken first: bytes that could not be sent are not sent again while the program winds up.
    const std::string bytes = std::exchange(m_held, {});
    if (!bytes.empty())
    {
        Send(bytes);
    }
}

void StandardOutput::Send(std::string_view bytes)
{
    switch (WriteStandardOutput(bytes))
    {
    case WriteResult::Written:
        return;
    case WriteResult::ReceiverGone:
        m_broken = true;
        throw ReceiverGone();
    case WriteResult::Failed:
        break;
    }
    m_broken = true;
    throw Failure(ExitCode::NoOutput, "the output could not be written: " + LastWriteError());
}

} // namespace orl::client
