// The names of an object: how paths are written and what they match.
#include "host/ObjectNames.h"

#include "host/Repository.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <windows.h>

namespace orl
{
namespace
{

using wbem::CimValue;

std::wstring ReadServerName()
{
    DWORD size = 0;
    GetComputerNameExW(ComputerNameDnsHostname, nullptr, &size);
    std::wstring name(size, L'\0');
    if (size == 0 || !GetComputerNameExW(ComputerNameDnsHostname, name.data(), &size))
        return L".";
    name.resize(size);
    return name;
}

// The path's value as the key's type: "100" is a number for a number's key, 100 a text for a text's.
std::optional<CimValue> AsKey(const CimValue& given, const PropertyDef& key)
{
    std::wstring reason;
    if (wbem::IsText(key.Type()) && !wbem::IsText(given.Type()))
        return CimValue::Text(key.Type(), wbem::PlainText(given));
    return wbem::ConvertTo(given, key.Type(), key.IsArray(), reason);
}

// Paths have a length that readers bear, and no way to write a null character.
bool CanBeRead(const std::wstring& path)
{
    return path.size() <= wbem::kMaxPathLength && path.find(L'\0') == path.npos;
}

} // namespace

std::optional<std::wstring> RelativePath(const ObjectBody& body)
{
    const ClassDef& ofClass = body.Class();
    if (!body.IsInstance())
        return ofClass.Name();
    if (ofClass.Keys().empty())
        return ofClass.IsSingleton() ? std::optional(ofClass.Name() + L"=@") : std::nullopt;
    std::wstring path = ofClass.Name();
    wchar_t separator = L'.';
    for (const std::size_t index : ofClass.Keys())
    {
        if (body[index].IsNull())
            return std::nullopt;
        path += separator;
        path += ofClass.Properties()[index].Name();
        path += L'=';
        path += wbem::PathValueText(body[index]);
        separator = L',';
    }
    if (!CanBeRead(path))
        return std::nullopt;
    return path;
}

std::optional<std::wstring> FullPath(const ObjectBody& body)
{
    const std::optional<std::wstring> relative = RelativePath(body);
    if (!relative)
        return std::nullopt;
    std::wstring path = L"\\\\" + ServerName() + L"\\" + body.Class().InNamespace().Name() + L":" + *relative;
    if (!CanBeRead(path))
        return std::nullopt;
    return path;
}

bool MatchesPath(const ObjectBody& body, const wbem::ObjectPath& path, std::wstring& why)
{
    const ClassDef& ofClass = body.Class();
    if (path.isSingleton)
        return ofClass.IsSingleton();
    const bool isUnnamed = path.keys.size() == 1 && path.keys.front().name.empty();
    for (const std::size_t index : ofClass.Keys())
    {
        const PropertyDef& key = ofClass.Properties()[index];
        const wbem::PathKey* given = isUnnamed ? &path.keys.front() : path.FindKey(key.Name());
        if (!given)
        {
            why = L"the path does not name the key " + key.Name() + L" of " + ofClass.Name();
            return false;
        }
        const std::optional<CimValue> wanted = AsKey(given->value, key);
        if (!wanted || wbem::Compare(body[index], wbem::WqlOperator::Equal, *wanted) != wbem::Truth::True)
        {
            why = L"no " + ofClass.Name() + L" has the " + key.Name() + L" " + wbem::PlainText(given->value);
            return false;
        }
    }
    for (const wbem::PathKey& given : path.keys)
    {
        const std::size_t index = isUnnamed ? ofClass.Keys().front() : ofClass.FindProperty(given.name);
        if (index == ClassDef::kNotFound || !ofClass.Properties()[index].isKey)
        {
            why = L"the class " + ofClass.Name() + L" has no key " + given.name;
            return false;
        }
    }
    return true;
}

const std::wstring& ServerName()
{
    // Never destroyed: a worker thread may still ask while the process ends.
    static const std::wstring& name = *new std::wstring(ReadServerName());
    return name;
}

bool IsThisServer(const std::wstring& server)
{
    return server.empty() || server == L"." || wbem::EqualNoCase(server, L"localhost") || server == L"127.0.0.1" ||
           wbem::EqualNoCase(server, ServerName());
}

} // namespace orl
