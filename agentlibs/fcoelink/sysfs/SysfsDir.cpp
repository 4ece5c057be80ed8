// Dir: a folder of a sysfs or procfs tree, held open.

#include "agentlibs/fcoelink/sysfs/SysfsDir.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/fcoelink/sysfs/SysfsText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orl::sysfs
{
namespace
{

// Closes at the end of its scope; leaves errno as it was.
class Descriptor
{
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (m_fd < 0)
            return;
        const int error = errno;
        close(m_fd);
        errno = error;
    }

    int Get() const { return m_fd; }
    int Release() { return std::exchange(m_fd, -1); }

private:
    int m_fd;
};

// These say something about the process, not about the tree: whoever took them for a missing file would lose records
// without a word.
void RefuseIfExhausted(int error, const char* name)
{
    if (error == EMFILE || error == ENFILE)
        throw BackendError(ERROR_TOO_MANY_OPEN_FILES, L"too many open files to read " + Wide(name) + L" of the tree");
    if (error == ENOMEM)
        throw BackendError(ERROR_NOT_ENOUGH_MEMORY,
                           L"the kernel has no memory to read " + Wide(name) + L" of the tree");
}

int OpenAt(int at, const char* path, int flags)
{
    int fd = -1;
    do
        fd = openat(at, path, flags | O_CLOEXEC);
    while (fd < 0 && errno == EINTR);
    if (fd < 0)
        RefuseIfExhausted(errno, path);
    return fd;
}

// The file, if it is a regular one. O_NONBLOCK: opening a FIFO or a terminal must not wait for a partner.
int OpenRegular(int at, const char* file, int flags)
{
    Descriptor fd(OpenAt(at, file, flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    struct stat found = {};
    if (fd.Get() < 0 || fstat(fd.Get(), &found) != 0)
        return -1;
    if (!S_ISREG(found.st_mode))
    {
        errno = EINVAL;
        return -1;
    }
    return fd.Release();
}

} // namespace

Dir::Node::~Node()
{
    close(fd);
}

std::shared_ptr<const Dir::Node> Dir::OpenNode(int at, const char* path, int flags)
{
    Descriptor fd(OpenAt(at, path, O_RDONLY | O_DIRECTORY | flags));
    if (fd.Get() < 0)
        return nullptr;
    auto node = std::make_shared<const Node>(fd.Get());
    fd.Release();
    return node;
}

Dir Dir::OpenPath(const std::string& path)
{
    Dir dir;
    dir.m_node = OpenNode(AT_FDCWD, path.c_str(), 0);
    return dir;
}

Dir Dir::Open(std::string_view path) const
{
    Dir dir = *this;
    for (std::size_t begin = 0; dir && begin <= path.size();)
    {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        dir.m_name = path.substr(begin, end - begin);
        dir.m_parent = std::exchange(dir.m_node, nullptr);
        dir.m_node = OpenNode(dir.m_parent->fd, dir.m_name.c_str(), O_NOFOLLOW);
        begin = end + 1;
    }
    return dir ? dir : Dir();
}

Dir Dir::OpenThroughLinks(const std::string& path) const
{
    Dir dir;
    if (m_node)
        dir.m_node = OpenNode(m_node->fd, path.c_str(), 0);
    return dir;
}

std::string Dir::ReadWhole(const char* file, std::size_t limit) const
{
    std::string text;
    const Descriptor fd(m_node ? OpenRegular(m_node->fd, file, O_RDONLY) : -1);
    if (fd.Get() < 0)
        return text;
    std::array<char, 4096> chunk;
    for (;;)
    {
        const ssize_t got = read(fd.Get(), chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
        {
            RefuseIfExhausted(errno, file);
            return {};
        }
        if (got == 0)
            return text;
        text.append(chunk.data(), static_cast<std::size_t>(got));
        if (text.size() > limit)
            return {};
    }
}

std::string Dir::Read(const char* attribute) const
{
    return std::string(AttributeText(ReadWhole(attribute, MaxAttributeBytes)));
}

std::string Dir::Link(const std::string& name) const
{
    std::array<char, 4096> target;
    const ssize_t length = m_node ? readlinkat(m_node->fd, name.c_str(), target.data(), target.size()) : -1;
    // A target that fills the buffer may have been cut.
    if (length < 0 || static_cast<std::size_t>(length) == target.size())
        return {};
    return {target.data(), static_cast<std::size_t>(length)};
}

std::vector<std::string> Dir::Names(std::string_view prefix, std::size_t limit) const
{
    std::vector<std::string> names;
    if (!m_node)
        return names;
    // A stream of its own: several threads may list one folder at once, and each starts at its beginning.
    Descriptor fd(OpenAt(m_node->fd, ".", O_RDONLY | O_DIRECTORY));
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(fd.Get() < 0 ? nullptr : fdopendir(fd.Get()), closedir);
    if (!stream)
        return names;
    fd.Release();
    std::size_t entries = 0;
    while (const dirent* entry = readdir(stream.get()))
    {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        if (++entries > limit)
            return {};
        if (name.starts_with(prefix))
            names.emplace_back(name);
    }
    std::sort(names.begin(), names.end(), NaturalLess);
    return names;
}

bool Dir::Present() const
{
    if (!m_node)
        return false;
    if (!m_parent)
        return true;
    struct stat held = {};
    struct stat there = {};
    return fstat(m_node->fd, &held) == 0 && fstatat(m_parent->fd, m_name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
           held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

int Dir::Write(const char* attribute, std::string_view text) const
{
    const Descriptor fd(m_node ? OpenRegular(m_node->fd, attribute, O_WRONLY | O_TRUNC) : (errno = ENOENT, -1));
    if (fd.Get() < 0)
        return errno;
    ssize_t written = -1;
    do
        written = write(fd.Get(), text.data(), text.size());
    while (written < 0 && errno == EINTR);
    if (written < 0)
        return errno;
    return static_cast<std::size_t>(written) == text.size() ? 0 : EIO;
}

} // namespace orl::sysfs
