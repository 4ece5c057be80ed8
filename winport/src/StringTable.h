// The table of texts that a resource library exports: generated from a .rc file, read by LoadStringW.
#pragma once

#include <cstddef>
#include <cstdint>

namespace winport
{

struct StringEntry
{
    uint32_t id;
    uint32_t length;
    const wchar_t* text;
};

// Entries in the order of their ids.
struct StringTable
{
    size_t count;
    const StringEntry* entries;
};

// The export's name, and the data of that name.
constexpr char StringTableExport[] = "OrlStringTable";

} // namespace winport
