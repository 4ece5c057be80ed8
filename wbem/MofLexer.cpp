// The words of a MOF text.
#include "wbem/MofLexer.h"

#include "wbem/Number.h"
#include "wbem/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace wbem
{

namespace
{

// What an ASCII character can begin.
enum class Start : std::uint8_t
{
    None,
    Name,
    Number,
    Symbol,
    Quote,
    Alias,
    Directive
};

constexpr std::array<Start, 128> MakeStarts()
{
    std::array<Start, 128> starts{};
    const auto mark = [&starts](std::string_view characters, Start start)
    {
        for (const char c : characters)
            starts[static_cast<unsigned char>(c)] = start;
    };
    mark("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", Start::Name);
    mark("0123456789+-.", Start::Number);
    mark("[]{}():;,=", Start::Symbol);
    mark("\"'", Start::Quote);
    mark("$", Start::Alias);
    mark("#", Start::Directive);
    return starts;
}

constexpr std::array<Start, 128> kStarts = MakeStarts();

constexpr std::array<bool, 128> MakeNameParts()
{
    std::array<bool, 128> parts{};
    for (std::size_t c = 0; c < parts.size(); ++c)
        parts[c] = kStarts[c] == Start::Name || (c >= '0' && c <= '9');
    return parts;
}

constexpr std::array<bool, 128> kNameParts = MakeNameParts();

bool IsAscii(wchar_t c)
{
    return CodeUnit(c) < 0x80;
}

bool IsSurrogate(wchar_t c)
{
    return IsHighSurrogate(c) || IsLowSurrogate(c);
}

std::wstring Hex(unsigned value, int digits)
{
    std::wstring text;
    while (digits-- > 0)
        text += L"0123456789ABCDEF"[(value >> (4 * digits)) & 0xF];
    return text;
}

// What stands for a character that cannot be shown, or for half of one.
std::wstring Describe(wchar_t c)
{
    if (c >= 0xDC80 && c <= 0xDCFF)
        return L"the byte 0x" + Hex(static_cast<unsigned>(c) - 0xDC00, 2) + L" is not UTF-8";
    if (IsSurrogate(c))
        return L"the character U+" + Hex(static_cast<unsigned>(c), 4) + L" is half of a surrogate pair";
    if (CodeUnit(c) < L' ' || c == 0x7F)
        return L"the control character U+" + Hex(static_cast<unsigned>(c), 4) + L" is no part of MOF";
    return L"'" + std::wstring(1, c) + L"' is no part of MOF";
}

int HexDigit(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    const wchar_t small = FoldCase(c);
    return small >= L'a' && small <= L'f' ? small - L'a' + 10 : -1;
}

} // namespace

std::uint32_t MofLexer::ColumnOf(std::size_t position) const
{
    return static_cast<std::uint32_t>(position - m_lineStart + 1);
}

void MofLexer::Fail(std::wstring reason, std::size_t position) const
{
    throw MofFault{std::move(reason), m_line, ColumnOf(position)};
}

void MofLexer::FailAtCharacter() const
{
    Fail(Describe(m_text[m_position]), m_position);
}

void MofLexer::CountLine()
{
    ++m_line;
    m_lineStart = m_position;
}

void MofLexer::SkipBlanks()
{
    while (m_position < m_text.size())
    {
        const wchar_t c = m_text[m_position];
        const wchar_t next = m_position + 1 < m_text.size() ? m_text[m_position + 1] : L'\0';
        if (c == L'\n' || c == L'\r')
        {
            m_position += c == L'\r' && next == L'\n' ? 2 : 1;
            CountLine();
        }
        else if (IsSpace(c))
        {
            ++m_position;
        }
        else if (c == L'/' && next == L'/')
        {
            m_position = std::min(m_text.find_first_of(L"\r\n", m_position), m_text.size());
        }
        else if (c == L'/' && next == L'*')
        {
            SkipBlockComment();
        }
        else
        {
            return;
        }
    }
}

void MofLexer::SkipBlockComment()
{
    const std::uint32_t line = m_line;
    const std::uint32_t column = ColumnOf(m_position);
    m_position += 2;
    while (m_position < m_text.size())
    {
        const wchar_t c = m_text[m_position++];
        const wchar_t next = m_position < m_text.size() ? m_text[m_position] : L'\0';
        if (c == L'*' && next == L'/')
        {
            ++m_position;
            return;
        }
        if (c == L'\n' || (c == L'\r' && next != L'\n'))
            CountLine();
    }
    throw MofFault{L"the comment is not closed", line, column};
}

void MofLexer::CheckSurrogates(std::wstring_view text) const
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (!IsSurrogate(text[i]))
            continue;
        // A pair is one character where wide characters have 16 bits, and never appears where they have 32.
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
            ++i;
        else
            Fail(Describe(text[i]), static_cast<std::size_t>(text.data() - m_text.data()) + i);
    }
}

void MofLexer::ReadWord(MofToken& token)
{
    const std::size_t start = m_position++;
    bool ascii = true;
    while (m_position < m_text.size())
    {
        const wchar_t c = m_text[m_position];
        const bool isAscii = IsAscii(c);
        if (isAscii && !kNameParts[CodeUnit(c)])
            break;
        ascii = ascii && isAscii;
        ++m_position;
    }
    token.text = m_text.substr(start, m_position - start);
    if (!ascii || !IsAscii(token.text.front()))
        CheckSurrogates(token.text);
}

void MofLexer::ReadQuotedToken(MofToken& token, wchar_t quote)
{
    const std::size_t start = ++m_position;
    bool surrogates = false;
    for (;; ++m_position)
    {
        const wchar_t c = m_position < m_text.size() ? m_text[m_position] : L'\n';
        if (c == quote)
            break;
        if (c == L'\\' && m_position + 1 < m_text.size() && m_text[m_position + 1] != L'\n' &&
            m_text[m_position + 1] != L'\r')
        {
            token.hasEscapes = true;
            ++m_position;
        }
        else if (c == L'\n' || c == L'\r')
        {
            Fail(quote == L'"' ? L"the text is not closed on its line" : L"the character is not closed on its line",
                 start - 1);
        }
        surrogates = surrogates || IsSurrogate(m_text[m_position]);
    }
    token.text = m_text.substr(start, m_position - start);
    ++m_position;
    if (surrogates)
        CheckSurrogates(token.text);
}

MofToken MofLexer::Next()
{
    SkipBlanks();
    MofToken token;
    token.line = m_line;
    token.column = ColumnOf(m_position);
    if (m_position == m_text.size())
        return token;
    const wchar_t c = m_text[m_position];
    switch (IsAscii(c) ? kStarts[CodeUnit(c)] : Start::Name)
    {
    case Start::Name:
        token.kind = MofTokenKind::Word;
        ReadWord(token);
        break;
    case Start::Number:
        token.kind = MofTokenKind::Number;
        token.text = m_text.substr(m_position, std::max<std::size_t>(NumberExtent(m_text.substr(m_position)), 1));
        m_position += token.text.size();
        break;
    case Start::Symbol:
        token.kind = MofTokenKind::Symbol;
        token.symbol = c;
        token.text = m_text.substr(m_position++, 1);
        break;
    case Start::Quote:
        token.kind = c == L'"' ? MofTokenKind::Text : MofTokenKind::Character;
        ReadQuotedToken(token, c);
        break;
    case Start::Alias:
    case Start::Directive:
        token.kind = c == L'$' ? MofTokenKind::Alias : MofTokenKind::Directive;
        ReadWord(token);
        break;
    default:
        FailAtCharacter();
    }
    return token;
}

namespace
{

// One code unit; the second half of a surrogate pair joins the first where wide characters hold both, as it would if
// the character stood there itself.
void AppendUnit(std::wstring& text, wchar_t unit)
{
    if (sizeof(wchar_t) == 2 || !IsLowSurrogate(unit) || text.empty() || !IsHighSurrogate(text.back()))
    {
        text.push_back(unit);
        return;
    }
    const auto high = static_cast<char32_t>(text.back()) - 0xD800;
    text.pop_back();
    AppendCodePoint(text, 0x10000 + (high << 10) + (static_cast<char32_t>(unit) - 0xDC00));
}

// Appends what the escape at the backslash stands for; answers its length, 0 when it is none.
std::size_t AppendEscape(std::wstring& text, std::wstring_view escape)
{
    constexpr std::wstring_view kKinds = L"btnfr\"'\\";
    constexpr std::wstring_view kMeanings = L"\b\t\n\f\r\"'\\";
    const wchar_t kind = escape[1]; // a backslash is never the last: it would have escaped the closing quote
    if (const std::size_t which = kKinds.find(kind); which != std::wstring_view::npos)
    {
        text.push_back(kMeanings[which]);
        return 2;
    }
    if (kind != L'x' && kind != L'X')
        return 0;
    std::size_t length = 2;
    int code = 0;
    for (; length < 6 && length < escape.size() && HexDigit(escape[length]) >= 0; ++length)
        code = code * 16 + HexDigit(escape[length]);
    if (length == 2)
        return 0;
    AppendUnit(text, static_cast<wchar_t>(code));
    return length;
}

} // namespace

void AppendUnescaped(std::wstring& text, const MofToken& token)
{
    if (!token.hasEscapes)
    {
        text += token.text;
        return;
    }
    const std::wstring_view source = token.text;
    std::size_t i = 0;
    while (i < source.size())
    {
        const std::size_t plain = std::min(source.find(L'\\', i), source.size());
        text += source.substr(i, plain - i);
        i = plain;
        if (i == source.size())
            return;
        const std::size_t length = AppendEscape(text, source.substr(i));
        if (length == 0)
        {
            throw MofFault{L"'" + std::wstring(source.substr(i, 2)) + L"' is no escape", token.line,
                           static_cast<std::uint32_t>(token.column + 1 + i)};
        }
        i += length;
    }
}

} // namespace wbem
