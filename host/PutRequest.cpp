// Writing an instance through its provider.
#include "host/PutRequest.h"

#include "host/EnumRequests.h"
#include "host/ObjectNames.h"
#include "host/ProviderAccess.h"

namespace orl
{
namespace
{

class PutRequest final : public Request
{
public:
    PutRequest(RequestScope scope, Ref<ObjectBody> body)
        : Request(std::move(scope), L"PutInstance", RelativePath(*body).value_or(body->Class().Name())),
          m_body(std::move(body))
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        const ClassDef& ofClass = m_body->Class();
        if (!HasProvider(ofClass))
            throw CallFailure(WBEM_E_PROVIDER_NOT_CAPABLE,
                              L"the class " + ofClass.Name() + L" has no provider that could write");
        const Registration& registration = FindRegistration(ofClass);
        NeedCapability(registration.supportsPut, registration, ofClass, L"writing");
        const CComPtr<ClassObject> instance = MakeObject<ClassObject>(m_body);
        const LONG flags = Scope().flags & ~WBEM_FLAG_RETURN_IMMEDIATELY;
        NothingAcceptor acceptor;
        CallStatus status = AskProvider(Scope(), registration, acceptor, results, call,
                                        [&](IWbemServices* provider, IWbemObjectSink* sink)
                                        { return provider->PutInstanceAsync(instance, flags, Scope().context, sink); });
        if (!status.Failed() && status.text.empty())
            status.text = RelativePath(*m_body).value_or(std::wstring());
        return status;
    }

    const Ref<ObjectBody> m_body;
};

} // namespace

Ref<Request> MakePut(RequestScope scope, IWbemClassObject* instance)
{
    const CComPtr<ClassObject> own = ClassObject::From(instance);
    if (!own || !own->Body()->IsInstance())
        throw CallFailure(WBEM_E_INVALID_PARAMETER, L"PutInstance takes an instance of a class of this service");
    if (&NeedClass(scope.nameSpace, own->Class().Name()) != &own->Class())
        throw CallFailure(WBEM_E_INVALID_CLASS,
                          L"the instance is of a class " + own->Class().Name() + L" in another namespace");
    // What the client changes afterwards is not part of this call: the view shares the body until then.
    return MakeRequest<PutRequest>(std::move(scope), own->Body());
}

} // namespace orl
