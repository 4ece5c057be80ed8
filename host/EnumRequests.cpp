// Requests for many objects: the instances of a class, the classes of a namespace.
#include "host/EnumRequests.h"

#include "host/ProviderAccess.h"
#include "host/Repository.h"

namespace orl
{
namespace
{

class ClassAcceptor final : public Acceptor
{
public:
    ClassAcceptor(const ClassDef& asked, bool withSubclasses) : m_asked(asked), m_withSubclasses(withSubclasses) {}

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        if (!BelongsTo(*object.Body(), m_asked, m_withSubclasses))
            return nullptr;
        return MakeObject<ClassObject>(object.Body());
    }

private:
    const ClassDef& m_asked;
    const bool m_withSubclasses;
};

class InstanceEnumRequest final : public Request
{
public:
    InstanceEnumRequest(RequestScope scope, std::wstring_view className)
        : Request(scope, L"CreateInstanceEnum", std::wstring(className)),
          m_class(NeedClass(scope.nameSpace, className)), m_isDeep(!(scope.flags & WBEM_FLAG_SHALLOW))
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        const std::vector<const ClassDef*> classes =
            m_isDeep ? m_class.InNamespace().WithSubclasses(m_class) : std::vector{&m_class};
        return AskForEach(classes, call,
                          [&](const ClassDef& each)
                          {
                              ClassAcceptor acceptor(each, m_isDeep);
                              return AskForInstances(Scope(), each, {}, acceptor, results, call);
                          });
    }

    const ClassDef& m_class;
    const bool m_isDeep;
};

class ClassEnumRequest final : public Request
{
public:
    ClassEnumRequest(RequestScope scope, std::wstring_view superclass)
        : Request(scope, L"CreateClassEnum", std::wstring(superclass)),
          m_superclass(superclass.empty() ? nullptr : &NeedClass(scope.nameSpace, superclass)),
          m_isDeep(!(scope.flags & WBEM_FLAG_SHALLOW))
    {
    }

private:
    CallStatus Answer(Call&, ResultSink& results) override
    {
        CallStatus status;
        for (const auto& each : Scope().nameSpace.Classes())
        {
            const bool isNext = each->Superclass() == m_superclass;
            const bool isBelow = !m_superclass || (each.get() != m_superclass && each->DerivesFrom(*m_superclass));
            if (!(m_isDeep ? isBelow : isNext))
                continue;
            Objects found{MakeObject<ClassObject>(each->Prototype())};
            status.code = results.Deliver(found);
            if (status.Failed())
                break;
        }
        return status;
    }

    const ClassDef* const m_superclass;
    const bool m_isDeep;
};

} // namespace

const ClassDef& NeedClass(const Namespace& nameSpace, std::wstring_view name)
{
    if (const ClassDef* found = nameSpace.FindClass(name))
        return *found;
    throw CallFailure(WBEM_E_INVALID_CLASS, L"there is no class " + std::wstring(name) + L" in " + nameSpace.Name());
}

bool BelongsTo(const ObjectBody& body, const ClassDef& asked, bool withSubclasses)
{
    if (!body.IsInstance())
        throw CallFailure(WBEM_E_PROVIDER_FAILURE,
                          L"the provider sent the class " + body.Class().Name() + L" instead of an instance");
    if (body.Class().DerivesFrom(asked))
        return &body.Class() == &asked || (withSubclasses && !HasProvider(body.Class()));
    return asked.IsAssociation() && body.Class().IsAssociation() && !asked.DerivesFrom(body.Class());
}

Ref<Request> MakeInstanceEnum(RequestScope scope, std::wstring_view className)
{
    return MakeRequest<InstanceEnumRequest>(std::move(scope), className);
}

Ref<Request> MakeClassEnum(RequestScope scope, std::wstring_view superclass)
{
    return MakeRequest<ClassEnumRequest>(std::move(scope), superclass);
}

} // namespace orl
