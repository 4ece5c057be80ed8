// CWomWQLParser: what every match of a query has in common.

#include "framework/include/CWomWQLParser.h"

#include "framework/src/CimVariant.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

namespace
{

std::wstring_view NextWord(std::wstring_view& rest)
{
    while (!rest.empty() && wbem::IsSpace(rest.front()))
        rest.remove_prefix(1);
    size_t length = 0;
    while (length < rest.size() && !wbem::IsSpace(rest[length]))
        ++length;
    const std::wstring_view word = rest.substr(0, length);
    rest.remove_prefix(length);
    return word;
}

// The class of a query that does not parse, so that its manager can still be asked and sends everything. Empty when the
// query does not even name one.
std::wstring_view GuessClass(std::wstring_view query)
{
    while (!query.empty())
    {
        if (!wbem::EqualNoCase(NextWord(query), L"from"))
            continue;
        const std::wstring_view name = NextWord(query);
        return wbem::IsName(name) ? name : std::wstring_view();
    }
    return {};
}

} // namespace

HRESULT CWomWQLParser::Parse(const wchar_t* query)
{
    m_failureCode = static_cast<ULONG>(WBEM_E_INVALID_QUERY);
    m_failureText.clear();
    m_className.clear();
    m_restrictions.clear();
    m_text = query != nullptr ? query : L"";

    const wbem::Parsed<wbem::WqlQuery> parsed = wbem::WqlQuery::Parse(m_text);
    if (!parsed)
    {
        m_failureText = parsed.Error().Text();
        m_className = std::wstring(GuessClass(m_text));
        return WBEM_E_INVALID_QUERY;
    }
    if (parsed->kind != wbem::WqlKind::Select || parsed->IsSchemaQuery())
    {
        m_failureText = L"only the instances of a class can be queried here";
        return WBEM_E_INVALID_QUERY;
    }
    m_className = parsed->className;
    for (const std::wstring& property : parsed->testedProperties)
    {
        const wbem::CimValue* value = parsed->RequiredValue(property);
        if (value != nullptr)
            m_restrictions.push_back({COrlString(property), orl::CimVariant(*value)});
    }
    m_failureCode = 0;
    return WBEM_S_NO_ERROR;
}

const COrlWmiNamedValue* CWomWQLParser::GetAttributeRestriction(const wchar_t* name) const
{
    return orl::FindNamedValue(m_restrictions, name);
}
