// CWomProviderException: how a manager's operation fails.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"
#include "framework/include/CResult.h"
#include "framework/include/CWomContext.h"
#include "framework/include/OrlFrameworkApi.h"

#include <type_traits>
#include <vector>

// What a failure comes from: a WBEM status, or the record that an agent filled.
class ORL_FRAMEWORK_API CWomFailure
{
public:
    // A status is written as HRESULT, ULONG or enumerator; all mean the same 32 bits.
    template <typename Status>
    requires(std::is_integral_v<Status> || std::is_enum_v<Status>) CWomFailure(Status status)
        : m_wbemStatus(static_cast<HRESULT>(status)) // NOLINT(google-explicit-constructor)
    {
    }
    // An agent's code that is itself a failed HRESULT becomes the status, any other code is WBEM_E_FAILED. -1, with
    // which loaders and agents say no more than that they failed, is no HRESULT.
    CWomFailure(const CResult& result); // NOLINT(google-explicit-constructor)

    HRESULT WbemStatus() const { return m_wbemStatus; }
    // Null when the failure did not come from an agent.
    const CResult* Result() const { return m_hasResult ? &m_result : nullptr; }

private:
    HRESULT m_wbemStatus;
    bool m_hasResult = false;
    CResult m_result;
};

// The COM face turns it into the call's status and an __ExtendedStatus object for the client.
class ORL_FRAMEWORK_API CWomProviderException
{
public:
    // The text and the inserts are the caller's words and are not looked up anywhere. `sourceName` may be null.
    CWomProviderException(const CWomContext& context, ULONG providerCode, const CComBSTR& text,
                          const CWomFailure& failure, const wchar_t* sourceName, int line,
                          const COrlString& extraText = COrlString(), std::vector<CComBSTR> inserts = {});
    // For a failure that has no provider code beside the agent's own, which then stands for it.
    CWomProviderException(const CWomContext& context, const CResult& result, const CComBSTR& text,
                          const wchar_t* sourceName, int line, const COrlString& extraText = COrlString(),
                          std::vector<CComBSTR> inserts = {});

    // The request's status word as it was when the exception was made.
    ULONG ContextStatus() const { return m_contextStatus; }
    ULONG ProviderCode() const { return m_providerCode; }
    const COrlString& Text() const { return m_text; }
    HRESULT WbemStatus() const { return m_failure.WbemStatus(); }
    // Null unless the exception was made from an agent's record.
    const CResult* Result() const { return m_failure.Result(); }
    const COrlString& SourceName() const { return m_sourceName; }
    int Line() const { return m_line; }
    const COrlString& ExtraText() const { return m_extraText; }
    const std::vector<CComBSTR>& Inserts() const { return m_inserts; }

    // All of it in one line, for the trace and for the client.
    COrlString FormatErrorMessage() const;

private:
    ULONG m_contextStatus;
    ULONG m_providerCode;
    COrlString m_text;
    CWomFailure m_failure;
    COrlString m_sourceName;
    int m_line;
    COrlString m_extraText;
    std::vector<CComBSTR> m_inserts;
};
