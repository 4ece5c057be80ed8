// The result of a call that yields one object, or none.
#include "host/SingleResult.h"

namespace orl
{

HRESULT SingleResult::Deliver(Objects& objects)
{
    const std::lock_guard lock(m_mutex);
    if (!m_object)
        m_object = std::move(objects.front());
    return WBEM_S_NO_ERROR;
}

void SingleResult::Finish(CallStatus status)
{
    const std::lock_guard lock(m_mutex);
    m_status = std::move(status);
    m_isFinished = true;
    m_changed.notify_all();
}

bool SingleResult::Wait(const Deadline& deadline)
{
    std::unique_lock lock(m_mutex);
    const auto isFinished = [&] { return m_isFinished; };
    if (deadline)
        return m_changed.wait_until(lock, *deadline, isFinished);
    m_changed.wait(lock, isFinished);
    return true;
}

} // namespace orl
