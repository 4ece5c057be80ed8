// MOF, the Windows and the DMTF dialect: what it declares, as plain data in the order of the text.
#pragma once

#include "wbem/CimValue.h"
#include "wbem/Text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace wbem
{

// Where something stands: the file as an index into MofDocument::files, line and column from 1.
struct MofPosition
{
    std::uint32_t file = 0;
    std::uint32_t line = 0;
    std::uint32_t column = 0;

    bool operator==(const MofPosition&) const = default;
};

// Flavors of a qualifier, as bits; none is the language's default.
enum MofFlavor : std::uint16_t
{
    kFlavorToInstance = 0x001,
    kFlavorToSubclass = 0x002,
    kFlavorDisableOverride = 0x004,
    kFlavorEnableOverride = 0x008,
    kFlavorRestricted = 0x010,
    kFlavorTranslatable = 0x020,
    kFlavorAmended = 0x040,
    kFlavorNotToInstance = 0x080,
    kFlavorNotToSubclass = 0x100,
};

// Scopes of a declared qualifier, as bits.
enum MofScope : std::uint16_t
{
    kScopeSchema = 0x001,
    kScopeClass = 0x002,
    kScopeAssociation = 0x004,
    kScopeIndication = 0x008,
    kScopeQualifier = 0x010,
    kScopeProperty = 0x020,
    kScopeReference = 0x040,
    kScopeMethod = 0x080,
    kScopeParameter = 0x100,
    kScopeAny = 0x1ff,
};

struct MofQualifier
{
    std::wstring name;
    // TRUE when none is written. Integers are sint32, sint64 or uint64, the smallest that holds them.
    CimValue value;
    std::uint16_t flavors = 0;
    MofPosition position;
};

// A type as a property, a parameter or a method declares it.
struct MofType
{
    CimType type = CimType::Empty; // Empty only as the result of a void method
    bool isArray = false;
    std::optional<std::uint32_t> arraySize; // of "x[5]"
    // The class of a reference ("" in "object ref"), and of an embedded object where it is named.
    std::wstring className;
    // An object that is written as a string with the qualifier EmbeddedInstance or EmbeddedObject.
    bool isEmbeddedText = false;

    bool operator==(const MofType&) const = default;
};

// A property of a class, or a parameter of a method.
struct MofProperty
{
    std::wstring name;
    MofType type;
    // Of the declared type. Nothing when none is written; "= NULL" is a null of the type.
    std::optional<CimValue> defaultValue;
    std::vector<MofQualifier> qualifiers;
    MofPosition position;
};

struct MofMethod
{
    std::wstring name;
    MofType result;
    std::vector<MofProperty> parameters;
    std::vector<MofQualifier> qualifiers;
    MofPosition position;
};

struct MofClass
{
    std::wstring name;
    std::wstring superclass; // empty: none
    std::wstring alias;      // with its '$'; empty: none
    std::vector<MofQualifier> qualifiers;
    std::vector<MofProperty> properties;
    std::vector<MofMethod> methods;
    std::wstring nameSpace; // in force where it stands, as the pragma gave it; empty: the reader's default
    MofPosition position;
};

struct MofInstance
{
    struct Property
    {
        std::wstring name;
        // As written, for ConvertTo once the class is known: integers sint32, sint64 or uint64, text string, NULL of no
        // type, an alias a reference ("$Name"), a nested instance an object.
        CimValue value;
        std::vector<MofQualifier> qualifiers;
        MofPosition position;
    };

    std::wstring className;
    std::wstring alias; // with its '$'; empty: none
    std::vector<MofQualifier> qualifiers;
    std::vector<Property> properties;
    std::wstring nameSpace; // as in MofClass
    MofPosition position;
};

struct MofQualifierDeclaration
{
    std::wstring name;
    MofType type;
    std::optional<CimValue> defaultValue;
    std::uint16_t scopes = 0;
    std::uint16_t flavors = 0;
    std::wstring nameSpace; // as in MofClass
    MofPosition position;
};

// A pragma other than include and namespace, which the reader follows itself.
struct MofPragma
{
    std::wstring name;
    std::vector<std::wstring> arguments;
    std::wstring nameSpace; // as in MofClass
    MofPosition position;
};

using MofDeclaration = std::variant<MofClass, MofInstance, MofQualifierDeclaration, MofPragma>;

struct MofDocument
{
    struct File
    {
        std::wstring name; // as the caller named it; of an include the path that was opened
        // The index of the file that the caller named and that includes this one, or is this one.
        std::uint32_t root = 0;
    };

    std::vector<File> files;
    std::vector<MofDeclaration> declarations;
    // For each root file: the declaration that has the alias.
    std::vector<NameMap<std::size_t>> aliases;

    // The class or instance behind an alias ("$Name", without case) that is used at the given place. An alias is known
    // in the root file that declares it and in all that it includes. Null when there is none.
    const MofDeclaration* FindAlias(std::wstring_view alias, const MofPosition& usedAt) const noexcept;
};

// The declaration as MOF, ending with a newline. It parses back to the same declaration, positions and namespace aside.
std::wstring PrintClass(const MofClass& declaration);
std::wstring PrintInstance(const MofInstance& declaration);
std::wstring PrintQualifierDeclaration(const MofQualifierDeclaration& declaration);
// A value as MOF writes it: "text", 5, { 1, 2 }, $Alias, NULL, instance of X { ... }.
std::wstring PrintMofValue(const CimValue& value);

// Without case; null when there is none.
const MofQualifier* FindQualifier(const std::vector<MofQualifier>& qualifiers, std::wstring_view name) noexcept;

} // namespace wbem
