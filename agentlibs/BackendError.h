// How the agents say that something could not be done.
#pragma once

#include <windows.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace orl
{

// Why an operation could not be carried out. Back ends throw it from any operation; the agent that holds the back end
// writes the text to the trace, puts the code into the status record, adds the text as a warning of the error kind
// where the operation has a warning list, and answers false.
class BackendError : public std::exception
{
public:
    // `code` is a Win32 error code, never 0. `text` is for the user: it names the thing, the place and the reason.
    BackendError(ULONG code, std::wstring text)
        : m_code(code), m_text(std::make_shared<const std::wstring>(std::move(text)))
    {
    }

    ULONG Code() const { return m_code; }
    const std::wstring& Text() const { return *m_text; }
    const char* what() const noexcept override { return "the back end could not carry out the operation"; }

private:
    ULONG m_code;
    std::shared_ptr<const std::wstring> m_text; // shared by copies: copying an exception must not throw
};

// An exception that somebody asked for: the only one that leaves an agent, to show what its callers make of it.
class FaultException : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace orl
