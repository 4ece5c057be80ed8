// Threads for calls that must not hold up their caller.
#include "host/WorkerPool.h"

#include "host/CallStatus.h"

#include <windows.h>
#include <objbase.h>

#include <chrono>
#include <string>

namespace orl
{
namespace
{

constexpr std::chrono::seconds kIdleTime{30};

void JoinAll(std::list<std::thread>& threads)
{
    for (std::thread& thread : threads)
        thread.join();
    threads.clear();
}

} // namespace

WorkerPool::~WorkerPool()
{
    Stop();
}

void WorkerPool::Run(std::function<void()> task)
{
    std::list<std::thread> ended;
    {
        const std::lock_guard lock(m_mutex);
        if (m_running + m_waiting.size() >= kMostTasks)
            throw CallFailure(WBEM_E_SERVER_TOO_BUSY,
                              std::to_wstring(kMostTasks) + L" calls are under way; no more are taken until one ends");
        m_waiting.push_back(std::move(task));
        ended.swap(m_ended);
        if (m_waiting.size() > m_idle)
        {
            auto self = m_threads.end();
            try
            {
                self = m_threads.emplace(m_threads.end());
                *self = std::thread(&WorkerPool::Work, this, self);
            }
            catch (...)
            {
                if (self != m_threads.end())
                    m_threads.erase(self);
                m_waiting.pop_back();
                m_ended.splice(m_ended.end(), ended);
                throw;
            }
        }
    }
    m_changed.notify_one();
    JoinAll(ended);
}

void WorkerPool::Work(Threads::iterator self)
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    {
        std::unique_lock lock(m_mutex);
        for (;;)
        {
            ++m_idle;
            const bool isWanted = m_changed.wait_for(lock, kIdleTime, [&] { return m_stopping || !m_waiting.empty(); });
            --m_idle;
            if (!isWanted || m_waiting.empty())
                break;
            std::function<void()> task = std::move(m_waiting.front());
            m_waiting.pop_front();
            ++m_running;
            lock.unlock();
            task();
            task = nullptr; // what it holds is released before it counts as done
            lock.lock();
            --m_running;
        }
        if (!m_stopping)
            m_ended.splice(m_ended.end(), m_threads, self);
    }
    CoUninitialize();
}

bool WorkerPool::StopIfIdle()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_running || !m_waiting.empty())
            return false;
    }
    Stop();
    return true;
}

void WorkerPool::Stop()
{
    Threads threads;
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        threads.splice(threads.end(), m_threads);
        threads.splice(threads.end(), m_ended);
    }
    m_changed.notify_all();
    JoinAll(threads);
    const std::lock_guard lock(m_mutex);
    m_stopping = false;
}

} // namespace orl
