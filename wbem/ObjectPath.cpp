// Object paths: printing and comparison.
#include "wbem/ObjectPath.h"

#include "wbem/Quoted.h"
#include "wbem/Text.h"

#include <algorithm>
#include <utility>

namespace wbem
{

namespace
{

// Paths inside values inside values; each level of quotes at least doubles the backslashes, so real ones end before.
constexpr int kMaxNestedPaths = 16;

void AppendKeys(std::wstring& text, const ObjectPath& path)
{
    if (path.isSingleton)
    {
        text += L"=@";
        return;
    }
    wchar_t separator = L'.';
    for (const PathKey& key : path.keys)
    {
        if (!key.name.empty())
        {
            text += separator;
            text += key.name;
        }
        text += L'=';
        text += PathValueText(key.value);
        separator = L',';
    }
}

bool IsAnyServer(std::wstring_view server)
{
    return server.empty() || server == L".";
}

bool NamespacesEqual(const std::vector<std::wstring>& left, const std::vector<std::wstring>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), NameEqual());
}

bool LocationsMeet(const ObjectPath& left, const ObjectPath& right)
{
    const bool servers =
        IsAnyServer(left.server) || IsAnyServer(right.server) || EqualNoCase(left.server, right.server);
    const bool namespaces =
        left.namespaces.empty() || right.namespaces.empty() || NamespacesEqual(left.namespaces, right.namespaces);
    return servers && namespaces;
}

std::wstring Identity(const ObjectPath& path, const PathComparison& how, int depth);

std::wstring ValueIdentity(const CimValue& value, const PathComparison& how, int depth)
{
    const bool isText = IsText(value.Type()) || value.Type() == CimType::Char16;
    std::wstring text = PlainText(value);
    if (!isText && !how.quotedNumbers)
        return text;
    const bool mayBePath = isText && text.find(L'=') != std::wstring::npos;
    if (mayBePath && how.nestedPaths && depth < kMaxNestedPaths)
    {
        const Parsed<ObjectPath> nested = ObjectPath::Parse(text);
        if (nested && nested->IsInstance())
            return Quoted(Identity(*nested, how, depth + 1));
    }
    return Quoted(how.valuesByCase ? text : FoldCase(text));
}

std::wstring Identity(const ObjectPath& path, const PathComparison& how, int depth)
{
    std::wstring text = FoldCase(path.className);
    if (path.isSingleton)
        return text + L"=@";
    std::vector<std::pair<std::wstring, std::wstring>> keys;
    keys.reserve(path.keys.size());
    for (const PathKey& key : path.keys)
        keys.emplace_back(FoldCase(key.name), ValueIdentity(key.value, how, depth));
    std::sort(keys.begin(), keys.end());
    wchar_t separator = L'.';
    for (const auto& [name, value] : keys)
    {
        text += separator;
        text += name;
        text += L'=';
        text += value;
        separator = L',';
    }
    return text;
}

bool HasUnnamedKey(const ObjectPath& path)
{
    return path.keys.size() == 1 && path.keys[0].name.empty();
}

ObjectPath WithUnnamedKey(const ObjectPath& path)
{
    ObjectPath unnamed = path;
    unnamed.keys[0].name.clear();
    return unnamed;
}

} // namespace

const PathKey* ObjectPath::FindKey(std::wstring_view name) const noexcept
{
    for (const PathKey& key : keys)
    {
        if (EqualNoCase(key.name, name))
            return &key;
    }
    return nullptr;
}

std::wstring ObjectPath::NamespaceText(wchar_t separator) const
{
    std::wstring text;
    for (const std::wstring& part : namespaces)
    {
        if (!text.empty())
            text += separator;
        text += part;
    }
    return text;
}

std::wstring ObjectPath::RelativeText() const
{
    std::wstring text = className;
    AppendKeys(text, *this);
    return text;
}

std::wstring ObjectPath::Text() const
{
    std::wstring text;
    if (!server.empty())
        text = L"\\\\" + server + L"\\";
    else if (IsNamespace() && namespaces.size() == 1)
        text = L"\\"; // a word alone would be a class
    text += NamespaceText();
    if (IsNamespace())
        return text;
    if (!namespaces.empty())
        text += L':';
    return text + RelativeText();
}

void AppendQuoted(std::wstring& text, std::wstring_view value)
{
    text += L'"';
    for (const wchar_t c : value)
    {
        if (c == L'"' || c == L'\\')
            text += L'\\';
        text += c;
    }
    text += L'"';
}

std::wstring Quoted(std::wstring_view value)
{
    std::wstring text;
    text.reserve(value.size() + 2);
    AppendQuoted(text, value);
    return text;
}

std::wstring PathValueText(const CimValue& value)
{
    const bool bare =
        !value.IsArray() && !value.IsNull() && (IsInteger(value.Type()) || value.Type() == CimType::Boolean);
    return bare ? PlainText(value) : Quoted(value.IsNull() ? std::wstring() : PlainText(value));
}

bool SameObject(const ObjectPath& left, const ObjectPath& right, const PathComparison& how)
{
    if (!LocationsMeet(left, right) || left.keys.size() != right.keys.size())
        return false;
    if (HasUnnamedKey(left) != HasUnnamedKey(right))
        return IdentityText(WithUnnamedKey(left), how) == IdentityText(WithUnnamedKey(right), how);
    return IdentityText(left, how) == IdentityText(right, how);
}

std::wstring IdentityText(const ObjectPath& path, const PathComparison& how)
{
    return Identity(path, how, 0);
}

bool SameNamespace(std::wstring_view left, std::wstring_view right)
{
    const auto a = ObjectPath::ParseNamespace(left);
    const auto b = ObjectPath::ParseNamespace(right);
    return a && b && LocationsMeet(*a, *b) && NamespacesEqual(a->namespaces, b->namespaces);
}

} // namespace wbem
