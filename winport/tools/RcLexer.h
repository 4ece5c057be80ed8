// The words of a resource script.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

enum class RcKind
{
    Word,
    Number,
    Text,
    Sign,
    End,
};

struct RcToken
{
    RcKind kind = RcKind::End;
    // The word, the sign, or a text without its quotes and escapes, in UTF-8.
    std::string text;
    uint32_t number = 0;
    size_t line = 0;
};

// Reads a whole script; names that #define gave a number come as that number.
class RcLexer
{
public:
    explicit RcLexer(const std::filesystem::path& file);

    const RcToken& Current() const { return m_token; }
    void Advance();

    [[noreturn]] void Fail(const std::string& reason) const;

private:
    void SkipBlanks();
    void SkipComment();
    // A line that begins with '#'.
    void ReadDirective();
    void ReadDefine(std::string_view rest);
    void ReadHeader(const std::filesystem::path& header);
    void ReadWord();
    void ReadNumber();
    void ReadText();
    void ReadEscape();
    bool At(std::string_view text) const { return m_rest.starts_with(text); }
    char Take();

    std::filesystem::path m_file;
    std::string m_bytes;
    std::string_view m_rest;
    size_t m_line = 1;
    bool m_atLineStart = true;
    std::map<std::string, uint32_t, std::less<>> m_numbers;
    RcToken m_token;
};
