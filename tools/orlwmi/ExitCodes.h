// What the client's exit code says. The same list stands in --help.
#pragma once

namespace orl::client
{

enum class ExitCode : int
{
    Done = 0,
    Failed = 1,       // the service refused the request or failed at it
    Usage = 2,        // the command line is wrong; nothing was asked
    NotFound = 3,     // no such object, class, property, method or parameter
    TimedOut = 4,     // --timeout passed
    NoConnection = 5, // no service, or no such namespace
    Unhealthy = 6,    // doctor found something wrong
    NoOutput = 7,     // the output could not be written
    NotDone = 8,      // a method or an adapter answered, and did not do what it was asked
    Interrupted = 130 // Ctrl-C
};

} // namespace orl::client
