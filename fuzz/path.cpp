// Object paths: what parses prints back to itself, is the same object as itself however it is written, has an identity,
// is what managers see of it, and is found by a query for it. Two paths on two lines are compared.
#include "Common/Src/ModuleTrace.h"
#include "framework/include/COrlWmiAutoParsedObjectPath.h"
#include "fuzz/Require.h"
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

ORL_MODULE_TRACE_OFF;

namespace
{

using wbem::CimValue;
using wbem::ObjectPath;
using wbem::PathComparison;

// One reference.
class Reference : public wbem::WqlSource
{
public:
    explicit Reference(std::wstring_view text) : m_value(CimValue::Reference(text)) {}

    CimValue Value(const wbem::WqlProperty&) const override { return m_value; }
    wbem::Truth IsA(const wbem::WqlProperty&, std::wstring_view) const override { return wbem::Truth::Unknown; }

private:
    const CimValue m_value;
};

wchar_t OtherCase(wchar_t c)
{
    if (c >= L'a' && c <= L'z')
        return static_cast<wchar_t>(c - (L'a' - L'A'));
    return wbem::FoldCase(c);
}

// The same object: keys the other way round, names in another case.
ObjectPath Rewritten(const ObjectPath& path)
{
    ObjectPath other = path;
    std::reverse(other.keys.begin(), other.keys.end());
    std::transform(other.className.begin(), other.className.end(), other.className.begin(), OtherCase);
    for (wbem::PathKey& key : other.keys)
        std::transform(key.name.begin(), key.name.end(), key.name.begin(), OtherCase);
    return other;
}

void CheckQuery(const ObjectPath& path, const std::wstring& otherText)
{
    wbem::WqlQuery query;
    query.className = L"C";
    query.testedProperties = {L"Ref"};
    query.where.emplace();
    query.where->test.property = {L"Ref", 0};
    query.where->test.value = CimValue::String(path.Text());
    const auto again = wbem::WqlQuery::Parse(query.Text());
    Require(again && *again == query);
    const auto other = ObjectPath::Parse(otherText);
    if (other)
        Require(again->Admits(Reference(otherText)));
}

// A manager's view has the class and every key with its value.
void CheckManagersView(const ObjectPath& path, const std::wstring& text)
{
    COrlWmiAutoParsedObjectPath seen;
    Require(SUCCEEDED(seen.Parse(text.c_str())) == !path.IsNamespace());
    if (path.IsNamespace())
        return Require(seen.Keys().empty() && seen.ClassName().empty() && !seen.ErrorText().empty());
    Require(seen.ClassName() == path.className && seen.Keys().size() == path.keys.size());
    for (const wbem::PathKey& key : path.keys)
    {
        const COrlWmiNamedValue* value = seen.GetKeyRef(key.name.c_str(), key.name.empty());
        Require(value != nullptr && value->Text() == wbem::PlainText(key.value));
    }
}

void CheckPath(const ObjectPath& path, const std::wstring& text)
{
    const auto again = ObjectPath::Parse(path.Text());
    // Escapes may carry the printed path over the limit of what is read.
    Require(again ? *again == path : path.Text().size() > wbem::kMaxPathLength);
    Require(!again || again->Text() == path.Text());
    const ObjectPath other = Rewritten(path);
    for (const bool nested : {false, true})
    {
        const PathComparison how{.quotedNumbers = !nested, .nestedPaths = nested};
        Require(wbem::SameObject(path, path, how) && wbem::SameObject(path, other, how));
        Require(wbem::IdentityText(path, how) == wbem::IdentityText(other, how));
        if (again)
            Require(wbem::IdentityText(*again, how) == wbem::IdentityText(path, how));
    }
    if (path.IsNamespace())
        return;
    const auto relative = ObjectPath::Parse(path.RelativeText());
    Require(!relative ||
            (relative->server.empty() && relative->namespaces.empty() && relative->className == path.className &&
             relative->keys == path.keys && relative->isSingleton == path.isSingleton));
    CheckQuery(path, other.Text());
    CheckManagersView(path, text);
}

void CheckPair(const ObjectPath& left, const ObjectPath& right)
{
    for (const bool quoted : {false, true})
    {
        const PathComparison how{.quotedNumbers = quoted, .valuesByCase = !quoted, .nestedPaths = quoted};
        const bool same = wbem::SameObject(left, right, how);
        Require(same == wbem::SameObject(right, left, how));
        const bool bothNamed = std::none_of(left.keys.begin(), left.keys.end(),
                                            [](const wbem::PathKey& key) { return key.name.empty(); }) &&
                               std::none_of(right.keys.begin(), right.keys.end(),
                                            [](const wbem::PathKey& key) { return key.name.empty(); });
        if (same && bothNamed)
            Require(wbem::IdentityText(left, how) == wbem::IdentityText(right, how));
    }
}

void CheckNamespace(const std::wstring& text)
{
    if (const auto path = ObjectPath::ParseNamespace(text))
        Require(path->IsNamespace() &&
                (path->Text().size() > wbem::kMaxPathLength || wbem::SameNamespace(text, path->Text())));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = wbem::FromUtf8({reinterpret_cast<const char*>(data), size});
    const auto path = ObjectPath::Parse(text);
    if (path)
        CheckPath(*path, text);
    else
        Require(path.Error().position <= text.size() && !path.Error().reason.empty());
    CheckNamespace(text);
    if (const std::size_t line = text.find(L'\n'); line != text.npos)
    {
        const auto left = ObjectPath::Parse(text.substr(0, line));
        const auto right = ObjectPath::Parse(text.substr(line + 1));
        if (left && right)
            CheckPair(*left, *right);
    }
    return 0;
}
