// Libraries that tests load.

#include "tests/common/TestLibraries.h"

#include "winport/portable/Utf8.h"

namespace orl::test
{

std::string LibraryFileName(const std::string& name)
{
    return ORL_LIBRARY_PREFIX + name + ORL_LIBRARY_SUFFIX;
}

std::filesystem::path BuiltLibrary(const std::string& name)
{
    return std::filesystem::path(ORL_BIN_DIR) / LibraryFileName(name);
}

void CopyLibrary(const std::string& name, const std::filesystem::path& folder, const std::string& newName)
{
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(BuiltLibrary(name), folder / LibraryFileName(newName));
}

std::filesystem::path FileOf(HMODULE module)
{
    wchar_t path[1024] = {};
    GetModuleFileNameW(module, path, 1024);
    return NativePath(path);
}

} // namespace orl::test
