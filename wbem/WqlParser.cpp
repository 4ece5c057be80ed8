// WQL: parsing, by descent with one word of lookahead.
#include "wbem/Wql.h"

#include "wbem/Text.h"
#include "wbem/WqlLexer.h"

#include <array>
#include <iterator>
#include <utility>

namespace wbem
{

namespace
{

constexpr std::wstring_view kReserved[] = {L"SELECT", L"FROM", L"WHERE", L"AND",  L"OR",   L"NOT",
                                           L"LIKE",   L"IS",   L"ISA",   L"NULL", L"TRUE", L"FALSE"};

struct OperatorSymbol
{
    std::wstring_view text;
    WqlOperator op;
    WqlOperator mirrored; // with the sides exchanged
};

constexpr OperatorSymbol kOperatorSymbols[] = {
    {L"=", WqlOperator::Equal, WqlOperator::Equal},
    {L"<>", WqlOperator::NotEqual, WqlOperator::NotEqual},
    {L"!=", WqlOperator::NotEqual, WqlOperator::NotEqual},
    {L"<", WqlOperator::Less, WqlOperator::Greater},
    {L"<=", WqlOperator::LessOrEqual, WqlOperator::GreaterOrEqual},
    {L">", WqlOperator::Greater, WqlOperator::Less},
    {L">=", WqlOperator::GreaterOrEqual, WqlOperator::LessOrEqual},
};

// A keyword of the association queries that takes a name.
struct NameKeyword
{
    std::wstring_view text;
    std::wstring WqlQuery::*member;
    bool ofReferences;
};

constexpr NameKeyword kNameKeywords[] = {
    {L"AssocClass", &WqlQuery::assocClass, false},
    {L"ResultClass", &WqlQuery::resultClass, true},
    {L"ResultRole", &WqlQuery::resultRole, false},
    {L"Role", &WqlQuery::role, true},
    {L"RequiredQualifier", &WqlQuery::requiredQualifier, true},
    {L"RequiredAssocQualifier", &WqlQuery::requiredAssocQualifier, false},
};

struct FlagKeyword
{
    std::wstring_view text;
    bool WqlQuery::*member;
};

constexpr FlagKeyword kFlagKeywords[] = {
    {L"ClassDefsOnly", &WqlQuery::classDefsOnly},
    {L"KeysOnly", &WqlQuery::keysOnly},
    {L"SchemaOnly", &WqlQuery::schemaOnly},
};

template <class Table>
auto FindEntry(const Table& table, std::wstring_view text)
{
    const auto* entry = std::begin(table);
    while (entry != std::end(table) && !EqualNoCase(entry->text, text))
        ++entry;
    return entry == std::end(table) ? nullptr : entry;
}

// One side of a comparison.
struct Operand
{
    bool isProperty = false;
    WqlProperty property;
    CimValue value;
    std::size_t position = 0;
};

// Throws ParseError.
class WqlParser
{
public:
    explicit WqlParser(std::wstring_view text) : m_lexer(text)
    {
        if (text.size() > kMaxQueryLength)
            Fail(L"the query is longer than " + std::to_wstring(kMaxQueryLength) + L" characters", kMaxQueryLength);
        if (const std::size_t null = text.find(L'\0'); null != std::wstring_view::npos)
            Fail(L"a null character is no part of a query", null);
        Advance();
    }

    WqlQuery Parse()
    {
        if (IsEnd())
            Fail(L"the query is empty");
        if (TakeWord(L"SELECT"))
            ParseSelect();
        else if (TakeWord(L"ASSOCIATORS"))
            ParseAssociation(WqlKind::Associators);
        else if (TakeWord(L"REFERENCES"))
            ParseAssociation(WqlKind::References);
        else
            Fail(L"SELECT, ASSOCIATORS OF or REFERENCES OF is expected");
        if (!IsEnd())
            Fail(L"the end of the query is expected");
        return std::move(m_query);
    }

private:
    [[noreturn]] void Fail(std::wstring reason, std::size_t position) { throw ParseError{std::move(reason), position}; }
    [[noreturn]] void Fail(std::wstring reason) { Fail(std::move(reason), m_token.position); }

    void Advance() { m_token = m_lexer.Next(); }
    bool IsEnd() const { return m_token.kind == WqlTokenKind::End; }
    bool IsSymbol(std::wstring_view text) const { return m_token.kind == WqlTokenKind::Symbol && m_token.text == text; }
    bool IsWord(std::wstring_view text) const
    {
        return m_token.kind == WqlTokenKind::Word && EqualNoCase(m_token.text, text);
    }
    bool IsReserved() const
    {
        for (const std::wstring_view word : kReserved)
        {
            if (IsWord(word))
                return true;
        }
        return false;
    }
    bool TakeSymbol(std::wstring_view text)
    {
        const bool there = IsSymbol(text);
        if (there)
            Advance();
        return there;
    }
    bool TakeWord(std::wstring_view text)
    {
        const bool there = IsWord(text);
        if (there)
            Advance();
        return there;
    }
    void ExpectWord(std::wstring_view text)
    {
        if (!TakeWord(text))
            Fail(std::wstring(text) + L" is expected");
    }

    std::wstring TakeName(const wchar_t* what)
    {
        if (m_token.kind != WqlTokenKind::Word || IsReserved())
            Fail(std::wstring(what) + L" is expected");
        std::wstring name(m_token.text);
        Advance();
        return name;
    }

    std::wstring TakePropertyName()
    {
        std::wstring name = TakeName(L"a property name");
        while (TakeSymbol(L"."))
            name += L'.' + TakeName(L"a property name");
        return name;
    }

    void ParseSelect()
    {
        if (!TakeSymbol(L"*"))
        {
            NameSet seen;
            do
            {
                std::wstring name = TakePropertyName();
                if (seen.insert(name).second)
                    m_query.selected.push_back(std::move(name));
            } while (TakeSymbol(L","));
        }
        if (!IsWord(L"FROM"))
            Fail(m_query.selected.empty() ? L"FROM is expected" : L"a ',' or FROM is expected");
        Advance();
        m_query.className = TakeName(L"a class name");
        if (TakeWord(L"WHERE"))
            m_query.where = ParseOr(0);
        else if (!IsEnd())
            Fail(L"WHERE or the end of the query is expected");
    }

    WqlCondition ParseOr(std::size_t depth)
    {
        return ParseList(WqlCondition::Kind::Or, L"OR", &WqlParser::ParseAnd, depth);
    }

    WqlCondition ParseAnd(std::size_t depth)
    {
        return ParseList(WqlCondition::Kind::And, L"AND", &WqlParser::ParseFactor, depth);
    }

    WqlCondition ParseList(WqlCondition::Kind kind, std::wstring_view word,
                           WqlCondition (WqlParser::*parseOperand)(std::size_t), std::size_t depth)
    {
        WqlCondition first = (this->*parseOperand)(depth);
        if (!IsWord(word))
            return first;
        WqlCondition list;
        list.kind = kind;
        Append(list, std::move(first));
        while (TakeWord(word))
            Append(list, (this->*parseOperand)(depth));
        return list;
    }

    // A list inside a list of the same kind means the same without its parentheses.
    static void Append(WqlCondition& list, WqlCondition operand)
    {
        if (operand.kind != list.kind)
        {
            list.operands.push_back(std::move(operand));
            return;
        }
        for (WqlCondition& inner : operand.operands)
            list.operands.push_back(std::move(inner));
    }

    WqlCondition ParseFactor(std::size_t depth)
    {
        if (depth > kMaxQueryNesting)
            Fail(L"the WHERE clause is nested deeper than " + std::to_wstring(kMaxQueryNesting) + L" levels");
        const std::size_t start = m_token.position;
        if (TakeWord(L"NOT"))
        {
            WqlCondition negation;
            negation.kind = WqlCondition::Kind::Not;
            negation.operands.push_back(ParseFactor(depth + 1));
            return negation;
        }
        if (!TakeSymbol(L"("))
            return ParseTest();
        WqlCondition inner = ParseOr(depth + 1);
        if (!TakeSymbol(L")"))
        {
            Fail(L"a ')' is expected for the '(' at character " + std::to_wstring(start + 1));
        }
        return inner;
    }

    WqlProperty UseProperty(std::wstring name)
    {
        const auto [entry, isNew] = m_propertyIndexes.try_emplace(name, m_query.testedProperties.size());
        if (isNew)
            m_query.testedProperties.push_back(name);
        return {std::move(name), entry->second};
    }

    bool AtConstant() const
    {
        return m_token.kind == WqlTokenKind::Constant || IsWord(L"TRUE") || IsWord(L"FALSE") || IsWord(L"NULL");
    }

    CimValue TakeConstant()
    {
        CimValue value = m_token.value;
        if (IsWord(L"TRUE") || IsWord(L"FALSE"))
            value = CimValue::Bool(IsWord(L"TRUE"));
        Advance();
        return value;
    }

    Operand ParseOperand(const wchar_t* expected)
    {
        Operand operand;
        operand.position = m_token.position;
        if (AtConstant())
        {
            operand.value = TakeConstant();
            return operand;
        }
        if (m_token.kind != WqlTokenKind::Word || IsReserved())
            Fail(std::wstring(expected) + L" is expected");
        operand.isProperty = true;
        operand.property = UseProperty(TakePropertyName());
        return operand;
    }

    WqlCondition ParseTest()
    {
        Operand left = ParseOperand(L"a property or a value");
        WqlCondition condition;
        condition.test.property = left.property;
        if (IsWord(L"IS") || IsWord(L"ISA") || IsWord(L"LIKE") || IsWord(L"NOT"))
        {
            if (!left.isProperty)
                Fail(L"a property is expected on the left of " + FoldedKeyword(), left.position);
            ParseWordTest(condition.test);
            return condition;
        }
        const OperatorSymbol* symbol =
            m_token.kind == WqlTokenKind::Symbol ? FindEntry(kOperatorSymbols, m_token.text) : nullptr;
        if (!symbol)
            Fail(L"an operator is expected");
        const std::size_t operatorAt = m_token.position;
        Advance();
        Operand right = ParseOperand(L"a property or a value");
        if (!left.isProperty && !right.isProperty)
            Fail(L"one side of a comparison must be a property", left.position);
        condition.test.op = left.isProperty ? symbol->op : symbol->mirrored;
        if (left.isProperty && right.isProperty)
            condition.test.other = right.property;
        else if (left.isProperty)
            condition.test.value = right.value;
        else
            condition.test.value = left.value;
        if (right.isProperty && !left.isProperty)
            condition.test.property = right.property;
        if (!condition.test.other && condition.test.value.IsNull())
            TurnIntoNullTest(condition.test, operatorAt);
        return condition;
    }

    std::wstring FoldedKeyword() const
    {
        std::wstring keyword;
        for (const wchar_t c : m_token.text)
            keyword.push_back(c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c);
        return keyword;
    }

    void TurnIntoNullTest(WqlTest& test, std::size_t operatorAt)
    {
        if (test.op == WqlOperator::Equal)
            test.op = WqlOperator::IsNull;
        else if (test.op == WqlOperator::NotEqual)
            test.op = WqlOperator::IsNotNull;
        else
            Fail(L"NULL is neither less nor greater than anything", operatorAt);
    }

    void ParseWordTest(WqlTest& test)
    {
        if (TakeWord(L"ISA"))
        {
            test.op = WqlOperator::IsA;
            const bool quoted = m_token.kind == WqlTokenKind::Constant && IsName(m_token.value.AsText());
            if (!quoted && (m_token.kind != WqlTokenKind::Word || IsReserved()))
                Fail(L"a class name is expected after ISA");
            test.value = quoted ? m_token.value : CimValue::String(m_token.text);
            Advance();
            return;
        }
        if (TakeWord(L"IS"))
        {
            test.op = TakeWord(L"NOT") ? WqlOperator::IsNotNull : WqlOperator::IsNull;
            ExpectWord(L"NULL");
            return;
        }
        test.op = TakeWord(L"NOT") ? WqlOperator::NotLike : WqlOperator::Like;
        ExpectWord(L"LIKE");
        if (m_token.kind != WqlTokenKind::Constant || m_token.value.Type() != CimType::String)
            Fail(L"a quoted pattern is expected after LIKE");
        if (m_token.value.AsText().size() > kMaxLikePattern)
            Fail(L"the pattern is longer than " + std::to_wstring(kMaxLikePattern) + L" characters");
        test.value = m_token.value;
        test.pattern = std::make_shared<const LikePattern>(test.value.AsText());
        Advance();
    }

    void ParseAssociation(WqlKind kind)
    {
        m_query.kind = kind;
        ExpectWord(L"OF");
        if (m_token.kind != WqlTokenKind::Path)
            Fail(L"an object path in braces is expected");
        auto path = ObjectPath::Parse(m_token.text);
        if (!path)
            Fail(path.Error().reason, m_token.position + path.Error().position);
        if (path->IsNamespace())
            Fail(L"the path of a class or an instance is expected");
        m_query.object = *std::move(path);
        m_query.objectText = m_token.text;
        Advance();
        if (IsEnd())
            return;
        if (!TakeWord(L"WHERE"))
            Fail(L"WHERE or the end of the query is expected");
        do
            ParseAssociationKeyword();
        while (!IsEnd());
    }

    void ParseAssociationKeyword()
    {
        if (m_token.kind != WqlTokenKind::Word)
            Fail(L"a keyword of an association query is expected");
        if (const FlagKeyword* flag = FindEntry(kFlagKeywords, m_token.text))
        {
            if (m_query.*flag->member)
                Fail(std::wstring(flag->text) + L" is given twice");
            m_query.*flag->member = true;
            Advance();
            return;
        }
        const NameKeyword* keyword = FindEntry(kNameKeywords, m_token.text);
        if (!keyword)
            Fail(Excerpt(m_token.text) + L" is not a keyword of an association query");
        if (!keyword->ofReferences && m_query.kind == WqlKind::References)
            Fail(std::wstring(keyword->text) + L" does not belong to REFERENCES OF");
        if (!(m_query.*keyword->member).empty())
            Fail(std::wstring(keyword->text) + L" is given twice");
        Advance();
        if (!TakeSymbol(L"="))
            Fail(L"a '=' is expected after " + std::wstring(keyword->text));
        const bool quoted = m_token.kind == WqlTokenKind::Constant && IsName(m_token.value.AsText());
        if (!quoted && m_token.kind != WqlTokenKind::Word)
            Fail(L"a name is expected after " + std::wstring(keyword->text));
        m_query.*keyword->member = quoted ? m_token.value.AsText() : m_token.text;
        Advance();
    }

    WqlLexer m_lexer;
    WqlToken m_token;
    WqlQuery m_query;
    NameMap<std::size_t> m_propertyIndexes;
};

} // namespace

Parsed<WqlQuery> WqlQuery::Parse(std::wstring_view text)
{
    try
    {
        return WqlParser(text).Parse();
    }
    catch (ParseError& error)
    {
        return std::move(error);
    }
}

} // namespace wbem
