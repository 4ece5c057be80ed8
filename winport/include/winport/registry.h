// The registry, kept in a text file in the format of registry exports.
//
// The file is the one that the environment variable ORL2_REGISTRY names, else /etc/orl2/registry.reg. It is read again
// when it has changed; a reader always sees one whole version. Names compare without case, HKEY_CLASSES_ROOT is
// SOFTWARE\Classes of the local machine. What the file holds but cannot be read is reported once on standard error,
// with the file, the line and the reason, and left out; a file with such a place is not written to (ERROR_BADDB), so
// that nothing of it is lost. Writers hold a lock between processes and replace the file by renaming.
//
// Sizes of data are in bytes of this platform's wide characters, as the caller's buffers are. All functions may be
// called from several threads at once.
#pragma once

#include "winport/errors.h"

// Names that begin with an underscore are the system's, and stand here for it.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

#define HKEY_CLASSES_ROOT (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000000u)))
#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001u)))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002u)))

#define REG_NONE 0u
#define REG_SZ 1u
#define REG_EXPAND_SZ 2u
#define REG_BINARY 3u
#define REG_DWORD 4u
#define REG_MULTI_SZ 7u
#define REG_QWORD 11u

// Access is the file's own; the rights are accepted and not looked at.
#define KEY_QUERY_VALUE 0x0001u
#define KEY_SET_VALUE 0x0002u
#define KEY_READ 0x20019u
#define KEY_WRITE 0x20006u
#define KEY_ALL_ACCESS 0xF003Fu

#define REG_OPTION_NON_VOLATILE 0u
#define REG_CREATED_NEW_KEY 1u
#define REG_OPENED_EXISTING_KEY 2u

typedef struct _SECURITY_ATTRIBUTES SECURITY_ATTRIBUTES;

LSTATUS RegOpenKeyExW(HKEY root, LPCWSTR path, DWORD options, REGSAM access, HKEY* result);
LSTATUS RegCloseKey(HKEY key);

// size is in and out; too small a buffer gives ERROR_MORE_DATA and the size that is needed. type, data and size may be
// null. Texts come with their terminator.
LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size);

// nameLength is in characters: in with room for the terminator, out without it. Keys and values come in the order of
// their names.
LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD* reserved, LPWSTR keyClass,
                      DWORD* keyClassLength, FILETIME* lastWritten);
LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, DWORD* nameLength, DWORD* reserved, DWORD* type, BYTE* data,
                      DWORD* size);

LSTATUS RegCreateKeyExW(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR keyClass, DWORD options, REGSAM access,
                        const SECURITY_ATTRIBUTES* security, HKEY* result, DWORD* disposition);
LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);
LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name);

// Deletes the key below root with all that is under it; with no path, what is under root but not root itself.
LSTATUS RegDeleteTreeW(HKEY root, LPCWSTR path);

// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
