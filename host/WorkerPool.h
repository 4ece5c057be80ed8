// Threads for calls that must not hold up their caller.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

namespace orl
{

// Every task gets a thread at once, an idle one or a new one: a provider that hangs holds up nobody else. Threads are
// in COM's multithreaded apartment. Idle threads end after a while.
class WorkerPool
{
public:
    // Tasks at one time: a client that asks on and on while a provider hangs must not use up the process.
    static constexpr std::size_t kMostTasks = 512;

    WorkerPool() = default;
    // Waits for all tasks.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // The task must not throw. Throws CallFailure WBEM_E_SERVER_TOO_BUSY when kMostTasks are under way,
    // std::system_error when no thread can be made; the task has not run then.
    void Run(std::function<void()> task);

    // When no task is running: ends all threads, so that the module can be unloaded, and answers true.
    bool StopIfIdle();
    // Waits for all tasks, then ends all threads.
    void Stop();

private:
    using Threads = std::list<std::thread>;

    void Work(Threads::iterator self);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::list<std::function<void()>> m_waiting;
    Threads m_threads;
    Threads m_ended; // to be joined
    std::size_t m_idle = 0;
    std::size_t m_running = 0;
    bool m_stopping = false;
};

} // namespace orl
