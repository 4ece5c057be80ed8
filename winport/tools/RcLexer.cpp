// The words of a resource script.
#include "winport/tools/RcLexer.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>

namespace
{

std::string ReadWhole(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error(file.string() + ": cannot be opened");
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsWordStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

std::string_view TrimLeft(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

// Takes a word off the text.
std::string_view TakeWord(std::string_view& text)
{
    size_t length = 0;
    while (length < text.size() && (IsWordStart(text[length]) || (length > 0 && IsDigit(text[length]))))
        ++length;
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(length);
    return word;
}

// Takes a number off the text: decimal, or hexadecimal behind 0x; an L may follow.
std::optional<uint32_t> TakeNumber(std::string_view& text)
{
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const char* begin = text.data() + (isHex ? 2 : 0);
    uint32_t number = 0;
    const auto read = std::from_chars(begin, text.data() + text.size(), number, isHex ? 16 : 10);
    if (read.ec != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<size_t>(read.ptr - text.data()));
    if (text.starts_with('L'))
        text.remove_prefix(1);
    return number;
}

} // namespace

RcLexer::RcLexer(const std::filesystem::path& file) : m_file(file), m_bytes(ReadWhole(file)), m_rest(m_bytes)
{
    if (At("\xEF\xBB\xBF"))
        m_rest.remove_prefix(3);
    Advance();
}

void RcLexer::Fail(const std::string& reason) const
{
    const size_t line = m_token.line ? m_token.line : m_line;
    throw std::runtime_error(m_file.string() + ":" + std::to_string(line) + ": " + reason);
}

char RcLexer::Take()
{
    const char c = m_rest.front();
    m_rest.remove_prefix(1);
    if (c == '\n')
        ++m_line;
    m_atLineStart = c == '\n' || (m_atLineStart && IsBlank(c));
    return c;
}

void RcLexer::Advance()
{
    SkipBlanks();
    m_token = {RcKind::End, {}, 0, m_line};
    if (m_rest.empty())
        return;
    if (At("\"") || At("L\""))
        ReadText();
    else if (IsWordStart(m_rest.front()))
        ReadWord();
    else if (IsDigit(m_rest.front()))
        ReadNumber();
    else
        m_token = {RcKind::Sign, std::string(1, Take()), 0, m_token.line};
}

void RcLexer::SkipBlanks()
{
    while (!m_rest.empty())
    {
        if (m_atLineStart && At("#"))
            ReadDirective();
        else if (At("//"))
            while (!m_rest.empty() && m_rest.front() != '\n')
                Take();
        else if (At("/*"))
            SkipComment();
        else if (IsBlank(m_rest.front()))
            Take();
        else
            return;
    }
}

void RcLexer::SkipComment()
{
    m_token.line = m_line;
    while (!At("*/"))
    {
        if (m_rest.empty())
            Fail("the comment has no end");
        Take();
    }
    Take();
    Take();
}

void RcLexer::ReadDirective()
{
    m_token.line = m_line;
    std::string_view line = m_rest.substr(1, std::min(m_rest.find('\n'), m_rest.size()) - 1);
    m_rest.remove_prefix(line.size() + 1);
    line = TrimLeft(line);
    const std::string_view word = TakeWord(line);
    line = TrimLeft(line);
    if (word == "define")
        ReadDefine(line);
    else if (word == "include")
    {
        const size_t end = line.find('"', 1);
        if (line.starts_with('"') && end != std::string_view::npos)
            ReadHeader(m_file.parent_path() / line.substr(1, end - 1));
    }
    else if (word != "pragma")
        Fail("#" + std::string(word) + " is not understood here");
}

void RcLexer::ReadDefine(std::string_view rest)
{
    const std::string name(TakeWord(rest));
    rest = TrimLeft(rest);
    if (const auto number = TakeNumber(rest))
        m_numbers[name] = *number;
}

void RcLexer::ReadHeader(const std::filesystem::path& header)
{
    // Of a header only the numbers matter.
    const std::string bytes = ReadWhole(header);
    std::string_view rest = bytes;
    while (!rest.empty())
    {
        std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        line = TrimLeft(line);
        if (!line.starts_with('#'))
            continue;
        line = TrimLeft(line.substr(1));
        if (TakeWord(line) == "define")
            ReadDefine(TrimLeft(line));
    }
}

void RcLexer::ReadWord()
{
    m_atLineStart = false;
    m_token.text = TakeWord(m_rest);
    m_token.kind = RcKind::Word;
    const auto defined = m_numbers.find(m_token.text);
    if (defined == m_numbers.end())
        return;
    m_token.kind = RcKind::Number;
    m_token.number = defined->second;
}

void RcLexer::ReadNumber()
{
    m_atLineStart = false;
    const auto number = TakeNumber(m_rest);
    if (!number)
        Fail("the number is too large");
    m_token.kind = RcKind::Number;
    m_token.number = *number;
}

void RcLexer::ReadText()
{
    if (At("L"))
        Take();
    Take();
    m_token.kind = RcKind::Text;
    for (;;)
    {
        if (m_rest.empty() || At("\n"))
            Fail("the text has no closing quote");
        const char c = Take();
        if (c == '\\')
            ReadEscape();
        else if (c != '"')
            m_token.text += c;
        else if (At("\""))
            m_token.text += Take();
        else
            return;
    }
}

void RcLexer::ReadEscape()
{
    constexpr std::string_view Names = "abfnrtv\\\"";
    constexpr std::string_view Characters = "\a\b\f\n\r\t\v\\\"";
    const char c = m_rest.empty() ? '\0' : Take();
    const size_t known = Names.find(c);
    if (c == '\0' || known == std::string_view::npos)
        Fail(std::string("the escape '\\") + c + "' is not understood here");
    m_token.text += Characters[known];
}
