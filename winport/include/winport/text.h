// Conversions between wide text and the code pages.
//
// Both directions return the number of units written, or needed when the destination size is 0, and 0 with a last error
// when they fail. A length of -1 takes the source with its terminator. A character that a code page lacks becomes its
// default character; near misses ("best fit") are not looked for.
#pragma once

#include "winport/errors.h"

#define CP_ACP 0u
#define CP_THREAD_ACP 3u
#define CP_UTF8 65001u

#define MB_PRECOMPOSED 0x1u
#define MB_ERR_INVALID_CHARS 0x8u
#define WC_ERR_INVALID_CHARS 0x80u
#define WC_NO_BEST_FIT_CHARS 0x400u

#define LOCALE_SYSTEM_DEFAULT 0x0800u
#define LOCALE_USER_DEFAULT 0x0400u
#define LOCALE_IDEFAULTANSICODEPAGE 0x1004u

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source, int sourceLength, LPWSTR destination,
                        int destinationSize);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR source, int sourceLength, LPSTR destination,
                        int destinationSize, LPCSTR defaultCharacter, LPBOOL usedDefault);

// The ANSI code page that stands for CP_ACP: 1252.
UINT GetACP();

// Knows LOCALE_IDEFAULTANSICODEPAGE. Returns the characters written with the terminator, or needed when the size is 0.
int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR data, int size);
