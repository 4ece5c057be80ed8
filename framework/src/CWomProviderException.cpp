// CWomProviderException: what a failure carries, and all of it in one line.

#include "framework/include/CWomProviderException.h"

#include <utility>

namespace
{

// Agents and loaders use it for "failed" without a reason.
constexpr ULONG NoReason = 0xFFFFFFFF;

HRESULT StatusOf(const CResult& result)
{
    const HRESULT status = static_cast<HRESULT>(result.ulErrCode);
    return FAILED(status) && result.ulErrCode != NoReason ? status : WBEM_E_FAILED;
}

COrlString TextOf(const wchar_t* text)
{
    return text != nullptr ? COrlString(text) : COrlString();
}

void AppendHexadecimal(std::wstring& line, ULONG value)
{
    line += L"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        line += L"0123456789ABCDEF"[(value >> shift) & 0xF];
}

// Texts come from agents and clients; whatever breaks a line in them must not break the trace's.
void AppendOnOneLine(std::wstring& line, const wchar_t* text)
{
    for (; *text != L'\0'; ++text)
        line += *text < L' ' ? L' ' : *text;
}

} // namespace

CWomFailure::CWomFailure(const CResult& result) : m_wbemStatus(StatusOf(result)), m_hasResult(true), m_result(result) {}

CWomProviderException::CWomProviderException(const CWomContext& context, ULONG providerCode, const CComBSTR& text,
                                             const CWomFailure& failure, const wchar_t* sourceName, int line,
                                             const COrlString& extraText, std::vector<CComBSTR> inserts)
    : m_contextStatus(context.ulStatus), m_providerCode(providerCode), m_text(TextOf(text.m_str)), m_failure(failure),
      m_sourceName(TextOf(sourceName)), m_line(line), m_extraText(extraText), m_inserts(std::move(inserts))
{
}

CWomProviderException::CWomProviderException(const CWomContext& context, const CResult& result, const CComBSTR& text,
                                             const wchar_t* sourceName, int line, const COrlString& extraText,
                                             std::vector<CComBSTR> inserts)
    : CWomProviderException(context, result.ulErrCode, text, CWomFailure(result), sourceName, line, extraText,
                            std::move(inserts))
{
}

COrlString CWomProviderException::FormatErrorMessage() const
{
    std::wstring line;
    AppendOnOneLine(line, m_text.empty() ? L"The request failed" : m_text.c_str());
    if (!m_extraText.empty())
    {
        line += L": ";
        AppendOnOneLine(line, m_extraText.c_str());
    }
    const wchar_t* separator = L" [";
    for (const CComBSTR& insert : m_inserts)
    {
        line += std::exchange(separator, L", ");
        AppendOnOneLine(line, insert.m_str != nullptr ? insert.m_str : L"");
    }
    if (!m_inserts.empty())
        line += L']';
    line += L" (code ";
    AppendHexadecimal(line, m_providerCode);
    line += L", status ";
    AppendHexadecimal(line, static_cast<ULONG>(WbemStatus()));
    if (const CResult* result = Result())
    {
        line += L", result ";
        AppendHexadecimal(line, result->ulErrCode);
        line += L'/';
        AppendHexadecimal(line, result->ulReserved);
    }
    if (m_contextStatus != 0)
    {
        line += L", request status ";
        AppendHexadecimal(line, m_contextStatus);
    }
    if (!m_sourceName.empty())
    {
        line += L", ";
        AppendOnOneLine(line, m_sourceName.c_str());
        line += L" line " + std::to_wstring(m_line);
    }
    line += L')';
    return COrlString(std::move(line));
}
