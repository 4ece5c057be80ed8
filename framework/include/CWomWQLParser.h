// CWomWQLParser: a query, as far as a manager can use it to narrow what it sends.
#pragma once

#include "Common/Src/OrlString.h"
#include "framework/include/COrlWmiNamedValue.h"
#include "framework/include/OrlFrameworkApi.h"

#include <wbemcli.h>

#include <vector>

// The service filters what a manager sends, so a manager may send too much but never too little. That is why a query
// that could not be parsed is no error here: the manager asks Failed and sends everything.
class ORL_FRAMEWORK_API CWomWQLParser
{
public:
    // WBEM_E_INVALID_QUERY for anything that is no SELECT query; FailureText says what is wrong and where. Out of
    // memory throws.
    HRESULT Parse(const wchar_t* query);

    // True also before the first Parse.
    bool Failed() const { return m_failureCode != 0; }
    ULONG FailureCode() const { return m_failureCode; } // 0: none
    const COrlString& FailureText() const { return m_failureText; }

    // The value that the attribute must have: that of an `=` which every match fulfils. An `=` under OR or NOT
    // restricts nothing. Null when there is none. Owned by this object until the next Parse.
    const COrlWmiNamedValue* GetAttributeRestriction(const wchar_t* name) const;

    const COrlString& Text() const { return m_text; }
    const COrlString& ClassName() const { return m_className; }

private:
    ULONG m_failureCode = static_cast<ULONG>(WBEM_E_INVALID_QUERY);
    COrlString m_failureText;
    COrlString m_text;
    COrlString m_className;
    std::vector<COrlWmiNamedValue> m_restrictions;
};
