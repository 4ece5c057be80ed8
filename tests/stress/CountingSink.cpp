// A client's sink that holds the service to its word.
#include "tests/stress/CountingSink.h"

#include "tests/common/FailingNew.h"

namespace orl::test
{

void CountingSink::Await()
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, LongestAnswer, [&] { return m_statuses != 0; }))
        m_ledger.Wrong("a call with a sink was not answered");
}

void CountingSink::Check()
{
    onObject = nullptr;
    const std::lock_guard lock(m_mutex);
    if (m_statuses != (m_isOwed ? 1U : 0U))
        m_ledger.Wrong("a sink had " + std::to_string(m_statuses) + " statuses; the call was " +
                       (m_isOwed ? "accepted" : "refused"));
    AddRef();
    if (const ULONG others = Release(); others != 1)
        m_ledger.Wrong("a sink is still held " + std::to_string(others - 1) + " times");
}

HRESULT CountingSink::Indicate(LONG count, IWbemClassObject** objects)
{
    const Sheltered own;
    std::size_t number = 0;
    {
        const std::lock_guard lock(m_mutex);
        if (m_statuses != 0)
            m_ledger.Wrong("an object came after the status");
        number = m_objects + 1;
        m_objects += static_cast<std::size_t>(count);
    }
    for (LONG i = 0; i < count; ++i, ++number)
    {
        if (objects[i] == nullptr)
            m_ledger.Wrong("a null object came");
        m_ledger.Add(Ledger::Objects);
        if (const HRESULT answer = onObject ? onObject(number) : WBEM_S_NO_ERROR; FAILED(answer))
            return answer;
    }
    return WBEM_S_NO_ERROR;
}

HRESULT CountingSink::SetStatus(LONG flags, HRESULT, BSTR, IWbemClassObject*)
{
    if (flags != WBEM_STATUS_COMPLETE)
        return WBEM_S_NO_ERROR;
    const Sheltered own;
    const std::lock_guard lock(m_mutex);
    if (++m_statuses > 1)
        m_ledger.Wrong("a second status came");
    m_changed.notify_all();
    return WBEM_S_NO_ERROR;
}

} // namespace orl::test
