// treecopy: copies parts of /sys and /proc, as they are, into a plain tree.
//
// usage: treecopy [-x PATTERN]... DEST ROOT...
//
// Every ROOT is copied to DEST/ROOT. Files are read to their end (sysfs says 4096 bytes of all of them), symbolic links
// are recreated as they are (in sysfs they are relative, so they lead inside DEST too when their target was copied),
// folders are walked without following links, and the permission bits are kept. A file that cannot be opened or read is
// created empty. -x leaves out what has such a name, anywhere: 'vpd_*'.
//
// DEST.modes   one line a file:  mode size path
// DEST.errors  one line a file that could not be read:  call ERRNO path

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr mode_t PermissionBits = 07777;
constexpr mode_t ReadBits = 0444;
constexpr mode_t FolderMode = 0755;
constexpr std::size_t MaxFileBytes = std::size_t{1} << 20;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

class TreeCopy
{
public:
    TreeCopy(std::string destination, std::vector<std::string> excluded)
        : m_destination(std::move(destination)), m_excluded(std::move(excluded)),
          m_modes(std::fopen((m_destination + ".modes").c_str(), "a"), std::fclose),
          m_errors(std::fopen((m_destination + ".errors").c_str(), "a"), std::fclose)
    {
        mkdir(m_destination.c_str(), FolderMode);
    }

    bool Ready() const { return m_modes && m_errors; }

    void CopyRoot(const std::string& path)
    {
        for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
            mkdir((m_destination + path.substr(0, slash)).c_str(), FolderMode);
        Copy(path);
    }

    void PrintTotals() const
    {
        std::printf("treecopy: %ld files, %ld links, %ld unreadable\n", m_fileCount, m_linkCount, m_errorCount);
    }

private:
    void Copy(const std::string& path)
    {
        struct stat found = {};
        struct stat there = {};
        if (IsExcluded(path.substr(path.rfind('/') + 1)))
            return;
        const std::string copy = m_destination + path;
        if (lstat(path.c_str(), &found) != 0)
            Note("lstat", path);
        else if (S_ISDIR(found.st_mode))
            CopyFolder(path, copy);
        else if (lstat(copy.c_str(), &there) == 0)
            return; // one root may lie in another
        else if (S_ISLNK(found.st_mode))
            CopyLink(path, copy);
        else if (S_ISREG(found.st_mode))
            CopyFile(path, copy, found.st_mode);
    }

    bool IsExcluded(const std::string& name) const
    {
        return std::any_of(m_excluded.begin(), m_excluded.end(),
                           [&](const std::string& pattern) { return fnmatch(pattern.c_str(), name.c_str(), 0) == 0; });
    }

    void CopyLink(const std::string& path, const std::string& copy)
    {
        std::array<char, 4096> target;
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length < 0)
        {
            Note("readlink", path);
            return;
        }
        if (symlink(std::string(target.data(), static_cast<std::size_t>(length)).c_str(), copy.c_str()) != 0)
            std::perror(copy.c_str());
        ++m_linkCount;
    }

    void CopyFolder(const std::string& path, const std::string& copy)
    {
        mkdir(copy.c_str(), FolderMode);
        const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.c_str()), closedir);
        if (!folder)
        {
            Note("opendir", path);
            return;
        }
        while (const dirent* entry = readdir(folder.get()))
        {
            const std::string name = entry->d_name;
            if (name != "." && name != "..")
                Copy(path + '/' + name);
        }
    }

    void CopyFile(const std::string& path, const std::string& copy, mode_t mode)
    {
        const int out = open(copy.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (out < 0)
        {
            std::perror(copy.c_str());
            return;
        }
        std::size_t size = 0;
        // An attribute that is only for writing stays closed: root would be let in, and some take opening as a request.
        errno = EACCES;
        const int in = (mode & ReadBits) != 0 ? open(path.c_str(), O_RDONLY | O_NONBLOCK) : -1;
        if (in < 0)
            Note("open", path);
        else
        {
            std::array<char, 65536> bytes;
            ssize_t got = 0;
            while (size < MaxFileBytes && (got = read(in, bytes.data(), bytes.size())) > 0)
            {
                if (write(out, bytes.data(), static_cast<std::size_t>(got)) != got)
                    std::perror(copy.c_str());
                size += static_cast<std::size_t>(got);
            }
            if (got < 0)
                Note("read", path);
            close(in);
        }
        fchmod(out, mode & PermissionBits);
        close(out);
        std::fprintf(m_modes.get(), "%04o %zu %s\n", static_cast<unsigned>(mode & PermissionBits), size, path.c_str());
        ++m_fileCount;
    }

    void Note(const char* call, const std::string& path)
    {
        ++m_errorCount;
        std::fprintf(m_errors.get(), "%s %s %s\n", call, strerrorname_np(errno), path.c_str());
    }

    std::string m_destination;
    std::vector<std::string> m_excluded;
    File m_modes;
    File m_errors;
    long m_fileCount = 0;
    long m_linkCount = 0;
    long m_errorCount = 0;
};

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> excluded;
    for (int option = 0; (option = getopt(argc, argv, "x:")) != -1;)
    {
        if (option != 'x')
            return 2;
        excluded.push_back(optarg);
    }
    if (argc - optind < 2)
        return 2;
    TreeCopy copy(argv[optind++], std::move(excluded));
    if (!copy.Ready())
        return 1;
    std::for_each(argv + optind, argv + argc, [&](const char* root) { copy.CopyRoot(root); });
    copy.PrintTotals();
    return 0;
}
