// MOF: the words under the parser's hand, and the values that they make.
#include "wbem/MofValues.h"

#include "wbem/MofReader.h"
#include "wbem/Number.h"

#include <algorithm>

namespace wbem
{

namespace
{

// The type that all elements of an array have, given one by one.
class CommonType
{
public:
    // False when the element has no type in common with those before it.
    bool Add(const CimValue& element)
    {
        if (element.IsNull())
            return true;
        const CimType type = element.Type();
        m_negative = m_negative || (IsSigned(type) && element.AsSigned() < 0);
        if (m_type == CimType::Empty || m_type == type)
            m_type = type;
        else if (IsInteger(m_type) && IsInteger(type))
            m_type = std::max(m_type, type, Narrower);
        else if ((IsReal(m_type) || IsInteger(m_type)) && (IsReal(type) || IsInteger(type)))
            m_type = CimType::Real64;
        else if (IsText(m_type) && IsText(type)) // an alias among paths
            m_type = CimType::Reference;
        else
            return false;
        return m_type != CimType::UInt64 || !m_negative;
    }

    CimType Type() const { return m_type; }

private:
    // Of sint32, sint64 and uint64.
    static bool Narrower(CimType left, CimType right)
    {
        const auto rank = [](CimType type) { return type == CimType::SInt32 ? 0 : (type == CimType::SInt64 ? 1 : 2); };
        return rank(left) < rank(right);
    }

    CimType m_type = CimType::Empty;
    bool m_negative = false;
};

} // namespace

MofValues::MofValues(std::wstring_view text, std::uint32_t file, std::vector<MofReading::AliasUse>& aliasUses)
    : m_lexer(text), m_token(m_lexer.Next()), m_file(file), m_aliasUses(aliasUses)
{
}

void MofValues::Expect(wchar_t symbol, const wchar_t* after, std::wstring_view name)
{
    if (!TakeSymbol(symbol))
    {
        Fail(L"a '" + std::wstring(1, symbol) + L"' is expected after " + after + L" " + Quoted(Excerpt(name)));
    }
}

std::wstring MofValues::TakeName(const wchar_t* what)
{
    if (m_token.kind != MofTokenKind::Word)
        Fail(std::wstring(what) + L" is expected");
    std::wstring name(m_token.text);
    Advance();
    return name;
}

std::wstring MofValues::TakeText()
{
    std::wstring text;
    AppendTexts(text);
    return text;
}

void MofValues::AppendTexts(std::wstring& text)
{
    while (m_token.kind == MofTokenKind::Text)
    {
        AppendUnescaped(text, m_token);
        Advance();
    }
}

CimValue MofValues::ParseText()
{
    const MofToken first = m_token;
    Advance();
    if (!first.hasEscapes && m_token.kind != MofTokenKind::Text)
        return CimValue::String(first.text);
    std::wstring text;
    AppendUnescaped(text, first);
    AppendTexts(text);
    return CimValue::String(text);
}

CimValue MofValues::ParseCharacter()
{
    std::wstring text;
    AppendUnescaped(text, m_token);
    if (text.size() != 1 || CodeUnit(text[0]) > 0xFFFF)
        Fail(L"one character of 16 bits is expected between the quotes");
    Advance();
    return CimValue::Char16(static_cast<char16_t>(text[0]));
}

CimValue MofValues::ParseNumberValue()
{
    NumberFault fault = NumberFault::NotANumber;
    const auto number = ParseNumber(m_token.text, IntegerForms::Mof, fault);
    if (!number)
    {
        const std::wstring shown = Excerpt(m_token.text);
        Fail(fault == NumberFault::TooLarge ? L"the number " + shown + L" does not fit 64 bits"
                                            : shown + L" is not a number");
    }
    Advance();
    return *number;
}

CimValue MofValues::ParseValue(std::size_t depth)
{
    if (depth > kMaxMofNesting)
        Fail(L"the value is nested deeper than " + std::to_wstring(kMaxMofNesting) + L" levels");
    switch (m_token.kind)
    {
    case MofTokenKind::Text:
        return ParseText();
    case MofTokenKind::Number:
        return ParseNumberValue();
    case MofTokenKind::Character:
        return ParseCharacter();
    case MofTokenKind::Alias:
    {
        m_aliasUses.push_back({std::wstring(m_token.text), Position()});
        CimValue alias = CimValue::Reference(m_token.text);
        Advance();
        return alias;
    }
    default:
        break;
    }
    if (IsSymbol(L'{'))
        return ParseArray(depth);
    if (IsWord(L"instance"))
        return ParseObject(depth);
    if (TakeWord(L"TRUE"))
        return CimValue::Bool(true);
    if (TakeWord(L"FALSE"))
        return CimValue::Bool(false);
    if (TakeWord(L"NULL"))
        return {};
    Fail(L"a value is expected");
}

CimValue MofValues::ParseArray(std::size_t depth)
{
    Advance();
    std::vector<CimValue> elements;
    CommonType common;
    while (!TakeSymbol(L'}'))
    {
        if (!elements.empty() && !TakeSymbol(L','))
            Fail(L"a ',' or a '}' is expected after a value of the array");
        if (IsSymbol(L'{'))
            Fail(L"an array is no value of an array");
        const MofToken at = m_token;
        CimValue element = ParseValue(depth + 1);
        if (!common.Add(element))
            FailAt(at, L"the values of the array are of types that do not go together");
        elements.push_back(std::move(element));
    }
    for (CimValue& element : elements)
    {
        std::wstring ignored; // the common type holds every element
        if (element.Type() != common.Type())
            element = ConvertTo(element, common.Type(), false, ignored).value_or(element);
    }
    return CimValue::Array(common.Type(), std::move(elements));
}

std::wstring MofValues::TakeInstanceOf()
{
    Advance();
    if (!TakeWord(L"of"))
        Fail(L"'of' is expected after 'instance'");
    return TakeName(L"the class of the instance");
}

CimValue MofValues::ParseAssignment(std::wstring& name, std::size_t depth)
{
    name = TakeName(L"the name of a property");
    Expect(L'=', L"the property", name);
    CimValue value = ParseValue(depth);
    Expect(L';', L"the value of the property", name);
    return value;
}

CimValue MofValues::ParseObject(std::size_t depth)
{
    struct Named
    {
        std::wstring_view name;
        MofPosition position;
    };

    CimObject object;
    object.className = TakeInstanceOf();
    Expect(L'{', L"the instance of", object.className);
    std::vector<MofPosition> positions;
    while (!TakeSymbol(L'}'))
    {
        if (m_token.kind == MofTokenKind::End)
            Fail(L"a '}' is expected at the end of the instance of " + Quoted(Excerpt(object.className)));
        positions.push_back(Position());
        CimObject::Property& property = object.properties.emplace_back();
        property.value = ParseAssignment(property.name, depth + 1);
    }
    std::vector<Named> names;
    for (std::size_t i = 0; i < positions.size(); ++i)
        names.push_back({object.properties[i].name, positions[i]});
    CheckNames(names, L"property");
    return CimValue::Object(std::move(object));
}

} // namespace wbem
