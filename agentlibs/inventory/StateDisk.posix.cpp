// StateDisk on POSIX.

#include "agentlibs/inventory/StateDisk.h"

#include "agentlibs/Text.h"
#include "winport/portable/Utf8.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orl
{

namespace
{

constexpr mode_t Private = S_IRUSR | S_IWUSR;

[[noreturn]] void RefuseErrno(ULONG code, const std::wstring& path, const wchar_t* what, int error)
{
    RefuseStateFile(code, path, what + (L": " + Widen(std::generic_category().message(error))));
}

class Descriptor
{
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool Valid() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

// O_NONBLOCK: a pipe that somebody put there must not hold up whoever opens it.
Descriptor Open(const std::filesystem::path& file, int flags)
{
    return Descriptor(open(file.c_str(), flags | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, Private));
}

struct stat StatusOf(const Descriptor& descriptor, const std::wstring& path)
{
    struct stat status = {};
    if (fstat(descriptor.Get(), &status) != 0)
        RefuseErrno(ERROR_ACCESS_DENIED, path, L"cannot be read", errno);
    if (!S_ISREG(status.st_mode))
        RefuseStateKind(path);
    return status;
}

bool IsSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

class FileLock final : public StateDisk::Lock
{
public:
    explicit FileLock(Descriptor descriptor) : m_descriptor(std::move(descriptor)) {}

private:
    Descriptor m_descriptor; // closing it gives the lock back
};

// One try: nothing while somebody else has the lock. A lock on a file that was removed meanwhile excludes nobody, so
// the file that is locked must still be the one that the path names.
std::unique_ptr<StateDisk::Lock> TryLock(const std::filesystem::path& file, const std::wstring& path)
{
    Descriptor descriptor = Open(file, O_RDWR | O_CREAT);
    if (!descriptor.Valid() && errno == ELOOP)
        RefuseStateLink(path);
    if (!descriptor.Valid())
        RefuseErrno(ERROR_ACCESS_DENIED, path, L"cannot be opened for writing", errno);
    const struct stat locked = StatusOf(descriptor, path);
    if (flock(descriptor.Get(), LOCK_EX | LOCK_NB) != 0)
    {
        if (errno != EWOULDBLOCK && errno != EINTR)
            RefuseErrno(ERROR_ACCESS_DENIED, path, L"cannot be locked", errno);
        return nullptr;
    }
    struct stat named = {};
    if (lstat(file.c_str(), &named) != 0 || !IsSameFile(locked, named))
        return nullptr;
    return std::make_unique<FileLock>(std::move(descriptor));
}

void WriteAll(const Descriptor& descriptor, std::string_view text, const std::wstring& path)
{
    while (!text.empty())
    {
        const ssize_t written = write(descriptor.Get(), text.data(), text.size());
        if (written < 0 && errno != EINTR)
            RefuseErrno(ERROR_CANTWRITE, path, L"cannot be written", errno);
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
    }
    if (fsync(descriptor.Get()) != 0)
        RefuseErrno(ERROR_CANTWRITE, path, L"cannot be written", errno);
}

// What a writer left that was killed. A link is none of ours and stays, for somebody to wonder at.
void RemoveLeftover(const std::filesystem::path& file, const std::wstring& path)
{
    struct stat status = {};
    if (lstat(file.c_str(), &status) != 0)
        return;
    if (S_ISLNK(status.st_mode))
        RefuseStateLink(path);
    if (unlink(file.c_str()) != 0)
        RefuseErrno(ERROR_ACCESS_DENIED, path, L"cannot be removed", errno);
}

// The new name is in the folder, which is what has to reach the disk. Some file systems know no flushing of folders and
// say so with EINVAL; there is nothing else to be done there.
void FlushFolder(const std::filesystem::path& folder, const std::wstring& path)
{
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor.Valid() || (fsync(descriptor.Get()) != 0 && errno != EINVAL))
        RefuseErrno(ERROR_CANTWRITE, path, L"is written, but its folder cannot be flushed", errno);
}

} // namespace

std::optional<StateDisk::Stamp> StateDisk::Look() const
{
    struct stat status = {};
    if (lstat(NativePath(m_path).c_str(), &status) != 0)
    {
        if (errno == ENOENT)
            return std::nullopt;
        RefuseErrno(ERROR_ACCESS_DENIED, m_path, L"cannot be read", errno);
    }
    if (S_ISLNK(status.st_mode))
        RefuseStateLink(m_path);
    if (!S_ISREG(status.st_mode))
        RefuseStateKind(m_path);
    Stamp stamp;
    stamp.size = static_cast<std::uint64_t>(status.st_size);
    stamp.id = status.st_ino;
    const std::chrono::nanoseconds since1970 =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    stamp.written = std::filesystem::file_time_type(
        std::chrono::file_clock::from_sys(std::chrono::sys_time<std::chrono::nanoseconds>(since1970)));
    return stamp;
}

std::optional<std::string> StateDisk::Load() const
{
    const Descriptor descriptor = Open(NativePath(m_path), O_RDONLY);
    if (!descriptor.Valid() && errno == ENOENT)
        return std::nullopt;
    if (!descriptor.Valid() && errno == ELOOP)
        RefuseStateLink(m_path);
    if (!descriptor.Valid())
        RefuseErrno(ERROR_ACCESS_DENIED, m_path, L"cannot be opened for reading", errno);
    StatusOf(descriptor, m_path);
    std::string text;
    for (char block[65536];;)
    {
        const ssize_t length = read(descriptor.Get(), block, sizeof block);
        if (length == 0)
            return text;
        if (length < 0 && errno != EINTR)
            RefuseErrno(ERROR_ACCESS_DENIED, m_path, L"cannot be read", errno);
        if (length > 0)
            text.append(block, static_cast<std::size_t>(length));
        if (text.size() > MaxBytes)
            RefuseStateLength(m_path);
    }
}

std::unique_ptr<StateDisk::Lock> StateDisk::Acquire(std::chrono::milliseconds longest) const
{
    const std::wstring path = LockPath();
    const std::filesystem::path file = NativePath(path);
    StateWait wait(*this, path, longest);
    for (;;)
    {
        if (auto lock = TryLock(file, path))
            return lock;
        wait.Pause();
    }
}

void StateDisk::Replace(const Lock&, std::string_view text) const
{
    const std::wstring nextPath = NextPath();
    const std::filesystem::path next = NativePath(nextPath);
    const std::filesystem::path file = NativePath(m_path);
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    RemoveLeftover(next, nextPath);
    {
        const Descriptor descriptor = Open(next, O_WRONLY | O_CREAT | O_EXCL);
        if (!descriptor.Valid())
            RefuseErrno(ERROR_ACCESS_DENIED, nextPath, L"cannot be made", errno);
        try
        {
            WriteAll(descriptor, text, nextPath);
        }
        catch (...)
        {
            unlink(next.c_str());
            throw;
        }
    }
    // From here on nothing needs memory: what is done must not be reported as failed.
    if (rename(next.c_str(), file.c_str()) != 0)
    {
        const int error = errno;
        unlink(next.c_str());
        RefuseErrno(ERROR_CANTWRITE, m_path, L"cannot be replaced", error);
    }
    FlushFolder(folder, m_path);
}

} // namespace orl
