// Files by wide path.
#include <windows.h>

#include "winport/portable/Utf8.h"

#include <algorithm>
#include <string>
#include <sys/stat.h>

FILE* _wfopen(const wchar_t* path, const wchar_t* mode)
{
    if (!path || !mode)
    {
        errno = EINVAL;
        return nullptr;
    }
    std::string bytes = orl::ToUtf8(mode);
    std::erase(bytes, 't');
    return std::fopen(orl::NativePath(path).c_str(), bytes.c_str());
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
