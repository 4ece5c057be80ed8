// The words of a MOF text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace wbem
{

enum class MofTokenKind
{
    End,
    Word,
    Alias,     // $Name, with the '$'
    Number,    // not yet looked at
    Text,      // one "..." as written, without its quotes
    Character, // '...', likewise
    Symbol,    // one of [ ] { } ( ) : ; , =
    Directive, // #pragma, with the '#'
};

struct MofToken
{
    MofTokenKind kind = MofTokenKind::End;
    bool hasEscapes = false; // of Text and Character
    wchar_t symbol = 0;      // of Symbol
    std::uint32_t line = 1;
    std::uint32_t column = 1;
    std::wstring_view text; // into the source
};

// What is wrong at a place of the text.
struct MofFault
{
    std::wstring reason;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

// Reads one word after the other, in one pass and without a copy; throws MofFault for what is none.
class MofLexer
{
public:
    // The text must outlive the lexer and its tokens.
    explicit MofLexer(std::wstring_view text) : m_text(text) {}

    MofToken Next();

private:
    void SkipBlanks();
    void SkipBlockComment();
    void CountLine();
    void ReadQuotedToken(MofToken& token, wchar_t quote);
    void ReadWord(MofToken& token);
    std::uint32_t ColumnOf(std::size_t position) const;
    [[noreturn]] void Fail(std::wstring reason, std::size_t position) const;
    [[noreturn]] void FailAtCharacter() const;
    void CheckSurrogates(std::wstring_view text) const;

    std::wstring_view m_text;
    std::size_t m_position = 0;
    std::size_t m_lineStart = 0;
    std::uint32_t m_line = 1;
};

// The characters that a Text or Character token stands for, appended. Throws MofFault for an escape that is none.
void AppendUnescaped(std::wstring& text, const MofToken& token);

} // namespace wbem
