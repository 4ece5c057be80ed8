// The string tables of a resource script.
#include "winport/tools/RcFile.h"

#include "winport/tools/RcLexer.h"

namespace
{

class Reader
{
public:
    explicit Reader(const std::filesystem::path& file) : m_lexer(file) {}

    RcTexts Run()
    {
        while (m_lexer.Current().kind != RcKind::End)
            ReadStatement();
        return std::move(m_texts);
    }

private:
    bool Is(const char* word) const
    {
        const RcToken& token = m_lexer.Current();
        return (token.kind == RcKind::Word || token.kind == RcKind::Sign) && token.text == word;
    }

    bool Accept(const char* word)
    {
        const bool is = Is(word);
        if (is)
            m_lexer.Advance();
        return is;
    }

    void ReadStatement()
    {
        if (Accept("LANGUAGE"))
            ReadLanguage();
        else if (Accept("STRINGTABLE"))
            ReadTable();
        else if (m_lexer.Current().kind == RcKind::Number)
            SkipVersionInfo();
        else
            m_lexer.Fail("only STRINGTABLE, LANGUAGE and VERSIONINFO are understood here, not '" +
                         m_lexer.Current().text + "'");
    }

    // The language is that of the whole library.
    void ReadLanguage()
    {
        m_lexer.Advance();
        if (!Accept(","))
            m_lexer.Fail("LANGUAGE takes two values with a comma between them");
        m_lexer.Advance();
    }

    void ReadTable()
    {
        while (!Accept("BEGIN") && !Accept("{"))
        {
            if (Accept("LANGUAGE"))
                ReadLanguage();
            else
                m_lexer.Fail("STRINGTABLE is followed by BEGIN");
        }
        while (!Accept("END") && !Accept("}"))
            ReadEntry();
    }

    void ReadEntry()
    {
        constexpr uint32_t LargestId = 0xFFFF;
        const RcToken id = m_lexer.Current();
        if (id.kind != RcKind::Number)
            m_lexer.Fail("a text's number is expected, not '" + id.text + "'");
        if (id.number > LargestId)
            m_lexer.Fail("a text's number is at most 65535");
        m_lexer.Advance();
        Accept(",");
        if (m_lexer.Current().kind != RcKind::Text)
            m_lexer.Fail("text " + std::to_string(id.number) + " has no text in quotes");
        std::string text;
        for (; m_lexer.Current().kind == RcKind::Text; m_lexer.Advance())
            text += m_lexer.Current().text;
        if (!m_texts.emplace(id.number, text).second)
            m_lexer.Fail("text " + std::to_string(id.number) + " is there twice");
    }

    // Linux has nothing like it.
    void SkipVersionInfo()
    {
        m_lexer.Advance();
        if (!Accept("VERSIONINFO"))
            m_lexer.Fail("only VERSIONINFO is understood behind a number, not '" + m_lexer.Current().text + "'");
        int depth = 0;
        do
        {
            if (m_lexer.Current().kind == RcKind::End)
                m_lexer.Fail("VERSIONINFO has no END");
            depth += Is("BEGIN") || Is("{") ? 1 : Is("END") || Is("}") ? -1 : 0;
            const bool isClosed = depth == 0 && (Is("END") || Is("}"));
            m_lexer.Advance();
            if (isClosed)
                return;
        } while (true);
    }

    RcLexer m_lexer;
    RcTexts m_texts;
};

} // namespace

RcTexts ReadRcFile(const std::filesystem::path& file)
{
    return Reader(file).Run();
}
