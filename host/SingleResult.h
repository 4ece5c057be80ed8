// The result of a call that yields one object, or none.
#pragma once

#include "host/ResultStream.h"
#include "host/Results.h"

#include <condition_variable>
#include <mutex>

namespace orl
{

// Keeps the first object and the status. Thread safe.
class SingleResult final : public ResultSink
{
public:
    HRESULT Deliver(Objects& objects) override;
    void Finish(CallStatus status) override;

    // False when the deadline passes first.
    bool Wait(const Deadline& deadline);
    // After a Wait that was true.
    const CallStatus& Status() const noexcept { return m_status; }
    const CComPtr<ClassObject>& Object() const noexcept { return m_object; }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    CComPtr<ClassObject> m_object;
    CallStatus m_status;
    bool m_isFinished = false;
};

} // namespace orl
