// The words of a WQL text.
#include "wbem/WqlLexer.h"

#include "wbem/Number.h"
#include "wbem/Quoted.h"
#include "wbem/Text.h"

#include <utility>

namespace wbem
{

WqlToken WqlLexer::Take(WqlTokenKind kind, std::size_t length)
{
    WqlToken token{kind, m_text.substr(m_position, length), {}, m_position};
    m_position += length;
    return token;
}

WqlToken WqlLexer::Next()
{
    while (m_position < m_text.size() && IsSpace(m_text[m_position]))
        ++m_position;
    if (m_position == m_text.size())
        return {WqlTokenKind::End, {}, {}, m_position};
    const wchar_t c = m_text[m_position];
    const wchar_t next = m_position + 1 < m_text.size() ? m_text[m_position + 1] : L'\0';
    const bool digitNext = next >= L'0' && next <= L'9';
    if (IsNameStart(c))
    {
        std::size_t length = 1;
        while (m_position + length < m_text.size() && IsNamePart(m_text[m_position + length]))
            ++length;
        return Take(WqlTokenKind::Word, length);
    }
    if (IsQuote(c))
        return ReadText();
    if (c == L'{')
        return ReadPath();
    if ((c >= L'0' && c <= L'9') || c == L'+' || c == L'-' || (c == L'.' && digitNext))
        return ReadNumber();
    return ReadSymbol();
}

WqlToken WqlLexer::ReadText()
{
    const std::size_t start = m_position;
    std::wstring value;
    if (!ReadQuoted(m_text, m_position, value))
        throw ParseError{L"the quoted text is not closed", start};
    return {WqlTokenKind::Constant, m_text.substr(start, m_position - start), CimValue::String(value), start};
}

WqlToken WqlLexer::ReadNumber()
{
    WqlToken token = Take(WqlTokenKind::Constant, NumberExtent(m_text.substr(m_position)));
    NumberFault fault = NumberFault::NotANumber;
    auto value = ParseNumber(token.text, IntegerForms::Plain, fault);
    if (!value)
    {
        throw ParseError{fault == NumberFault::TooLarge
                             ? L"the number " + Excerpt(token.text) + L" does not fit 64 bits"
                             : Excerpt(token.text) + L" is not a number",
                         token.position};
    }
    token.value = *std::move(value);
    return token;
}

WqlToken WqlLexer::ReadPath()
{
    const std::size_t open = m_position++;
    std::wstring ignored;
    while (m_position < m_text.size() && m_text[m_position] != L'}')
    {
        // A brace inside a quoted value belongs to the value.
        if (!IsQuote(m_text[m_position]))
            ++m_position;
        else if (!ReadQuoted(m_text, m_position, ignored))
            throw ParseError{L"the quoted value is not closed", m_position};
    }
    if (m_position == m_text.size())
        throw ParseError{L"a '}' is missing", open};
    std::size_t first = open + 1;
    while (IsSpace(m_text[first]))
        ++first;
    WqlToken token{WqlTokenKind::Path, Trim(m_text.substr(first, m_position - first)), {}, first};
    ++m_position;
    return token;
}

WqlToken WqlLexer::ReadSymbol()
{
    const std::wstring_view two = m_text.substr(m_position, 2);
    if (two == L"<>" || two == L"!=" || two == L"<=" || two == L">=")
        return Take(WqlTokenKind::Symbol, 2);
    if (two[0] != L'\0' && std::wstring_view(L"=<>(),*.").find(two[0]) != std::wstring_view::npos)
        return Take(WqlTokenKind::Symbol, 1);
    if (two[0] <= L' ' || two[0] == 0x7F)
        throw ParseError{L"a control character is no part of a query", m_position};
    throw ParseError{L"'" + std::wstring(two.substr(0, 1)) + L"' is no part of a query", m_position};
}

} // namespace wbem
