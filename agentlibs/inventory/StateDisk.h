// StateDisk: one small file that several processes read at any time and replace in turn.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orl
{

// The file is never written in place: a new one is made beside it, brought to the disk and renamed over it. So whoever
// reads finds the old text or the new one, also when the writer was killed or the power failed half way. Beside a file
// `lab.json.state` lie `lab.json.state.lock`, which stays, and, while a writer is at work or after one was killed,
// `lab.json.state.tmp`, which the next writer removes.
//
// None of the three is followed through a symbolic link. Everything throws BackendError, whose text begins with the
// path of the file that is meant. Any number of threads may use one object.
class StateDisk
{
public:
    static constexpr std::uintmax_t MaxBytes = std::uintmax_t{16} * 1024 * 1024;

    // Either separator may stand in the path.
    explicit StateDisk(std::wstring path);

    // What tells one state of the file from another without opening it.
    struct Stamp
    {
        std::uint64_t size = 0;
        std::uint64_t id = 0;
        std::filesystem::file_time_type written;

        bool operator==(const Stamp&) const = default;
    };

    // Nothing where there is no file.
    std::optional<Stamp> Look() const;
    // The file's text; nothing where there is no file.
    std::optional<std::string> Load() const;

    // The right to replace the file, which ends with the object or the process. Threads exclude each other as processes
    // do, also those of one process.
    class Lock
    {
    public:
        virtual ~Lock() = default;
    };
    // Waits for those who have it as long as they get on: no longer than this without a change of the file.
    std::unique_ptr<Lock> Acquire(std::chrono::milliseconds longest) const;

    // When it throws, the file is as it was, or, if its folder alone could not be flushed, as it shall be.
    void Replace(const Lock& held, std::string_view text) const;

    const std::wstring& Path() const { return m_path; }

private:
    std::wstring LockPath() const { return m_path + L".lock"; }
    std::wstring NextPath() const { return m_path + L".tmp"; }

    const std::wstring m_path;
};

// What is said of a file that several implementations of StateDisk find fault with.
[[noreturn]] void RefuseStateFile(ULONG code, const std::wstring& path, const std::wstring& reason);
[[noreturn]] void RefuseStateLink(const std::wstring& path);
[[noreturn]] void RefuseStateKind(const std::wstring& path);
[[noreturn]] void RefuseStateLength(const std::wstring& path);

// Somebody's wait for a lock.
class StateWait
{
public:
    StateWait(const StateDisk& disk, std::wstring lockPath, std::chrono::milliseconds longest);

    // Waits a moment; refuses when the disk's file has not changed for the longest time.
    void Pause();

private:
    using Clock = std::chrono::steady_clock;

    const StateDisk& m_disk;
    const std::wstring m_lockPath;
    const std::chrono::milliseconds m_longest;
    std::optional<StateDisk::Stamp> m_stamp;
    std::optional<Clock::time_point> m_since; // when the last change was seen; nothing before the first look
};

} // namespace orl
