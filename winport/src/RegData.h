// The data of one value in its text form.
#pragma once

#include "winport/src/RegFile.h"

namespace winport
{

// Why something cannot be read.
struct RegFault
{
    std::string reason;
};

// Takes a text in double quotes off the rest, with \\ and \" for the characters themselves. what names it in a fault.
std::wstring ReadQuoted(std::wstring_view& rest, const char* what);

// Reads what stands behind the '=' into the value's type and data, and a comment behind it, if any. Faults are thrown.
// In version 4 the bytes of texts are in the ANSI code page, in version 5 in UTF-16.
void ReadRegData(std::wstring_view text, bool isVersion4, RegValue& value, std::wstring& comment);

// What stands behind the '=' when the value is written.
std::string WriteRegData(const RegValue& value);
// The name or another text in its quotes.
std::string WriteQuoted(std::wstring_view text);

} // namespace winport
