// Libraries that tests load.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace orl::test
{

// How this platform names the file of a library.
std::string LibraryFileName(const std::string& name);

// A library of the tests as it was built, and a copy of it under another name.
std::filesystem::path BuiltLibrary(const std::string& name);
void CopyLibrary(const std::string& name, const std::filesystem::path& folder, const std::string& newName);

// Where a loaded module came from.
std::filesystem::path FileOf(HMODULE module);

// What an export of the given type answers to; null when the module has none of that name.
template <class Function>
Function* ExportOf(HMODULE module, const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace orl::test
