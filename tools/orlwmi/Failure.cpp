// How a failure reads on standard error.
#include "tools/orlwmi/Failure.h"

#include "tools/orlwmi/HresultNames.h"
#include "tools/orlwmi/Text.h"

#include <wbemcli.h>

namespace orl::client
{

ExitCode ExitCodeOf(HRESULT status)
{
    switch (static_cast<ULONG>(status))
    {
    case static_cast<ULONG>(WBEM_E_NOT_FOUND):
    case static_cast<ULONG>(WBEM_E_INVALID_CLASS):
        return ExitCode::NotFound;
    case static_cast<ULONG>(WBEM_S_TIMEDOUT):
    case static_cast<ULONG>(WBEM_E_TIMED_OUT):
        return ExitCode::TimedOut;
    case static_cast<ULONG>(WBEM_E_INVALID_NAMESPACE):
        return ExitCode::NoConnection;
    default:
        return ExitCode::Failed;
    }
}

Failure::Failure(std::string what, HRESULT status, ExtendedStatus extended)
    : Failure(ExitCodeOf(status), std::move(what), status, std::move(extended))
{
}

Failure::Failure(ExitCode exitCode, std::string what, HRESULT status, ExtendedStatus extended)
    : m_exitCode(exitCode), m_status(status), m_message(std::move(what) + ": " + DescribeHresult(status)),
      m_extended(std::move(extended))
{
}

std::string Failure::Lines() const
{
    std::string lines = "orlwmi: " + Printable(m_message) + "\n";
    for (const auto& [name, text] : m_extended)
    {
        lines += "  " + Printable(name) + ": " + Printable(text) + "\n";
    }
    return lines;
}

} // namespace orl::client
