// Deadline: how long a request may take, and whether the user still wants it.
#pragma once

#include "tools/orlwmi/Failure.h"

#include <windows.h>
#include <unknwn.h>

#include <chrono>
#include <functional>
#include <optional>

namespace orl::client
{

class Deadline
{
public:
    using Clock = std::chrono::steady_clock;

    // Without a timeout only the user ends the wait.
    explicit Deadline(std::optional<std::chrono::milliseconds> timeout);

    // The milliseconds that the next blocking call may take: short, so that Ctrl-C is seen soon. Throws Failure with
    // ExitCode::TimedOut or ExitCode::Interrupted when there is no more waiting.
    [[nodiscard]] LONG Slice() const;

    // Runs work that cannot be told to come back on a thread of its own and waits for it as long as the deadline lets.
    // Work that is given up on goes on until it ends by itself: it must own all that it touches.
    void Await(std::function<void()> work) const;

private:
    std::optional<std::chrono::milliseconds> m_timeout;
    Clock::time_point m_end;
};

// Gives up an object whose release may block, because a call behind it is stuck. The object is released on a thread of
// its own, which gets a moment to finish.
void Abandon(IUnknown* object);

} // namespace orl::client
