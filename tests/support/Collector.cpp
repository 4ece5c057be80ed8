// What a client of a test brings to an asynchronous call.
#include "tests/support/Collector.h"

#include <gtest/gtest.h>

#include <chrono>

namespace orl::test
{

Collector::Status Collector::Await()
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, std::chrono::seconds(60), [&] { return !m_statuses.empty(); }))
    {
        ADD_FAILURE() << "no SetStatus within a minute";
        return {};
    }
    return m_statuses.front();
}

bool Collector::HasStatus() const
{
    return Statuses() > 0;
}

std::size_t Collector::Count() const
{
    const std::lock_guard lock(m_mutex);
    return m_objects.size();
}

std::size_t Collector::Statuses() const
{
    const std::lock_guard lock(m_mutex);
    return m_statuses.size();
}

std::vector<CComPtr<IWbemClassObject>> Collector::Objects() const
{
    const std::lock_guard lock(m_mutex);
    return m_objects;
}

HRESULT Collector::Indicate(LONG count, IWbemClassObject** objects)
{
    for (LONG i = 0; i < count; ++i)
    {
        std::size_t number = 0;
        {
            const std::lock_guard lock(m_mutex);
            m_objects.emplace_back(objects[i]);
            number = m_objects.size();
        }
        if (const HRESULT answer = onObject ? onObject(number) : S_OK; FAILED(answer))
            return answer;
    }
    return WBEM_S_NO_ERROR;
}

HRESULT Collector::SetStatus(LONG, HRESULT code, BSTR text, IWbemClassObject* object)
{
    const std::lock_guard lock(m_mutex);
    m_statuses.push_back({code, text ? std::wstring(text, SysStringLen(text)) : std::wstring(), object});
    m_changed.notify_all();
    return WBEM_S_NO_ERROR;
}

void Gate::Open()
{
    const std::lock_guard lock(m_mutex);
    m_isOpen = true;
    m_changed.notify_all();
}

void Gate::Pass()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_isOpen; });
}

} // namespace orl::test
