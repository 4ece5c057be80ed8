// MOF: the words under the parser's hand, and the values that they make.
#pragma once

#include "wbem/MofParser.h"
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace wbem
{

// The base of the parser: one word of lookahead, failures, names, values. Everything throws MofFault.
class MofValues
{
protected:
    MofValues(std::wstring_view text, std::uint32_t file, std::vector<MofReading::AliasUse>& aliasUses);

    const MofToken& Token() const { return m_token; }
    void Advance() { m_token = m_lexer.Next(); }
    std::uint32_t File() const { return m_file; }

    MofPosition PositionOf(const MofToken& token) const { return {m_file, token.line, token.column}; }
    MofPosition Position() const { return PositionOf(m_token); }

    [[noreturn]] static void FailAt(const MofToken& token, std::wstring reason)
    {
        throw MofFault{std::move(reason), token.line, token.column};
    }
    [[noreturn]] void Fail(std::wstring reason) const { FailAt(m_token, std::move(reason)); }

    bool IsSymbol(wchar_t symbol) const { return m_token.symbol == symbol; }
    bool TakeSymbol(wchar_t symbol)
    {
        const bool there = IsSymbol(symbol);
        if (there)
            Advance();
        return there;
    }
    // "a ';' is expected after the class "Name"".
    void Expect(wchar_t symbol, const wchar_t* after, std::wstring_view name);

    bool IsWord(std::wstring_view word) const
    {
        return m_token.kind == MofTokenKind::Word && EqualNoCase(m_token.text, word);
    }
    bool TakeWord(std::wstring_view word)
    {
        const bool there = IsWord(word);
        if (there)
            Advance();
        return there;
    }
    std::wstring TakeName(const wchar_t* what);

    // One or more texts in a row, joined.
    std::wstring TakeText();
    CimValue ParseNumberValue();
    // Any value, typed as it is written (MofInstance::Property says how).
    CimValue ParseValue(std::size_t depth = 0);
    // "instance of Class" up to the class, which it answers.
    std::wstring TakeInstanceOf();
    // "Name = value;", the name into `name`.
    CimValue ParseAssignment(std::wstring& name, std::size_t depth = 0);

    // Fails at the first item that has the name of an earlier one.
    template <class Item>
    void CheckNames(const std::vector<Item>& items, const wchar_t* what) const;

private:
    void AppendTexts(std::wstring& text);
    CimValue ParseText();
    CimValue ParseCharacter();
    CimValue ParseArray(std::size_t depth);
    CimValue ParseObject(std::size_t depth);

    MofLexer m_lexer;
    MofToken m_token;
    std::uint32_t m_file;
    std::vector<MofReading::AliasUse>& m_aliasUses;
};

template <class Item>
void MofValues::CheckNames(const std::vector<Item>& items, const wchar_t* what) const
{
    const auto fail = [what](const Item& item)
    {
        throw MofFault{L"the " + std::wstring(what) + L" " + Quoted(Excerpt(item.name)) + L" is given twice",
                       item.position.line, item.position.column};
    };
    // A handful is looked through faster than a set is made.
    constexpr std::size_t kHandful = 16;
    if (items.size() <= kHandful)
    {
        for (std::size_t i = 1; i < items.size(); ++i)
        {
            for (std::size_t j = 0; j < i; ++j)
            {
                if (EqualNoCase(items[i].name, items[j].name))
                    fail(items[i]);
            }
        }
        return;
    }
    std::unordered_set<std::wstring_view, NameHash, NameEqual> seen(items.size());
    for (const Item& item : items)
    {
        if (!seen.insert(item.name).second)
            fail(item);
    }
}

} // namespace wbem
