// Files by wide path.
#include <windows.h>

#include "winport/portable/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr mode_t WhatTheMaskLeaves = 0666;

// A file to be written to: no link, and nothing that only looks like a file. What begins anew loses what it held only
// after that is known.
FILE* OpenToWrite(const char* path, const std::string& mode)
{
    const bool isAppending = mode.front() == 'a';
    const int access = mode.find('+') == mode.npos ? O_WRONLY : O_RDWR;
    const int descriptor = open(
        path, access | O_CREAT | (isAppending ? O_APPEND : 0) | O_NOFOLLOW | O_NOCTTY | O_NONBLOCK, WhatTheMaskLeaves);
    if (descriptor < 0)
        return nullptr;
    struct stat status;
    const bool isOurs = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1;
    if (!isOurs)
        errno = EACCES;
    FILE* file = isOurs && (isAppending || ftruncate(descriptor, 0) == 0) ? fdopen(descriptor, mode.c_str()) : nullptr;
    if (!file)
    {
        const int error = errno;
        close(descriptor);
        errno = error;
    }
    return file;
}

} // namespace

FILE* _wfopen(const wchar_t* path, const wchar_t* mode)
{
    if (!path || !mode)
    {
        errno = EINVAL;
        return nullptr;
    }
    std::string bytes = orl::ToUtf8(mode);
    std::erase(bytes, 't');
    const std::filesystem::path file = orl::NativePath(path);
    return bytes.starts_with('w') || bytes.starts_with('a') ? OpenToWrite(file.c_str(), bytes)
                                                            : std::fopen(file.c_str(), bytes.c_str());
}

int _wremove(const wchar_t* path)
{
    return std::remove(orl::NativePath(path).c_str());
}

int _fileno(FILE* file)
{
    return fileno(file);
}

long _filelength(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 ? static_cast<long>(status.st_size) : -1;
}
