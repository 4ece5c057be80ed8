// Names and texts of the status codes that a WMI request can end with.
#pragma once

#include <windows.h>

#include <string>

namespace orl::client
{

struct HresultName
{
    HRESULT code;
    const char* name; // as in the headers that define it
    const char* text; // one sentence for the user
};

// Null when the code is not a known one.
[[nodiscard]] const HresultName* FindHresult(HRESULT code);

// "WBEM_E_NOT_FOUND (0x80041002)", or the number alone for a code without a name.
[[nodiscard]] std::string HresultLabel(HRESULT code);

// The label, a colon, and the text if the code is a known one.
[[nodiscard]] std::string DescribeHresult(HRESULT code);

} // namespace orl::client
