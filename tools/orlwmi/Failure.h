// Failure: why the client could not do what it was asked, in the words that the user will read.
#pragma once

#include "tools/orlwmi/ExitCodes.h"

#include <windows.h>

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace orl::client
{

// What is told beside a message, as name and text, in the order in which it is printed: for a failed call, what the
// service said about it.
using ExtendedStatus = std::vector<std::pair<std::string, std::string>>;

class Failure : public std::exception
{
public:
    // One of the client's own, with what it tells beside it.
    Failure(ExitCode exitCode, std::string message, ExtendedStatus extended = {})
        : m_exitCode(exitCode), m_message(std::move(message)), m_extended(std::move(extended))
    {
    }

    // A failed call: `what` says what was attempted ("cannot get X").
    Failure(std::string what, HRESULT status, ExtendedStatus extended);

    // The same where the cause decides the exit code less than the place does: nothing works without a connection.
    Failure(ExitCode exitCode, std::string what, HRESULT status, ExtendedStatus extended);

    [[nodiscard]] ExitCode Code() const { return m_exitCode; }
    [[nodiscard]] HRESULT Status() const { return m_status; }
    [[nodiscard]] const char* what() const noexcept override { return m_message.c_str(); }

    // The lines for standard error, each ended by a line feed: the message behind the program's name, then the extended
    // status. Nothing in them can steer a terminal.
    [[nodiscard]] std::string Lines() const;

private:
    ExitCode m_exitCode;
    HRESULT m_status = S_OK;
    std::string m_message;
    ExtendedStatus m_extended;
};

[[nodiscard]] ExitCode ExitCodeOf(HRESULT status);

} // namespace orl::client
