// Method calls: parameters checked on the way in, results on the way out.
#include "host/MethodRequest.h"

#include "host/PathRequests.h"
#include "host/ProviderAccess.h"
#include "host/Qualifiers.h"
#include "host/VariantValue.h"

namespace orl
{
namespace
{

[[noreturn]] void Refuse(const std::wstring& reason)
{
    throw CallFailure(WBEM_E_INVALID_METHOD_PARAMETERS, reason);
}

bool Has(const std::vector<Qualifier>& qualifiers, std::wstring_view name)
{
    const Qualifier* found = FindQualifier(qualifiers, name);
    return found && (found->value.Type() != wbem::CimType::Boolean || found->value.AsBool());
}

const MethodDef& NeedMethod(const ResolvedPath& path, std::wstring_view name)
{
    const MethodDef* method = path.ofClass->FindMethod(name);
    const std::wstring title =
        L"the method " + (method ? method->Name() : std::wstring(name)) + L" of " + path.ofClass->Name();
    if (!method)
        throw CallFailure(WBEM_E_INVALID_METHOD,
                          L"the class " + path.ofClass->Name() + L" has no method " + std::wstring(name));
    const std::vector<Qualifier> qualifiers = MethodQualifiers(*path.ofClass, *method);
    if (Has(qualifiers, L"Disabled"))
        throw CallFailure(WBEM_E_METHOD_DISABLED, title + L" is disabled");
    if (!Has(qualifiers, L"Implemented"))
        throw CallFailure(WBEM_E_METHOD_NOT_IMPLEMENTED, title + L" is not implemented");
    if (path.path.IsClass() && !Has(qualifiers, L"Static"))
        Refuse(title + L" acts on an instance, and the path names the class");
    return *method;
}

// A client's parameters as an instance of the method's own signature; null when the method takes none.
Ref<ObjectBody> CheckedParameters(const ClassDef& ofClass, const MethodDef& method, IWbemClassObject* given)
{
    const std::wstring title = L"the method " + method.Name() + L" of " + ofClass.Name();
    const CComPtr<ClassObject> own = ClassObject::From(given);
    if (given && !own)
        throw CallFailure(WBEM_E_INVALID_PARAMETER, L"the in-parameters are no object of this service");
    Ref<ObjectBody> checked = method.in ? method.in->Prototype()->Copy(ObjectBody::Genus::Instance) : nullptr;
    for (std::size_t i = 0; own && i < own->Body()->Count(); ++i)
    {
        const wbem::CimValue& value = (*own->Body())[i];
        const std::wstring& name = own->Class().Properties()[i].Name();
        const std::size_t index = method.in ? method.in->FindProperty(name) : ClassDef::kNotFound;
        if (index == ClassDef::kNotFound && !value.IsNull())
            Refuse(title + L" has no in-parameter " + name);
        if (index == ClassDef::kNotFound)
            continue;
        const PropertyDef& parameter = method.in->Properties()[index];
        std::wstring reason;
        const auto typed = wbem::ConvertTo(value, parameter.Type(), parameter.IsArray(), reason);
        if (!typed)
            Refuse(L"the in-parameter " + parameter.Name() + L" of " + title + L" is " + parameter.CimTypeText() +
                   L": " + reason);
        (*checked)[index] = *typed;
    }
    for (std::size_t i = 0; checked && i < checked->Count(); ++i)
    {
        const PropertyDef& parameter = method.in->Properties()[i];
        if ((*checked)[i].IsNull() && !IsTrue(wbem::FindQualifier(parameter.declaration->qualifiers, L"Optional")))
            Refuse(title + L" misses its in-parameter " + parameter.Name());
    }
    return checked;
}

// The one object with the results.
class ResultAcceptor final : public Acceptor
{
public:
    ResultAcceptor(const ClassDef& ofClass, const MethodDef& method) : m_class(ofClass), m_method(method) {}

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        const Ref<ObjectBody>& body = object.Body();
        if (&body->Class() != m_method.out.get())
            throw CallFailure(WBEM_E_PROVIDER_FAILURE, L"the provider sent a " + body->Class().Name() +
                                                           L" that is not the result of the method " + m_method.Name() +
                                                           L" of " + m_class.Name());
        return MakeObject<ClassObject>(body->IsInstance() ? body : body->Copy(ObjectBody::Genus::Instance));
    }

private:
    const ClassDef& m_class;
    const MethodDef& m_method;
};

class MethodRequest final : public Request
{
public:
    MethodRequest(RequestScope scope, std::wstring_view text, ResolvedPath path, std::wstring_view name,
                  IWbemClassObject* inParameters)
        : Request(std::move(scope), L"ExecMethod", std::wstring(text)), m_path(std::move(path)),
          m_method(NeedMethod(m_path, name)), m_in(CheckedParameters(*m_path.ofClass, m_method, inParameters))
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        const Registration& registration = FindRegistration(*m_path.ofClass);
        NeedCapability(registration.isMethodProvider, registration, *m_path.ofClass, L"methods");
        CComBSTR path;
        path.Attach(MakeBstr(m_path.Text()));
        CComBSTR name;
        name.Attach(MakeBstr(m_method.Name()));
        CComPtr<ClassObject> in;
        if (m_in)
            in = MakeObject<ClassObject>(m_in);
        ResultAcceptor acceptor(*m_path.ofClass, m_method);
        return AskProvider(
            Scope(), registration, acceptor, results, call,
            [&](IWbemServices* provider, IWbemObjectSink* sink)
            { return provider->ExecMethodAsync(path, name, ProviderFlags(Scope().flags), Scope().context, in, sink); });
    }

    const ResolvedPath m_path;
    const MethodDef& m_method;
    const Ref<ObjectBody> m_in;
};

} // namespace

Ref<Request> MakeMethodCall(RequestScope scope, std::wstring_view path, std::wstring_view method,
                            IWbemClassObject* inParameters)
{
    ResolvedPath resolved = ResolvePath(scope, path, WBEM_E_INVALID_CLASS);
    return MakeRequest<MethodRequest>(std::move(scope), path, std::move(resolved), method, inParameters);
}

} // namespace orl
