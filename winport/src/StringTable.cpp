// Texts by number from a resource library.
#include "winport/src/StringTable.h"

#include <windows.h>

#include <algorithm>

int LoadStringW(HINSTANCE module, UINT id, LPWSTR text, int capacity)
{
    if (!text || capacity <= 0)
        return 0;
    const auto* table =
        reinterpret_cast<const winport::StringTable*>(GetProcAddress(module, winport::StringTableExport));
    // A resource's number has 16 bits; what stands above them is not looked at.
    const UINT number = LOWORD(id);
    const winport::StringEntry* found = nullptr;
    if (table)
    {
        const auto* end = table->entries + table->count;
        found = std::lower_bound(table->entries, end, number,
                                 [](const winport::StringEntry& entry, UINT wanted) { return entry.id < wanted; });
        if (found == end || found->id != number)
            found = nullptr;
    }
    text[0] = L'\0';
    if (!found)
    {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return 0;
    }
    const int copied = std::min(static_cast<int>(found->length), capacity - 1);
    std::copy_n(found->text, copied, text);
    text[copied] = L'\0';
    return copied;
}
