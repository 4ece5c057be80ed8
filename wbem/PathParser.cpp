// Object paths: parsing, left to right, one character of lookahead.
#include "wbem/ObjectPath.h"

#include "wbem/Number.h"
#include "wbem/Quoted.h"
#include "wbem/Text.h"

#include <utility>

namespace wbem
{

namespace
{

bool IsSlash(wchar_t c)
{
    return c == L'\\' || c == L'/';
}

// Throws ParseError; Parse and ParseNamespace turn it into their answer.
class PathParser
{
public:
    explicit PathParser(std::wstring_view text) : m_text(text) {}

    ObjectPath ParsePath()
    {
        Begin();
        if (StartsWithLocation())
            ParseLocation();
        if (AtEnd() && !m_path.namespaces.empty())
            return std::move(m_path);
        m_path.className = Name(L"a class name");
        ParseKeys();
        return std::move(m_path);
    }

    ObjectPath ParseNamespacePath()
    {
        Begin();
        ParseServer();
        ParseNamespaces();
        if (!AtEnd())
            Fail(L"a slash or the end of the namespace is expected");
        return std::move(m_path);
    }

private:
    [[noreturn]] void Fail(std::wstring reason, std::size_t position) { throw ParseError{std::move(reason), position}; }
    [[noreturn]] void Fail(std::wstring reason) { Fail(std::move(reason), m_position); }

    bool AtEnd() const { return m_position == m_end; }
    wchar_t Peek() const { return AtEnd() ? L'\0' : m_text[m_position]; }
    bool Take(wchar_t c)
    {
        if (AtEnd() || m_text[m_position] != c)
            return false;
        ++m_position;
        return true;
    }
    bool TakeSlash()
    {
        if (AtEnd() || !IsSlash(m_text[m_position]))
            return false;
        ++m_position;
        return true;
    }
    void SkipSpaces()
    {
        while (!AtEnd() && IsSpace(m_text[m_position]))
            ++m_position;
    }

    void Begin()
    {
        if (m_text.size() > kMaxPathLength)
            Fail(L"the path is longer than " + std::to_wstring(kMaxPathLength) + L" characters", kMaxPathLength);
        if (const std::size_t null = m_text.find(L'\0'); null != std::wstring_view::npos)
            Fail(L"a null character is no part of a path", null);
        m_end = m_text.size();
        while (m_end > 0 && IsSpace(m_text[m_end - 1]))
            --m_end;
        m_text = m_text.substr(0, m_end);
        SkipSpaces();
        if (AtEnd())
            Fail(L"the path is empty");
    }

    // A slash in front, or a name that a slash or a colon follows.
    bool StartsWithLocation() const
    {
        std::size_t i = m_position;
        while (i < m_end && IsNamePart(m_text[i]))
            ++i;
        return i < m_end && (IsSlash(m_text[i]) || m_text[i] == L':');
    }

    void ParseLocation()
    {
        ParseServer();
        ParseNamespaces();
        if (!Take(L':'))
        {
            if (!AtEnd())
                Fail(L"a slash, a ':' or the end of the path is expected");
        }
        else if (AtEnd())
        {
            Fail(L"a class name is expected");
        }
    }

    void ParseServer()
    {
        if (!TakeSlash() || !TakeSlash())
            return; // one slash leads from the root of the namespaces
        const std::size_t start = m_position;
        while (!AtEnd() && !IsSlash(Peek()) && Peek() > L' ' && !IsQuote(Peek()))
            ++m_position;
        if (m_position == start)
            Fail(L"a server name is expected");
        m_path.server = m_text.substr(start, m_position - start);
        if (!TakeSlash())
            Fail(L"a slash and a namespace are expected after the server");
    }

    void ParseNamespaces()
    {
        do
            m_path.namespaces.push_back(Name(L"a namespace"));
        while (TakeSlash());
    }

    std::wstring Name(const wchar_t* what)
    {
        const std::size_t start = m_position;
        if (!IsNameStart(Peek()))
            Fail(std::wstring(what) + L" is expected");
        while (!AtEnd() && IsNamePart(m_text[m_position]))
            ++m_position;
        return std::wstring(m_text.substr(start, m_position - start));
    }

    void ParseKeys()
    {
        SkipSpaces();
        if (AtEnd())
            return;
        if (Take(L'='))
        {
            SkipSpaces();
            m_path.isSingleton = Take(L'@');
            if (!m_path.isSingleton)
                m_path.keys.push_back({{}, Value()});
        }
        else if (Take(L'.'))
        {
            do
                ParseKey();
            while (TakeSeparator());
        }
        else
        {
            Fail(L"a '.', a '=' or the end of the path is expected after the class");
        }
        SkipSpaces();
        if (!AtEnd())
        {
            Fail(m_path.isSingleton            ? L"the end of the path is expected after '=@'"
                 : m_path.keys[0].name.empty() ? L"the end of the path is expected after the value"
                                               : L"a ',' or the end of the path is expected after the value");
        }
    }

    bool TakeSeparator()
    {
        SkipSpaces();
        return Take(L',');
    }

    void ParseKey()
    {
        SkipSpaces();
        const std::size_t start = m_position;
        std::wstring name = Name(L"a key name");
        if (m_path.FindKey(name))
            Fail(L"the key " + Quoted(Excerpt(name)) + L" is given twice", start);
        if (m_path.keys.size() == kMaxPathKeys)
            Fail(L"the path has more than " + std::to_wstring(kMaxPathKeys) + L" keys", start);
        SkipSpaces();
        if (!Take(L'='))
            Fail(L"a '=' is expected after the key " + Quoted(Excerpt(name)));
        SkipSpaces();
        CimValue value = Value();
        m_path.keys.push_back({std::move(name), std::move(value)});
    }

    CimValue Value()
    {
        if (AtEnd())
            Fail(L"a value is expected");
        if (IsQuote(Peek()))
        {
            std::wstring value;
            if (!ReadQuoted(m_text, m_position, value))
                Fail(L"the quoted value is not closed");
            return CimValue::String(value);
        }
        const std::size_t start = m_position;
        while (!AtEnd() && Peek() != L',' && !IsSpace(Peek()))
            ++m_position;
        const std::wstring_view word = m_text.substr(start, m_position - start);
        if (word.empty())
            Fail(L"a value is expected");
        return BareValue(word, start);
    }

    CimValue BareValue(std::wstring_view word, std::size_t start)
    {
        if (EqualNoCase(word, L"TRUE"))
            return CimValue::Bool(true);
        if (EqualNoCase(word, L"FALSE"))
            return CimValue::Bool(false);
        NumberFault fault = NumberFault::NotANumber;
        if (auto number = ParseInteger(word, IntegerForms::Plain, fault))
            return *std::move(number);
        if (fault == NumberFault::TooLarge)
            Fail(L"the number " + Excerpt(word) + L" does not fit 64 bits", start);
        Fail(L"the value " + Excerpt(word) + L" is neither quoted nor an integer nor TRUE or FALSE", start);
    }

    std::wstring_view m_text;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    ObjectPath m_path;
};

} // namespace

Parsed<ObjectPath> ObjectPath::Parse(std::wstring_view text)
{
    try
    {
        return PathParser(text).ParsePath();
    }
    catch (ParseError& error)
    {
        return std::move(error);
    }
}

Parsed<ObjectPath> ObjectPath::ParseNamespace(std::wstring_view text)
{
    try
    {
        return PathParser(text).ParseNamespacePath();
    }
    catch (ParseError& error)
    {
        return std::move(error);
    }
}

} // namespace wbem
