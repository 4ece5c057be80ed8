// One call of a client while it is under way.
#include "host/Call.h"

#include "host/ProviderCall.h"

namespace orl
{

Call::Call() = default;
Call::~Call() = default;

void Call::Cancel()
{
    Ref<ProviderCall> current;
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_isCancelled, true))
            return;
        current = m_current;
    }
    if (current)
        current->Cancel();
}

bool Call::IsCancelled() const
{
    const std::lock_guard lock(m_mutex);
    return m_isCancelled;
}

bool Call::Begin(const Ref<ProviderCall>& providerCall)
{
    const std::lock_guard lock(m_mutex);
    if (m_isCancelled)
        return false;
    m_current = providerCall;
    return true;
}

void Call::End()
{
    const std::lock_guard lock(m_mutex);
    m_current = {};
}

} // namespace orl
