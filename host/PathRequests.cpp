// Requests that begin with an object path: get and delete.
#include "host/PathRequests.h"

#include "host/EnumRequests.h"
#include "host/Host.h"
#include "host/ObjectNames.h"
#include "host/ProviderAccess.h"
#include "host/VariantValue.h"

#include <algorithm>

namespace orl
{
namespace
{

const Namespace& NamespaceOf(const RequestScope& scope, const wbem::ObjectPath& path)
{
    if (!IsThisServer(path.server))
        throw CallFailure(WBEM_E_INVALID_OBJECT_PATH, L"the path names another machine: " + path.server);
    if (path.namespaces.empty())
        return scope.nameSpace;
    if (const Namespace* found = scope.host.Schema().FindNamespace(path.namespaces))
        return *found;
    throw CallFailure(WBEM_E_INVALID_NAMESPACE, L"there is no namespace " + path.NamespaceText());
}

// Providers know classes and keys letter for letter.
void SpellAsDeclared(ResolvedPath& resolved)
{
    const ClassDef& ofClass = *resolved.ofClass;
    resolved.path.className = ofClass.Name();
    for (wbem::PathKey& key : resolved.path.keys)
    {
        if (key.name.empty() && ofClass.Keys().size() != 1)
            throw CallFailure(WBEM_E_INVALID_OBJECT_PATH, L"the path has a value without a key's name, and " +
                                                              ofClass.Name() + L" has " +
                                                              std::to_wstring(ofClass.Keys().size()) + L" keys");
        const std::size_t index = key.name.empty() ? ofClass.Keys().front() : ofClass.FindProperty(key.name);
        if (index != ClassDef::kNotFound)
            key.name = ofClass.Properties()[index].Name();
    }
}

// A client that asks with this in its context gets what the provider sends, keys or not: the provider may send an
// instance without any value.
bool AsksForKeysOnly(IWbemContext* context)
{
    CComVariant value;
    if (!context || FAILED(context->GetValue(L"__GET_EXT_KEYS_ONLY", 0, &value)))
        return false;
    std::wstring reason;
    const auto number = FromVariant(value, wbem::CimType::SInt64, false, reason);
    const auto truth = FromVariant(value, wbem::CimType::Boolean, false, reason);
    return (number && number->AsSigned() != 0) || (truth && truth->AsBool());
}

bool IsEmpty(const ObjectBody& body)
{
    for (std::size_t i = 0; i < body.Count(); ++i)
    {
        if (!body[i].IsNull())
            return false;
    }
    return true;
}

// The one instance that a path names.
class PathAcceptor final : public Acceptor
{
public:
    PathAcceptor(const ResolvedPath& wanted, bool takesEmpty) : m_wanted(wanted), m_takesEmpty(takesEmpty) {}

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        const Ref<ObjectBody>& body = object.Body();
        if (HasAccepted() || !body->IsInstance() || !IsOfTheClass(*body))
            return nullptr;
        if (!(m_takesEmpty && IsEmpty(*body)) && !MatchesPath(*body, m_wanted.path, m_why))
            return nullptr;
        m_hasAccepted = true;
        return MakeObject<ClassObject>(body);
    }
    bool HasAccepted() const noexcept { return m_hasAccepted; }
    // Why the last instance was not the one.
    const std::wstring& Why() const noexcept { return m_why; }

private:
    bool IsOfTheClass(const ObjectBody& body) const
    {
        return body.Class().DerivesFrom(*m_wanted.ofClass) || BelongsTo(body, *m_wanted.ofClass, true);
    }

    const ResolvedPath& m_wanted;
    const bool m_takesEmpty;
    bool m_hasAccepted = false;
    std::wstring m_why;
};

class GetClassRequest final : public Request
{
public:
    GetClassRequest(RequestScope scope, std::wstring_view text, ResolvedPath path)
        : Request(std::move(scope), L"GetObject", std::wstring(text)), m_path(std::move(path))
    {
    }

private:
    CallStatus Answer(Call&, ResultSink& results) override
    {
        Objects found{MakeObject<ClassObject>(m_path.ofClass->Prototype())};
        CallStatus status;
        status.code = results.Deliver(found);
        return status;
    }

    const ResolvedPath m_path;
};

class GetInstanceRequest final : public Request
{
public:
    GetInstanceRequest(RequestScope scope, std::wstring_view text, ResolvedPath path)
        : Request(std::move(scope), L"GetObject", std::wstring(text)), m_path(std::move(path))
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        PathAcceptor acceptor(m_path, AsksForKeysOnly(Scope().context));
        CallStatus status = Ask(acceptor, results, call);
        if (!status.Failed() && !acceptor.HasAccepted())
        {
            status.code = WBEM_E_NOT_FOUND;
            status.description = acceptor.Why().empty() ? L"there is no " + m_path.Text() : acceptor.Why();
        }
        return status;
    }

    CallStatus Ask(PathAcceptor& acceptor, ResultSink& results, Call& call)
    {
        if (!HasProvider(*m_path.ofClass))
            return AskForInstances(Scope(), *m_path.ofClass, {}, acceptor, results, call);
        const Registration& registration = FindRegistration(*m_path.ofClass);
        if (!registration.supportsGet) // the instance is among all the others
            return AskForInstances(Scope(), *m_path.ofClass, {}, acceptor, results, call);
        CComBSTR text;
        text.Attach(MakeBstr(m_path.Text()));
        const LONG flags = ProviderFlags(Scope().flags);
        return AskProvider(Scope(), registration, acceptor, results, call,
                           [&](IWbemServices* provider, IWbemObjectSink* sink)
                           { return provider->GetObjectAsync(text, flags, Scope().context, sink); });
    }

    const ResolvedPath m_path;
};

class DeleteRequest final : public Request
{
public:
    DeleteRequest(RequestScope scope, std::wstring_view text, ResolvedPath path)
        : Request(std::move(scope), L"DeleteInstance", std::wstring(text)), m_path(std::move(path))
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        if (!HasProvider(*m_path.ofClass))
            throw CallFailure(WBEM_E_PROVIDER_NOT_CAPABLE,
                              L"the class " + m_path.ofClass->Name() + L" has no provider that could delete");
        const Registration& registration = FindRegistration(*m_path.ofClass);
        NeedCapability(registration.supportsDelete, registration, *m_path.ofClass, L"deletion");
        CComBSTR text;
        text.Attach(MakeBstr(m_path.Text()));
        NothingAcceptor acceptor;
        return AskProvider(Scope(), registration, acceptor, results, call,
                           [&](IWbemServices* provider, IWbemObjectSink* sink)
                           { return provider->DeleteInstanceAsync(text, Scope().flags, Scope().context, sink); });
    }

    const ResolvedPath m_path;
};

} // namespace

ResolvedPath ResolvePath(const RequestScope& scope, std::wstring_view text, HRESULT missingClass)
{
    auto parsed = wbem::ObjectPath::Parse(text);
    if (!parsed)
        throw CallFailure(WBEM_E_INVALID_OBJECT_PATH, L"the path is malformed: " + parsed.Error().Text());
    ResolvedPath resolved{*std::move(parsed), nullptr};
    if (resolved.path.IsNamespace())
        throw CallFailure(WBEM_E_INVALID_OBJECT_PATH, L"the path names no class");
    const Namespace& nameSpace = NamespaceOf(scope, resolved.path);
    resolved.ofClass = nameSpace.FindClass(resolved.path.className);
    if (!resolved.ofClass)
        throw CallFailure(resolved.path.IsClass() ? missingClass : WBEM_E_INVALID_CLASS,
                          L"there is no class " + resolved.path.className + L" in " + nameSpace.Name());
    SpellAsDeclared(resolved);
    return resolved;
}

Ref<Request> MakeGet(RequestScope scope, std::wstring_view path)
{
    ResolvedPath resolved = ResolvePath(scope, path, WBEM_E_NOT_FOUND);
    if (resolved.path.IsClass())
        return MakeRequest<GetClassRequest>(std::move(scope), path, std::move(resolved));
    return MakeRequest<GetInstanceRequest>(std::move(scope), path, std::move(resolved));
}

Ref<Request> MakeDelete(RequestScope scope, std::wstring_view path)
{
    ResolvedPath resolved = ResolvePath(scope, path, WBEM_E_INVALID_CLASS);
    if (resolved.path.IsClass())
        throw CallFailure(WBEM_E_INVALID_OBJECT_PATH,
                          L"the path names the class " + resolved.ofClass->Name() + L", not an instance of it");
    return MakeRequest<DeleteRequest>(std::move(scope), path, std::move(resolved));
}

} // namespace orl
