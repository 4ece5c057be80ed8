// CHelper: what is installed, where, and how its libraries are loaded.
#pragma once

#include "Common/Src/OrlString.h"

#include <windows.h>

// Everything is read from the registry at the moment of use and nothing is kept, so any thread may call any operation.
// No operation throws but for want of memory; failures are traced and answered with a value.
class CHelper
{
public:
    // Components of the driver package. Only the status text "1" counts as installed.
    static bool IsDcbInstalled();
    static bool IsFcoeInstalled();
    static bool IsIscsiInstalled();

    // A text value under HKEY_LOCAL_MACHINE; false with `path` unchanged when key or value cannot be read.
    static bool GetPathFromRegistry(COrlString keyPath, COrlString valueName, COrlString& path);
    // Where an agent library is installed, by its identifier.
    static bool GetAgentDirectory(const COrlString& agent, COrlString& directory);
    // 0, or -1 with `language` unchanged.
    static int GetInstalledLanguage(COrlString& language);
    static int GetLocalLanguage(COrlString& language);

    // Splits a library's name. The base name lacks a trailing ".DLL", in any case, and everything up to the first
    // backslash. The sub-name is the base name up to and including its first "Res", in any case, which drops the
    // language code of a resource library; without a "Res" it is the base name. False when no base name is left.
    static bool StripLibraryName(const COrlString& libraryName, COrlString& baseName, COrlString& subName);
    // Loads one of the product's libraries from the directory that the registry names for it, any other by the system's
    // search order. The caller releases the module with FreeLibrary; null when it cannot be loaded.
    static HMODULE QvLoadLibrary(const COrlString& library);
};
