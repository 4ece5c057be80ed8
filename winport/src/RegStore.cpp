// The registry file: reading it when it has changed, replacing it as a whole.
#include "winport/src/RegStore.h"

#include "winport/process/Process.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace winport
{

namespace
{

constexpr char DefaultFile[] = "/etc/orl2/registry.reg";

std::string FileName()
{
    const char* named = std::getenv("ORL2_REGISTRY");
    return named && *named ? named : DefaultFile;
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
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

// What tells one version of a file from another.
struct Version
{
    std::string file;
    bool exists = false;
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
    timespec modified{};

    bool operator==(const Version& other) const
    {
        return file == other.file && exists == other.exists && device == other.device && number == other.number &&
               size == other.size && modified.tv_sec == other.modified.tv_sec &&
               modified.tv_nsec == other.modified.tv_nsec;
    }
};

// File times advance in steps of a few milliseconds: a file changed so shortly before it was read may have been changed
// again without looking any different.
bool WasRecent(const Version& version, const timespec& then)
{
    constexpr long long Milliseconds = 100;
    const long long age =
        (then.tv_sec - version.modified.tv_sec) * 1000LL + (then.tv_nsec - version.modified.tv_nsec) / 1'000'000;
    return version.exists && std::abs(age) < Milliseconds;
}

Version VersionOf(const std::string& file, const struct stat& status)
{
    return {file, true, status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

Version CurrentVersion(const std::string& file)
{
    struct stat status;
    return stat(file.c_str(), &status) == 0 ? VersionOf(file, status) : Version{file};
}

RegFile Unreadable(const std::string& reason)
{
    RegFile empty;
    empty.damage.push_back({0, reason});
    return empty;
}

bool ReadAll(int descriptor, std::string& bytes)
{
    // One byte more than is allowed tells a file that is too large.
    while (bytes.size() <= MaxFileSize)
    {
        char piece[16384];
        const ssize_t count = read(descriptor, piece, sizeof piece);
        if (count == 0)
            return true;
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            bytes.append(piece, static_cast<size_t>(count));
    }
    return true;
}

// Reads the file and says which version it was.
RegFile Load(const std::string& file, Version& version)
{
    version = Version{file};
    // Not to wait for the other end of what is no file.
    const Descriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (opened.Get() < 0 && errno == ENOENT)
        return {};
    if (opened.Get() < 0 || fstat(opened.Get(), &status) != 0)
    {
        const int error = errno;
        version = CurrentVersion(file);
        return Unreadable(std::string("it cannot be opened: ") + std::strerror(error));
    }
    version = VersionOf(file, status);
    if (!S_ISREG(status.st_mode))
        return Unreadable("it is no regular file");
    std::string bytes;
    if (!ReadAll(opened.Get(), bytes))
        return Unreadable(std::string("it cannot be read: ") + std::strerror(errno));
    return ParseRegFile(bytes);
}

void Report(const std::string& file, const RegFile& content)
{
    for (const RegDamage& damage : content.damage)
    {
        const std::string place = damage.line ? ", line " + std::to_string(damage.line) : "";
        std::string text = "registry file ";
        text.append(file).append(place).append(": ").append(damage.reason).append("; left out\n");
        if (FirstReport(text.c_str()))
            std::fputs(text.c_str(), stderr);
    }
}

LSTATUS StatusOf(int error)
{
    switch (error)
    {
    case ENOENT:
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case ELOOP: // a link where the file's own helpers lie is none of ours
    case EPERM:
    case EROFS:
        return ERROR_ACCESS_DENIED;
    default:
        return ERROR_CANTWRITE;
    }
}

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            bytes.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

// The new content stands whole beside the old one before it takes its place, so that a crash leaves one of them.
LSTATUS Replace(const std::string& file, const std::string& bytes)
{
    const std::string fresh = file + ".new";
    struct stat status;
    const mode_t mode = stat(file.c_str(), &status) == 0 ? status.st_mode & 07777 : 0644;
    // What a writer left that was killed goes; what is written to is always new, and private until it is whole.
    unlink(fresh.c_str());
    const Descriptor opened(open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (opened.Get() >= 0 && WriteAll(opened.Get(), bytes) && fchmod(opened.Get(), mode) == 0 &&
        fsync(opened.Get()) == 0 && rename(fresh.c_str(), file.c_str()) == 0)
        return ERROR_SUCCESS;
    const int error = errno;
    if (opened.Get() >= 0)
        unlink(fresh.c_str());
    return StatusOf(error);
}

// Excludes other writers for as long as the descriptor is open. Who may not write to the registry may not hold up those
// who do either: the lock's file has no other rights than theirs.
LSTATUS Acquire(const Descriptor& lock, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (flock(lock.Get(), LOCK_EX | LOCK_NB) != 0)
    {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return StatusOf(errno);
        if (std::chrono::steady_clock::now() >= end)
            return ERROR_BUSY;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return ERROR_SUCCESS;
}

mode_t LockMode(const std::string& file)
{
    struct stat status;
    const mode_t writers = 0200 | (stat(file.c_str(), &status) == 0 ? status.st_mode & 0222 : 0);
    return writers | writers << 1;
}

} // namespace

std::shared_ptr<const RegFile> ReadRegistry()
{
    static std::mutex lock;
    static Version version;
    static bool isRecent = false;
    static std::shared_ptr<const RegFile> content;
    const std::lock_guard<std::mutex> guard(lock);
    const std::string file = FileName();
    if (!content || isRecent || !(CurrentVersion(file) == version))
    {
        timespec now;
        clock_gettime(CLOCK_REALTIME, &now);
        content = std::make_shared<const RegFile>(Load(file, version));
        isRecent = WasRecent(version, now);
        Report(file, *content);
    }
    return content;
}

LSTATUS ChangeRegistry(const std::function<LSTATUS(RegFile&)>& change, std::chrono::milliseconds patience)
{
    std::error_code error;
    // A link stays a link: what it leads to is replaced.
    const std::filesystem::path real = std::filesystem::weakly_canonical(FileName(), error);
    const std::string file = error ? FileName() : real.string();
    const Descriptor lock(
        open((file + ".lock").c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, LockMode(file)));
    if (lock.Get() < 0)
        return StatusOf(errno);
    if (const LSTATUS locked = Acquire(lock, patience); locked != ERROR_SUCCESS)
        return locked;
    Version version;
    RegFile content = Load(file, version);
    if (!content.damage.empty())
    {
        Report(FileName(), content);
        return ERROR_BADDB;
    }
    const LSTATUS status = change(content);
    return status == ERROR_SUCCESS ? Replace(file, WriteRegFile(content)) : status;
}

} // namespace winport
