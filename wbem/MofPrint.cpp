// MOF: declarations as text.
#include "wbem/Mof.h"

#include "wbem/Text.h"

namespace wbem
{

namespace
{

struct BitName
{
    std::uint16_t bit;
    const wchar_t* name;
};

constexpr BitName kFlavorNames[] = {
    {kFlavorToInstance, L"ToInstance"},
    {kFlavorNotToInstance, L"NotToInstance"},
    {kFlavorToSubclass, L"ToSubclass"},
    {kFlavorNotToSubclass, L"NotToSubclass"},
    {kFlavorDisableOverride, L"DisableOverride"},
    {kFlavorEnableOverride, L"EnableOverride"},
    {kFlavorRestricted, L"Restricted"},
    {kFlavorTranslatable, L"Translatable"},
    {kFlavorAmended, L"Amended"},
};

constexpr BitName kScopeNames[] = {
    {kScopeSchema, L"schema"},         {kScopeClass, L"class"},         {kScopeAssociation, L"association"},
    {kScopeIndication, L"indication"}, {kScopeQualifier, L"qualifier"}, {kScopeProperty, L"property"},
    {kScopeReference, L"reference"},   {kScopeMethod, L"method"},       {kScopeParameter, L"parameter"},
};

template <std::size_t N>
std::wstring JoinBits(const BitName (&names)[N], std::uint16_t bits, const wchar_t* separator)
{
    std::wstring text;
    for (const auto& [bit, name] : names)
    {
        if ((bits & bit) == 0)
            continue;
        text += text.empty() ? L"" : separator;
        text += name;
    }
    return text;
}

void AppendCode(std::wstring& text, unsigned code)
{
    text += L"\\x";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += L"0123456789ABCDEF"[(code >> shift) & 0xF];
}

bool IsPair(std::wstring_view text, std::size_t at)
{
    return IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
}

void AppendEscaped(std::wstring& text, wchar_t c)
{
    constexpr std::wstring_view kPlain = L"\b\t\n\f\r\"'\\";
    constexpr std::wstring_view kKinds = L"btnfr\"'\\";
    if (const std::size_t which = kPlain.find(c); which != std::wstring_view::npos)
    {
        text += L'\\';
        text += kKinds[which];
    }
    else if (CodeUnit(c) < L' ' || c == 0x7F || IsHighSurrogate(c) || IsLowSurrogate(c))
    {
        AppendCode(text, static_cast<unsigned>(c));
    }
    else
    {
        text += c;
    }
}

// Everything that would not survive between quotes is escaped; an apostrophe needs it only in a character.
void AppendText(std::wstring& text, std::wstring_view value)
{
    text += L'"';
    for (std::size_t i = 0; i < value.size(); ++i)
    {
        if (value[i] == L'\'')
        {
            text += L'\'';
        }
        else if (IsPair(value, i))
        {
            text += value.substr(i++, 2);
        }
        else
        {
            AppendEscaped(text, value[i]);
        }
    }
    text += L'"';
}

void AppendValue(std::wstring& text, const CimValue& value, int depth);

void Indent(std::wstring& text, int depth)
{
    text.append(static_cast<std::size_t>(depth), L'\t');
}

void AppendObject(std::wstring& text, const CimObject& object, int depth)
{
    text += L"instance of " + object.className + L"\n";
    Indent(text, depth);
    text += L"{\n";
    for (const auto& [name, value] : object.properties)
    {
        Indent(text, depth + 1);
        text += name + L" = ";
        AppendValue(text, value, depth + 1);
        text += L";\n";
    }
    Indent(text, depth);
    text += L'}';
}

void AppendArray(std::wstring& text, const CimValue& value, int depth)
{
    const wchar_t* separator = L"";
    text += L'{';
    for (const CimValue& element : value.Elements())
    {
        text += separator;
        AppendValue(text, element, depth);
        separator = L", ";
    }
    text += L'}';
}

void AppendValue(std::wstring& text, const CimValue& value, int depth)
{
    if (value.IsNull())
        text += L"NULL";
    else if (value.IsArray())
        AppendArray(text, value, depth);
    else if (value.Type() == CimType::Reference && value.AsText().substr(0, 1) == L"$")
        text += value.AsText();
    else if (IsText(value.Type()))
        AppendText(text, value.AsText());
    else if (value.Type() == CimType::Object)
        AppendObject(text, *value.AsObject(), depth);
    else if (value.Type() == CimType::Char16)
    {
        text += L'\'';
        AppendEscaped(text, static_cast<wchar_t>(value.AsUnsigned()));
        text += L'\'';
    }
    else
        text += PlainText(value);
}

void AppendQualifier(std::wstring& text, const MofQualifier& qualifier)
{
    text += qualifier.name;
    const CimValue& value = qualifier.value;
    const bool isTrue = !value.IsArray() && value.Type() == CimType::Boolean && value.AsBool();
    if (value.IsArray() && !value.IsNull())
    {
        AppendArray(text, value, 0);
    }
    else if (!isTrue)
    {
        text += L'(';
        AppendValue(text, value, 0);
        text += L')';
    }
    if (qualifier.flavors != 0)
        text += L" : " + JoinBits(kFlavorNames, qualifier.flavors, L" ");
}

void AppendQualifiers(std::wstring& text, const std::vector<MofQualifier>& qualifiers, wchar_t behind)
{
    if (qualifiers.empty())
        return;
    const wchar_t* separator = L"[";
    for (const MofQualifier& qualifier : qualifiers)
    {
        text += separator;
        AppendQualifier(text, qualifier);
        separator = L", ";
    }
    text += L']';
    text += behind;
}

std::wstring TypeText(const MofType& type)
{
    if (type.type == CimType::Empty)
        return L"void";
    if (type.type == CimType::Reference)
        return (type.className.empty() ? L"object" : type.className) + L" ref";
    if (type.isEmbeddedText)
        return L"string";
    if (type.type == CimType::Object && !type.className.empty())
        return type.className;
    return std::wstring(CimTypeName(type.type));
}

std::wstring ArraySuffix(const MofType& type)
{
    if (!type.isArray)
        return {};
    return L"[" + (type.arraySize ? std::to_wstring(*type.arraySize) : std::wstring()) + L"]";
}

void AppendProperty(std::wstring& text, const MofProperty& property)
{
    AppendQualifiers(text, property.qualifiers, L' ');
    text += TypeText(property.type) + L" " + property.name + ArraySuffix(property.type);
    if (property.defaultValue)
    {
        text += L" = ";
        AppendValue(text, *property.defaultValue, 1);
    }
}

void AppendMethod(std::wstring& text, const MofMethod& method)
{
    AppendQualifiers(text, method.qualifiers, L' ');
    text += TypeText(method.result) + L" " + method.name + L"(";
    const wchar_t* separator = L"";
    for (const MofProperty& parameter : method.parameters)
    {
        text += separator;
        AppendProperty(text, parameter);
        separator = L", ";
    }
    text += L')';
}

} // namespace

std::wstring PrintClass(const MofClass& declaration)
{
    std::wstring text;
    AppendQualifiers(text, declaration.qualifiers, L'\n');
    text += L"class " + declaration.name;
    if (!declaration.alias.empty())
        text += L" as " + declaration.alias;
    if (!declaration.superclass.empty())
        text += L" : " + declaration.superclass;
    text += L"\n{\n";
    for (const MofProperty& property : declaration.properties)
    {
        text += L'\t';
        AppendProperty(text, property);
        text += L";\n";
    }
    for (const MofMethod& method : declaration.methods)
    {
        text += L'\t';
        AppendMethod(text, method);
        text += L";\n";
    }
    return text + L"};\n";
}

std::wstring PrintInstance(const MofInstance& declaration)
{
    std::wstring text;
    AppendQualifiers(text, declaration.qualifiers, L'\n');
    text += L"instance of " + declaration.className;
    if (!declaration.alias.empty())
        text += L" as " + declaration.alias;
    text += L"\n{\n";
    for (const MofInstance::Property& property : declaration.properties)
    {
        text += L'\t';
        AppendQualifiers(text, property.qualifiers, L' ');
        text += property.name + L" = ";
        AppendValue(text, property.value, 1);
        text += L";\n";
    }
    return text + L"};\n";
}

std::wstring PrintQualifierDeclaration(const MofQualifierDeclaration& declaration)
{
    std::wstring text =
        L"Qualifier " + declaration.name + L" : " + TypeText(declaration.type) + ArraySuffix(declaration.type);
    if (declaration.defaultValue)
    {
        text += L" = ";
        AppendValue(text, *declaration.defaultValue, 0);
    }
    if (declaration.scopes == kScopeAny)
        text += L", Scope(any)";
    else if (declaration.scopes != 0)
        text += L", Scope(" + JoinBits(kScopeNames, declaration.scopes, L", ") + L")";
    if (declaration.flavors != 0)
        text += L", Flavor(" + JoinBits(kFlavorNames, declaration.flavors, L", ") + L")";
    return text + L";\n";
}

std::wstring PrintMofValue(const CimValue& value)
{
    std::wstring text;
    AppendValue(text, value, 0);
    return text;
}

} // namespace wbem
