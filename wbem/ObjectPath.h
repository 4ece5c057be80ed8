// Object paths: \\server\namespace:Class.Key="value",Other=5
#pragma once

#include "wbem/CimValue.h"
#include "wbem/Parsed.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace wbem
{

inline constexpr std::size_t kMaxPathLength = 65536; // characters
inline constexpr std::size_t kMaxPathKeys = 256;

struct PathKey
{
    std::wstring name; // empty when the path has one key without a name: Class="x"
    // A quoted value is a string; a bare integer sint32, sint64 or uint64, the smallest that holds it; TRUE and FALSE
    // are boolean. A path inside a value is its text, ready for ObjectPath::Parse.
    CimValue value;

    bool operator==(const PathKey&) const = default;
};

struct ObjectPath
{
    std::wstring server;                  // "." and names alike, as written; empty when the path names none
    std::vector<std::wstring> namespaces; // from the root down
    std::wstring className;               // empty in a path that names a namespace
    std::vector<PathKey> keys;            // in the order written
    bool isSingleton = false;             // Class=@

    // Slashes of either kind. A quoted value has double or single quotes; in it \" and \\ (and \' between single
    // quotes) stand for the character after the backslash, and a backslash before anything else is itself. Spaces may
    // stand around '.', '=' and ',' and at both ends. A word alone is a class.
    static Parsed<ObjectPath> Parse(std::wstring_view text);
    // As Parse, for texts that can only name a namespace: a word alone is one.
    static Parsed<ObjectPath> ParseNamespace(std::wstring_view text);

    bool IsNamespace() const noexcept { return className.empty(); }
    bool IsInstance() const noexcept { return isSingleton || !keys.empty(); }
    bool IsClass() const noexcept { return !IsNamespace() && !IsInstance(); }

    // Without case. The single unnamed key answers to the empty name only. Null when there is none.
    const PathKey* FindKey(std::wstring_view name) const noexcept;

    // root\KESTA
    std::wstring NamespaceText(wchar_t separator = L'\\') const;
    // Class.Key="value": no server and no namespace. Parses back to the same class and keys.
    std::wstring RelativeText() const;
    // All parts that are there. Parses back to an equal path.
    std::wstring Text() const;

    // Letter for letter, in order. For "the same object" there is SameObject.
    bool operator==(const ObjectPath&) const = default;
};

// The value in double quotes with \ and " escaped, as Parse reads it back.
void AppendQuoted(std::wstring& text, std::wstring_view value);
std::wstring Quoted(std::wstring_view value);
// As it stands in a path: integers and booleans bare, everything else quoted.
std::wstring PathValueText(const CimValue& value);

struct PathComparison
{
    // "5" names the same as 5, "TRUE" the same as TRUE: producers that quote every value meet those that do not.
    bool quotedNumbers = false;
    // Quoted values letter for letter, instead of without case.
    bool valuesByCase = false;
    // Values that are themselves instance paths compare as paths, by these same rules, one level after the other.
    bool nestedPaths = false;
};

// Whether two paths name the same object: class and key names without case, keys in any order, a key without a name
// equal to the other path's only key. Server and namespace count only where both paths have them; "." is any server.
bool SameObject(const ObjectPath& left, const ObjectPath& right, const PathComparison& how = {});

// A text that is equal for two paths exactly when SameObject holds for them under the same rules, for hashing and
// sorting; server and namespace are left out and a key without a name differs from a named one.
std::wstring IdentityText(const ObjectPath& path, const PathComparison& how = {});

// Namespaces without case, slashes of either kind, as ParseNamespace reads them; false when one of them does not parse.
bool SameNamespace(std::wstring_view left, std::wstring_view right);

} // namespace wbem
