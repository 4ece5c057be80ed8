// The ANSI code pages of locales.
#pragma once

#include <windows.h>

namespace winport
{

constexpr UINT NoLocale = 0xFFFFFFFF;

// systemPage for the system's and the user's default locale; NoLocale for an unknown one.
UINT AnsiCodePageOf(LCID locale, UINT systemPage);

} // namespace winport
