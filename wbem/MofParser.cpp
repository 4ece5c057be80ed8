// MOF: from words to declarations, by descent with one word of lookahead.
#include "wbem/MofParser.h"

#include "wbem/MofReader.h"
#include "wbem/MofValues.h"
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"

#include <iterator>
#include <utility>

namespace wbem
{

namespace
{

struct NamedBit
{
    std::wstring_view name;
    std::uint16_t bit;
};

constexpr NamedBit kFlavors[] = {
    {L"ToInstance", kFlavorToInstance},
    {L"ToSubclass", kFlavorToSubclass},
    {L"DisableOverride", kFlavorDisableOverride},
    {L"EnableOverride", kFlavorEnableOverride},
    {L"Restricted", kFlavorRestricted},
    {L"Translatable", kFlavorTranslatable},
    {L"Amended", kFlavorAmended},
    {L"NotToInstance", kFlavorNotToInstance},
    {L"NotToSubclass", kFlavorNotToSubclass},
};

constexpr NamedBit kScopes[] = {
    {L"schema", kScopeSchema},           {L"class", kScopeClass},
    {L"association", kScopeAssociation}, {L"indication", kScopeIndication},
    {L"qualifier", kScopeQualifier},     {L"property", kScopeProperty},
    {L"reference", kScopeReference},     {L"method", kScopeMethod},
    {L"parameter", kScopeParameter},     {L"any", kScopeAny},
};

std::uint16_t FindBit(const NamedBit* first, const NamedBit* last, std::wstring_view name)
{
    for (; first != last; ++first)
    {
        if (EqualNoCase(first->name, name))
            return first->bit;
    }
    return 0;
}

class MofParser : private MofValues
{
public:
    MofParser(std::wstring_view text, std::uint32_t file, std::wstring nameSpace, MofReading& reading,
              const MofInclude& include)
        : MofValues(text, file, reading.aliasUses), m_reading(reading), m_include(include),
          m_nameSpace(std::move(nameSpace))
    {
    }

    void Parse()
    {
        while (Token().kind != MofTokenKind::End)
        {
            if (Token().kind == MofTokenKind::Directive)
                ParsePragma();
            else
                ParseDeclaration();
        }
    }

private:
    void Add(MofDeclaration declaration) { m_reading.document.declarations.push_back(std::move(declaration)); }

    void ParseDeclaration()
    {
        std::vector<MofQualifier> qualifiers = ParseQualifiers();
        if (IsWord(L"class"))
            ParseClass(std::move(qualifiers));
        else if (IsWord(L"instance"))
            ParseInstance(std::move(qualifiers));
        else if (IsWord(L"Qualifier") && qualifiers.empty())
            ParseQualifierDeclaration();
        else if (qualifiers.empty())
            Fail(L"a class, an instance, a qualifier declaration or a pragma is expected");
        else
            Fail(L"a class or an instance is expected after the qualifiers");
    }

    // The alias of the declaration that will be added next.
    std::wstring ParseAlias()
    {
        if (!TakeWord(L"as"))
            return {};
        if (Token().kind != MofTokenKind::Alias || Token().text.size() < 2)
            Fail(L"an alias is expected after 'as'");
        std::wstring alias(Token().text);
        MofDocument& document = m_reading.document;
        NameMap<std::size_t>& aliases = document.aliases[document.files[File()].root];
        if (!aliases.emplace(alias, document.declarations.size()).second)
            Fail(L"the alias " + Excerpt(alias) + L" is declared twice");
        Advance();
        return alias;
    }

    void ParseClass(std::vector<MofQualifier> qualifiers)
    {
        MofClass declaration;
        declaration.position = Position();
        declaration.nameSpace = m_nameSpace;
        declaration.qualifiers = std::move(qualifiers);
        Advance();
        declaration.name = TakeName(L"the name of the class");
        declaration.alias = ParseAlias();
        if (TakeSymbol(L':'))
            declaration.superclass = TakeName(L"the name of the superclass");
        Expect(L'{', L"the class", declaration.name);
        while (!TakeSymbol(L'}'))
            ParseFeature(declaration);
        Expect(L';', L"the class", declaration.name);
        CheckNames(declaration.properties, L"property");
        CheckNames(declaration.methods, L"method");
        Add(std::move(declaration));
    }

    void ParseFeature(MofClass& declaration)
    {
        if (Token().kind == MofTokenKind::End)
            Fail(L"a '}' is expected at the end of the class " + Quoted(Excerpt(declaration.name)));
        std::vector<MofQualifier> qualifiers = ParseQualifiers();
        MofType type;
        const MofToken name = ParseTypeAndName(type, qualifiers);
        if (IsSymbol(L'('))
        {
            ParseMethod(declaration.methods.emplace_back(), std::move(type), name, std::move(qualifiers));
            return;
        }
        MofProperty& property = declaration.properties.emplace_back();
        ParsePropertyRest(property, std::move(type), name, std::move(qualifiers));
        Expect(L';', L"the property", property.name);
    }

    void ParseMethod(MofMethod& method, MofType result, const MofToken& name, std::vector<MofQualifier> qualifiers)
    {
        method.name = name.text;
        method.position = PositionOf(name);
        method.result = std::move(result);
        method.qualifiers = std::move(qualifiers);
        Advance();
        if (!TakeSymbol(L')'))
        {
            do
                ParseParameter(method);
            while (TakeSymbol(L','));
            Expect(L')', L"the parameters of the method", method.name);
        }
        Expect(L';', L"the method", method.name);
        CheckNames(method.parameters, L"parameter");
    }

    void ParseParameter(MofMethod& method)
    {
        std::vector<MofQualifier> qualifiers = ParseQualifiers();
        MofType type;
        const MofToken name = ParseTypeAndName(type, qualifiers);
        ParsePropertyRest(method.parameters.emplace_back(), std::move(type), name, std::move(qualifiers));
    }

    // The type, filled in, and the name that follows it.
    MofToken ParseTypeAndName(MofType& type, const std::vector<MofQualifier>& qualifiers)
    {
        if (Token().kind != MofTokenKind::Word)
            Fail(L"a type is expected");
        const MofToken typeWord = Token();
        Advance();
        MofToken name = Token();
        if (name.kind != MofTokenKind::Word)
            Fail(L"a name is expected after the type " + Excerpt(typeWord.text));
        Advance();
        const auto basicType = CimTypeFromName(typeWord.text);
        if (EqualNoCase(name.text, L"ref") && Token().kind == MofTokenKind::Word)
        {
            if (basicType && *basicType != CimType::Object)
                FailAt(typeWord, L"a reference leads to a class, not to " + std::wstring(CimTypeName(*basicType)));
            name = Token();
            Advance();
            type.type = CimType::Reference;
            type.className = basicType ? std::wstring_view() : typeWord.text;
        }
        else if (basicType)
        {
            type.type = *basicType;
            MarkEmbedded(type, qualifiers);
        }
        else if (!EqualNoCase(typeWord.text, L"void"))
        {
            type.type = CimType::Object;
            type.className = typeWord.text;
        }
        return name;
    }

    // The DMTF's embedded objects are strings with a qualifier.
    static void MarkEmbedded(MofType& type, const std::vector<MofQualifier>& qualifiers)
    {
        if (type.type != CimType::String)
            return;
        const MofQualifier* instance = FindQualifier(qualifiers, L"EmbeddedInstance");
        const MofQualifier* object = FindQualifier(qualifiers, L"EmbeddedObject");
        const bool namesClass = instance && instance->value.Type() == CimType::String && !instance->value.IsArray();
        if (!namesClass && !(object && object->value.AsBool()))
            return;
        type.type = CimType::Object;
        type.isEmbeddedText = true;
        if (namesClass)
            type.className = instance->value.AsText();
    }

    // What follows the name of a property or a parameter.
    void ParsePropertyRest(MofProperty& property, MofType type, const MofToken& name,
                           std::vector<MofQualifier> qualifiers)
    {
        property.name = name.text;
        property.position = PositionOf(name);
        property.type = std::move(type);
        property.qualifiers = std::move(qualifiers);
        if (property.type.type == CimType::Empty)
            FailAt(name, L"void is the result of a method and not the type of " + Quoted(Excerpt(property.name)));
        ParseArraySuffix(property.type);
        if (TakeSymbol(L'='))
            property.defaultValue = ParseTypedValue(property.type);
    }

    void ParseArraySuffix(MofType& type)
    {
        if (!TakeSymbol(L'['))
            return;
        type.isArray = true;
        if (!IsSymbol(L']'))
        {
            std::wstring ignored;
            const MofToken at = Token();
            const auto size = Token().kind == MofTokenKind::Number
                                  ? ConvertTo(ParseNumberValue(), CimType::UInt32, false, ignored)
                                  : std::nullopt;
            if (!size)
                FailAt(at, L"a ']' or the size of the array is expected");
            type.arraySize = static_cast<std::uint32_t>(size->AsUnsigned());
        }
        if (!TakeSymbol(L']'))
            Fail(L"a ']' is expected after the size of the array");
    }

    CimValue ParseTypedValue(const MofType& type)
    {
        const MofToken at = Token();
        const CimValue value = ParseValue();
        std::wstring reason;
        auto converted = ConvertTo(value, type.type, type.isArray, reason);
        if (!converted)
            FailAt(at, std::move(reason));
        if (type.arraySize && converted->Elements().size() > *type.arraySize)
        {
            FailAt(at, std::to_wstring(converted->Elements().size()) + L" values do not fit an array of " +
                           std::to_wstring(*type.arraySize));
        }
        return *std::move(converted);
    }

    std::vector<MofQualifier> ParseQualifiers()
    {
        std::vector<MofQualifier> qualifiers;
        if (!TakeSymbol(L'['))
            return qualifiers;
        do
            ParseQualifier(qualifiers.emplace_back());
        while (TakeSymbol(L','));
        if (!TakeSymbol(L']'))
            Fail(L"a ',' or a ']' is expected after the qualifier " + Quoted(Excerpt(qualifiers.back().name)));
        CheckNames(qualifiers, L"qualifier");
        return qualifiers;
    }

    void ParseQualifier(MofQualifier& qualifier)
    {
        qualifier.position = Position();
        qualifier.name = TakeName(L"the name of a qualifier");
        qualifier.value = CimValue::Bool(true);
        if (IsSymbol(L'{'))
        {
            qualifier.value = ParseValue();
        }
        else if (TakeSymbol(L'('))
        {
            qualifier.value = ParseValue();
            if (!TakeSymbol(L')'))
                Fail(L"a ')' is expected after the value of the qualifier " + Quoted(Excerpt(qualifier.name)));
        }
        if (!TakeSymbol(L':'))
            return;
        do
            qualifier.flavors |= TakeBit(std::begin(kFlavors), std::end(kFlavors), L"a flavor");
        while (Token().kind == MofTokenKind::Word);
    }

    std::uint16_t TakeBit(const NamedBit* first, const NamedBit* last, const wchar_t* what)
    {
        if (Token().kind != MofTokenKind::Word)
            Fail(std::wstring(what) + L" is expected");
        const std::uint16_t bit = FindBit(first, last, Token().text);
        if (bit == 0)
            Fail(Excerpt(Token().text) + L" is not " + what);
        Advance();
        return bit;
    }

    // ", Scope(a, b)", without the comma.
    template <std::size_t N>
    std::uint16_t ParseBits(const NamedBit (&names)[N], const wchar_t* what)
    {
        Advance();
        if (!TakeSymbol(L'('))
            Fail(L"a '(' is expected");
        std::uint16_t bits = 0;
        do
            bits |= TakeBit(std::begin(names), std::end(names), what);
        while (TakeSymbol(L','));
        if (!TakeSymbol(L')'))
            Fail(L"a ',' or a ')' is expected");
        return bits;
    }

    void ParseQualifierDeclaration()
    {
        MofQualifierDeclaration declaration;
        declaration.position = Position();
        declaration.nameSpace = m_nameSpace;
        Advance();
        declaration.name = TakeName(L"the name of the qualifier");
        Expect(L':', L"the qualifier", declaration.name);
        const auto type = Token().kind == MofTokenKind::Word ? CimTypeFromName(Token().text) : std::nullopt;
        if (!type || *type == CimType::Object)
            Fail(L"the type of the qualifier " + Quoted(Excerpt(declaration.name)) + L" is expected");
        declaration.type.type = *type;
        Advance();
        ParseArraySuffix(declaration.type);
        if (TakeSymbol(L'='))
            declaration.defaultValue = ParseTypedValue(declaration.type);
        while (TakeSymbol(L','))
        {
            if (IsWord(L"Scope") && declaration.scopes == 0)
                declaration.scopes = ParseBits(kScopes, L"a scope");
            else if (IsWord(L"Flavor") && declaration.flavors == 0)
                declaration.flavors = ParseBits(kFlavors, L"a flavor");
            else
                Fail(L"Scope or Flavor is expected, once each");
        }
        Expect(L';', L"the qualifier", declaration.name);
        Add(std::move(declaration));
    }

    void ParseInstance(std::vector<MofQualifier> qualifiers)
    {
        MofInstance declaration;
        declaration.position = Position();
        declaration.nameSpace = m_nameSpace;
        declaration.qualifiers = std::move(qualifiers);
        declaration.className = TakeInstanceOf();
        declaration.alias = ParseAlias();
        Expect(L'{', L"the instance of", declaration.className);
        while (!TakeSymbol(L'}'))
        {
            if (Token().kind == MofTokenKind::End)
                Fail(L"a '}' is expected at the end of the instance of " + Quoted(Excerpt(declaration.className)));
            MofInstance::Property& property = declaration.properties.emplace_back();
            property.qualifiers = ParseQualifiers();
            property.position = Position();
            property.value = ParseAssignment(property.name);
        }
        Expect(L';', L"the instance of", declaration.className);
        CheckNames(declaration.properties, L"property");
        Add(std::move(declaration));
    }

    void ParsePragma()
    {
        const MofToken directive = Token();
        if (!EqualNoCase(directive.text, L"#pragma"))
            Fail(Excerpt(directive.text) + L" is no directive of MOF");
        Advance();
        MofPragma pragma;
        pragma.position = PositionOf(directive);
        pragma.nameSpace = m_nameSpace;
        pragma.name = TakeName(L"the name of the pragma");
        const MofToken argument = Token().symbol == L'(' ? ParseArguments(pragma) : directive;
        if (EqualNoCase(pragma.name, L"include"))
            Include(pragma, directive);
        else if (EqualNoCase(pragma.name, L"namespace"))
            SetNamespace(pragma, directive, argument);
        else
            Add(std::move(pragma));
    }

    // Answers the first argument's place.
    MofToken ParseArguments(MofPragma& pragma)
    {
        Advance();
        const MofToken first = Token();
        while (!TakeSymbol(L')'))
        {
            if (!pragma.arguments.empty() && !TakeSymbol(L','))
                Fail(L"a ',' or a ')' is expected after the argument of the pragma " + Quoted(Excerpt(pragma.name)));
            const MofTokenKind kind = Token().kind;
            if (kind == MofTokenKind::Text)
            {
                pragma.arguments.push_back(TakeText());
                continue;
            }
            if (kind == MofTokenKind::End || kind == MofTokenKind::Symbol || kind == MofTokenKind::Directive)
                Fail(L"an argument of the pragma " + Quoted(Excerpt(pragma.name)) + L" is expected");
            pragma.arguments.emplace_back(Token().text);
            Advance();
        }
        return first;
    }

    void Include(const MofPragma& pragma, const MofToken& directive)
    {
        if (pragma.arguments.size() != 1 || pragma.arguments[0].empty())
            FailAt(directive, L"the pragma include needs the name of one file");
        try
        {
            m_include(pragma.arguments[0], m_nameSpace);
        }
        catch (MofIncludeFault& fault)
        {
            FailAt(directive, std::move(fault.reason));
        }
    }

    void SetNamespace(const MofPragma& pragma, const MofToken& directive, const MofToken& argument)
    {
        if (pragma.arguments.size() != 1)
            FailAt(directive, L"the pragma namespace needs one namespace");
        const auto path = ObjectPath::ParseNamespace(pragma.arguments[0]);
        if (!path)
        {
            FailAt(argument, Quoted(Excerpt(pragma.arguments[0])) + L" is not a namespace: " + path.Error().Text());
        }
        m_nameSpace = pragma.arguments[0];
    }

    MofReading& m_reading;
    const MofInclude& m_include;
    std::wstring m_nameSpace;
};

} // namespace

void ParseMof(std::wstring_view text, std::uint32_t file, const std::wstring& nameSpace, MofReading& reading,
              const MofInclude& include)
{
    MofParser(text, file, nameSpace, reading, include).Parse();
}

} // namespace wbem
