// COrlRegKey: an open registry key.
#pragma once

#include "Common/Src/OrlExport.h"
#include "Common/Src/OrlString.h"

#include <windows.h>

// Owns the key that it opened or was given. Copies share one handle, which is closed when the last of them lets it go.
// One thread uses an instance at a time; copies may live on different threads.
class ORL_COMMON_API COrlRegKey
{
public:
    COrlRegKey();
    explicit COrlRegKey(HKEY key);
    COrlRegKey(const COrlRegKey& other);
    COrlRegKey& operator=(const COrlRegKey& other);
    // Takes the handle over.
    COrlRegKey& operator=(HKEY key);
    virtual ~COrlRegKey();

    // Opens an existing key in place of the one held; `option` is the wanted access. On failure no key is held.
    bool Open(HKEY root, const COrlString& path, REGSAM option = KEY_READ);
    // Read a text of any length, stored with or without its terminator, or a 32-bit number. On failure, also when the
    // value is of another type, the result is left as it was.
    bool GetValue(const COrlString& name, COrlString& value);
    bool GetValue(const COrlString& name, DWORD& value);
    void Close();

    HKEY Handle() const { return m_key; }
    const std::wstring& Path() const { return m_path; }
    // The system's error number of the last operation, 0 after success.
    ULONG LastStatus() const { return m_status; }

private:
    bool Settle(LONG status);

    HKEY m_key = nullptr;
    bool m_owned = false;
    ULONG m_access = 0;
    ULONG m_status = 0;
    std::wstring m_path;
};
