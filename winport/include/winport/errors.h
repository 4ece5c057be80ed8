// System error codes, HRESULTs and the thread's last error.
#pragma once

#include "winport/types.h"

#define ERROR_SUCCESS 0
#define NO_ERROR 0
#define ERROR_FILE_NOT_FOUND 2
#define ERROR_PATH_NOT_FOUND 3
#define ERROR_TOO_MANY_OPEN_FILES 4
#define ERROR_ACCESS_DENIED 5
#define ERROR_INVALID_HANDLE 6
#define ERROR_NOT_ENOUGH_MEMORY 8
#define ERROR_INVALID_DATA 13
#define ERROR_OUTOFMEMORY 14
#define ERROR_WRITE_PROTECT 19
#define ERROR_GEN_FAILURE 31
#define ERROR_NOT_SUPPORTED 50
#define ERROR_DEV_NOT_EXIST 55
#define ERROR_INVALID_PARAMETER 87
#define ERROR_BUFFER_OVERFLOW 111
#define ERROR_INSUFFICIENT_BUFFER 122
#define ERROR_INVALID_NAME 123
#define ERROR_MOD_NOT_FOUND 126
#define ERROR_PROC_NOT_FOUND 127
#define ERROR_BUSY 170
#define ERROR_ALREADY_EXISTS 183
#define ERROR_BAD_EXE_FORMAT 193
#define ERROR_ENVVAR_NOT_FOUND 203
#define ERROR_MORE_DATA 234
#define ERROR_NO_MORE_ITEMS 259
#define ERROR_INVALID_FLAGS 1004
#define ERROR_BADDB 1009
#define ERROR_CANTREAD 1012
#define ERROR_CANTWRITE 1013
#define ERROR_KEY_DELETED 1018
#define ERROR_NO_UNICODE_TRANSLATION 1113
#define ERROR_NOT_FOUND 1168
#define ERROR_INTERNAL_ERROR 1359
#define ERROR_RESOURCE_NAME_NOT_FOUND 1814

#define FACILITY_WIN32 7
#define SUCCEEDED(hr) (static_cast<HRESULT>(hr) >= 0)
#define FAILED(hr) (static_cast<HRESULT>(hr) < 0)
#define HRESULT_CODE(hr) ((hr)&0xFFFF)

constexpr HRESULT HRESULT_FROM_WIN32(DWORD error)
{
    return static_cast<HRESULT>(error) <= 0 ? static_cast<HRESULT>(error)
                                            : static_cast<HRESULT>((error & 0xFFFFu) | 0x80070000u);
}

#define S_OK (static_cast<HRESULT>(0))
#define S_FALSE (static_cast<HRESULT>(1))
#define NOERROR 0
#define E_NOTIMPL (static_cast<HRESULT>(0x80004001u))
#define E_NOINTERFACE (static_cast<HRESULT>(0x80004002u))
#define E_POINTER (static_cast<HRESULT>(0x80004003u))
#define E_ABORT (static_cast<HRESULT>(0x80004004u))
#define E_FAIL (static_cast<HRESULT>(0x80004005u))
#define E_UNEXPECTED (static_cast<HRESULT>(0x8000FFFFu))
#define E_ACCESSDENIED (static_cast<HRESULT>(0x80070005u))
#define E_HANDLE (static_cast<HRESULT>(0x80070006u))
#define E_OUTOFMEMORY (static_cast<HRESULT>(0x8007000Eu))
#define E_INVALIDARG (static_cast<HRESULT>(0x80070057u))
#define DISP_E_TYPEMISMATCH (static_cast<HRESULT>(0x80020005u))
#define DISP_E_BADVARTYPE (static_cast<HRESULT>(0x80020008u))
#define DISP_E_OVERFLOW (static_cast<HRESULT>(0x8002000Au))
#define DISP_E_BADINDEX (static_cast<HRESULT>(0x8002000Bu))
#define DISP_E_ARRAYISLOCKED (static_cast<HRESULT>(0x8002000Du))
#define CLASS_E_NOAGGREGATION (static_cast<HRESULT>(0x80040110u))
#define CLASS_E_CLASSNOTAVAILABLE (static_cast<HRESULT>(0x80040111u))
#define REGDB_E_CLASSNOTREG (static_cast<HRESULT>(0x80040154u))
#define CO_E_NOTINITIALIZED (static_cast<HRESULT>(0x800401F0u))
#define CO_E_CLASSSTRING (static_cast<HRESULT>(0x800401F3u))
#define CO_E_ERRORINDLL (static_cast<HRESULT>(0x800401F9u))

// The calling thread's last error, kept for the module that asks; it changes only when a function fails.
DWORD GetLastError();
void SetLastError(DWORD error);
