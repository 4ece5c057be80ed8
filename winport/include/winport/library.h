// Loading libraries by name, and the texts in them.
//
// A name is a base name or a path with either separator; ".DLL" in any case is dropped, and NAME stands for the file
// libNAME.so in the same folder. A bare name is looked for beside the calling module, then where the system looks.
#pragma once

#include "winport/errors.h"

#define LOAD_LIBRARY_AS_DATAFILE 0x00000002u
#define LOAD_WITH_ALTERED_SEARCH_PATH 0x00000008u

#define GET_MODULE_HANDLE_EX_FLAG_PIN 0x00000001u
#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x00000002u
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x00000004u

// A library that is not there gives ERROR_MOD_NOT_FOUND, a file that is no library ERROR_BAD_EXE_FORMAT, one whose own
// needs cannot be met ERROR_PROC_NOT_FOUND.
HMODULE LoadLibraryW(LPCWSTR name);
HMODULE LoadLibraryExW(LPCWSTR name, HANDLE reserved, DWORD flags);
BOOL FreeLibrary(HMODULE module);

// Only the module's own exports, not those of the libraries that it needs.
FARPROC GetProcAddress(HMODULE module, LPCSTR name);

// The handle is not counted: it holds as long as another holder keeps the library. No name means the program.
HMODULE GetModuleHandleW(LPCWSTR name);
BOOL GetModuleHandleExW(DWORD flags, LPCWSTR nameOrAddress, HMODULE* module);

// The file's whole path; returns its length, or the capacity when the path was cut.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD capacity);

// Copies text number id of a resource library, cut to the capacity, and returns its length; 0 when there is none.
int LoadStringW(HINSTANCE module, UINT id, LPWSTR text, int capacity);
