// The registry in memory, and its text form: the format of registry exports.
//
// Both formats are read: "Windows Registry Editor Version 5.00" and "REGEDIT4"; in UTF-8, in UTF-16 with its mark, or,
// for REGEDIT4, in the ANSI code page. Lines that begin with ';' belong to the key or value that follows them and are
// written again with it. Reading is bounded by the file's size and never fails: what cannot be read is named in the
// damage.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "winport/src/Names.h"

namespace winport
{

struct RegValue
{
    // As it is spelled; empty for the key's default value.
    std::wstring name;
    DWORD type = REG_NONE;
    // As callers get it: texts in this platform's wide characters.
    std::vector<BYTE> data;
    std::wstring comment;
};

struct RegKey
{
    std::wstring name;
    std::map<std::wstring, RegKey, NameLess> keys;
    std::map<std::wstring, RegValue, NameLess> values;
    std::wstring comment;

    // The key at a path of names below this one; an empty path is this one. Null when it is not there.
    const RegKey* Find(std::wstring_view path) const;
    RegKey* Find(std::wstring_view path);
    // The same, made where it is not there.
    RegKey& Make(std::wstring_view path);
    // Removes the key at the path with all below it; false when it is not there.
    bool Remove(std::wstring_view path);
};

struct RegDamage
{
    // From 1; 0 for the file as a whole.
    size_t line;
    std::string reason;
};

struct RegFile
{
    // Its keys are the roots (HKEY_LOCAL_MACHINE and so on); HKEY_CLASSES_ROOT lies below the local machine.
    RegKey root;
    // What stands behind the last value.
    std::wstring comment;
    // In the order of the lines; at most MaxDamage and one that counts the rest.
    std::vector<RegDamage> damage;
};

constexpr size_t MaxFileSize = 16u << 20;
constexpr size_t MaxDamage = 100;
constexpr size_t MaxKeyName = 255;
constexpr size_t MaxKeyDepth = 512;
constexpr size_t MaxValueName = 16383;
constexpr size_t MaxValueData = 1u << 20;

// Where HKEY_CLASSES_ROOT lies.
constexpr wchar_t ClassesPath[] = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes";

RegFile ParseRegFile(std::string_view bytes);

// The whole text in UTF-8, format 5.00. Reading it again gives the same keys, values and comments.
std::string WriteRegFile(const RegFile& file);

} // namespace winport
