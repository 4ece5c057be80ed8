// The words of a WQL text.
#pragma once

#include "wbem/CimValue.h"
#include "wbem/Parsed.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace wbem
{

enum class WqlTokenKind
{
    End,
    Word,
    Constant, // a number or a quoted text
    Symbol,   // one of = <> != < <= > >= ( ) , * .
    Path,     // {...}
};

struct WqlToken
{
    WqlTokenKind kind = WqlTokenKind::End;
    std::wstring_view text; // as written; of a path what stands between the braces, without spaces around
    CimValue value;         // of a constant
    std::size_t position = 0;
};

// Reads one word after the other; throws ParseError for what is none.
class WqlLexer
{
public:
    explicit WqlLexer(std::wstring_view text) : m_text(text) {}

    WqlToken Next();

private:
    WqlToken ReadText();
    WqlToken ReadNumber();
    WqlToken ReadPath();
    WqlToken ReadSymbol();
    WqlToken Take(WqlTokenKind kind, std::size_t length);

    std::wstring_view m_text;
    std::size_t m_position = 0;
};

} // namespace wbem
