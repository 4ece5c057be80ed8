// StateDisk: what does not depend on the platform.

#include "agentlibs/inventory/StateDisk.h"

#include "agentlibs/BackendError.h"

#include <thread>
#include <utility>

namespace orl
{

StateDisk::StateDisk(std::wstring path) : m_path(std::move(path)) {}

void RefuseStateFile(ULONG code, const std::wstring& path, const std::wstring& reason)
{
    throw BackendError(code, path + L": " + reason);
}

void RefuseStateLink(const std::wstring& path)
{
    RefuseStateFile(ERROR_ACCESS_DENIED, path, L"is a symbolic link, and none is followed here");
}

void RefuseStateKind(const std::wstring& path)
{
    RefuseStateFile(ERROR_INVALID_DATA, path, L"is no regular file");
}

void RefuseStateLength(const std::wstring& path)
{
    RefuseStateFile(ERROR_INVALID_DATA, path, L"is longer than " + std::to_wstring(StateDisk::MaxBytes) + L" bytes");
}

StateWait::StateWait(const StateDisk& disk, std::wstring lockPath, std::chrono::milliseconds longest)
    : m_disk(disk), m_lockPath(std::move(lockPath)), m_longest(longest)
{
}

void StateWait::Pause()
{
    // Many writers on a slow disk take longer than one that is stuck; it is not their fault, nor that of who waits.
    // Who gets the lock at once has not looked at the file.
    if (!m_since || Clock::now() - *m_since >= m_longest)
    {
        const std::optional<StateDisk::Stamp> now = m_disk.Look();
        if (m_since && now == m_stamp)
            RefuseStateFile(ERROR_BUSY, m_lockPath,
                            L"is locked by another process or thread; waited " + std::to_wstring(m_longest.count()) +
                                L" ms");
        m_stamp = now;
        m_since = Clock::now();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace orl
