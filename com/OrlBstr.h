// OrlBstr: the one place where this product's code makes BSTRs, so that a test can make the n-th of them fail.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstddef>

// A BSTR of the text's first `length` characters (zeros included), to be freed with SysFreeString; null when memory is
// short. Without a text the characters are the caller's to fill.
BSTR OrlAllocBstr(const wchar_t* text, std::size_t length);
// The same of a zero-terminated text; null for a null text.
BSTR OrlAllocBstr(const wchar_t* text);

// For tests: makes the n-th allocation from now on fail, once, in this module; 0 calls that off.
void OrlFailBstrAllocation(ULONG n);
// How many BSTRs this module has made or failed to make.
ULONG OrlBstrAllocations();
