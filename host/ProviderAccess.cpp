// Asking the provider of a class.
#include "host/ProviderAccess.h"

#include "host/Host.h"
#include "host/VariantValue.h"

namespace orl
{
namespace
{

CComBSTR BstrOf(std::wstring_view text)
{
    CComBSTR made;
    made.Attach(MakeBstr(text));
    return made;
}

CallStatus DeliverDeclared(const ClassDef& ofClass, Acceptor& acceptor, ResultSink& results)
{
    Objects accepted;
    for (const Ref<ObjectBody>& instance : ofClass.InNamespace().DeclaredInstances(ofClass))
    {
        const CComPtr<ClassObject> view = MakeObject<ClassObject>(instance);
        if (CComPtr<ClassObject> taken = acceptor.Accept(*view))
            accepted.push_back(std::move(taken));
    }
    CallStatus status;
    if (!accepted.empty())
        status.code = results.Deliver(accepted);
    return status;
}

} // namespace

LONG ProviderFlags(LONG flags) noexcept
{
    return flags & ~(WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_NO_ERROR_OBJECT |
                     WBEM_FLAG_ENSURE_LOCATABLE | WBEM_FLAG_PROTOTYPE);
}

void NeedCapability(bool isCapable, const Registration& registration, const ClassDef& ofClass, const wchar_t* what)
{
    if (isCapable)
        return;
    throw CallFailure(WBEM_E_PROVIDER_NOT_CAPABLE,
                      L"the provider " + registration.name + L" of " + ofClass.Name() + L" is not registered for " +
                          what,
                      registration.name);
}

CallStatus AskProvider(const RequestScope& scope, const Registration& registration, Acceptor& acceptor,
                       ResultSink& results, Call& call, const ProviderCall::Invoke& invoke)
{
    const CComPtr<IWbemServices> provider = scope.host.Providers().Get(registration, scope.context);
    const auto asked = MakeRef<ProviderCall>(scope.host.Workers(), registration.name, acceptor, results);
    CallStatus status = asked->Make(provider, invoke, call);
    if (status.Failed() && status.description.empty())
        status.description = L"the provider " + registration.name + L" answered " + HexText(status.code);
    return status;
}

CallStatus AskForInstances(const RequestScope& scope, const ClassDef& ofClass, const std::optional<std::wstring>& query,
                           Acceptor& acceptor, ResultSink& results, Call& call)
{
    if (!HasProvider(ofClass))
        return DeliverDeclared(ofClass, acceptor, results);
    const Registration& registration = FindRegistration(ofClass);
    const LONG flags = ProviderFlags(scope.flags);
    if (query && registration.supportsQueries)
    {
        const CComBSTR language = BstrOf(L"WQL");
        const CComBSTR text = BstrOf(*query);
        CallStatus status = AskProvider(scope, registration, acceptor, results, call,
                                        [&](IWbemServices* provider, IWbemObjectSink* sink) {
                                            return provider->ExecQueryAsync(language, text, flags, scope.context, sink);
                                        });
        if (status.code != WBEM_E_PROVIDER_NOT_CAPABLE)
            return status;
    }
    NeedCapability(registration.supportsEnumeration, registration, ofClass, L"enumeration");
    const CComBSTR name = BstrOf(ofClass.Name());
    return AskProvider(scope, registration, acceptor, results, call,
                       [&](IWbemServices* provider, IWbemObjectSink* sink)
                       { return provider->CreateInstanceEnumAsync(name, flags, scope.context, sink); });
}

CallStatus AskForEach(const std::vector<const ClassDef*>& classes, const Call& call,
                      const std::function<CallStatus(const ClassDef& ofClass)>& ask)
{
    CallStatus first;
    for (const ClassDef* each : classes)
    {
        if (call.IsCancelled())
            break;
        CallStatus status;
        try
        {
            status = ask(*each);
        }
        catch (...)
        {
            status = StatusOfCurrentException();
        }
        if (status.Failed() && !first.Failed())
            first = std::move(status);
    }
    return first;
}

} // namespace orl
