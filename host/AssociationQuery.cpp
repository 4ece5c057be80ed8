// ASSOCIATORS OF and REFERENCES OF.
#include "host/AssociationQuery.h"

#include "host/AssociationFilter.h"
#include "host/ObjectIdentity.h"
#include "host/PathRequests.h"
#include "host/ProviderAccess.h"
#include "host/SingleResult.h"
#include "host/WantedObjects.h"
#include "wbem/Text.h"

#include <algorithm>
#include <functional>

namespace orl
{
namespace
{

using wbem::WqlQuery;

// Delivers each class once.
class ClassSet
{
public:
    void Add(const ClassDef& ofClass)
    {
        if (std::find(m_classes.begin(), m_classes.end(), &ofClass) == m_classes.end())
            m_classes.push_back(&ofClass);
    }
    HRESULT Deliver(ResultSink& results) const
    {
        HRESULT code = WBEM_S_NO_ERROR;
        for (const ClassDef* each : m_classes)
        {
            Objects found{MakeObject<ClassObject>(each->Prototype())};
            if (SUCCEEDED(code))
                code = results.Deliver(found);
        }
        return code;
    }

private:
    std::vector<const ClassDef*> m_classes;
};

// The source at one end of association instances. Answers which reference of an instance holds it.
class SourceEnd
{
public:
    SourceEnd(const AssociationFilter& filter, const wbem::ObjectPath& path)
        : m_filter(filter), m_className(path.className), m_source(IdentityOf(path))
    {
    }

    // ClassDef::kNotFound when none does. Instances are taken as they come, also those of another class than the one
    // that was asked for: a reference is what its value says.
    std::size_t RoleIn(const ObjectBody& body)
    {
        const auto& properties = body.Class().Properties();
        for (std::size_t i = 0; i < properties.size(); ++i)
        {
            if (properties[i].Type() == wbem::CimType::Reference && m_filter.IsSourceRole(properties[i]) &&
                IsSource(body[i].AsText(), body.Class().InNamespace()))
                return i;
        }
        return ClassDef::kNotFound;
    }

private:
    bool IsSource(std::wstring_view text, const Namespace& nameSpace)
    {
        if (text.empty() || NamesAnotherClass(text))
            return false;
        if (text != m_lastText)
        {
            auto path = wbem::ObjectPath::Parse(text);
            if (path)
                NameTheKey(*path, nameSpace);
            m_isLastSource = path && IdentityOf(*path) == m_source;
            m_lastText = text;
        }
        return m_isLastSource;
    }

    // Seen without parsing, for a path as providers write it: "Class.Key=..."
    bool NamesAnotherClass(std::wstring_view text) const
    {
        const std::size_t end = text.find_first_of(L".:\\/\" ");
        return end != std::wstring_view::npos && text[end] == L'.' &&
               !wbem::EqualNoCase(text.substr(0, end), m_className);
    }

    const AssociationFilter& m_filter;
    const std::wstring m_className;
    const std::wstring m_source;
    // Providers write one end of all associations of an object alike, one after the other.
    std::wstring m_lastText;
    bool m_isLastSource = false;
};

// The instances of an association that hold the source, each shown to `take`, which says what the client gets for it.
class AssociationAcceptor final : public Acceptor
{
public:
    using Take = std::function<CComPtr<ClassObject>(ClassObject& object, std::size_t sourceRole)>;

    AssociationAcceptor(SourceEnd& source, Take take) : m_source(source), m_take(std::move(take)) {}

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        if (!object.Body()->IsInstance())
            return nullptr;
        const std::size_t role = m_source.RoleIn(*object.Body());
        return role == ClassDef::kNotFound ? nullptr : m_take(object, role);
    }

private:
    SourceEnd& m_source;
    Take m_take;
};

class AssociationRequest : public Request
{
public:
    AssociationRequest(RequestScope scope, std::wstring_view text, WqlQuery query, ResolvedPath source)
        : Request(std::move(scope), L"ExecQuery", std::wstring(text)), m_query(std::move(query)),
          m_source(std::move(source)), m_filter(m_query, *m_source.ofClass)
    {
    }

protected:
    const WqlQuery& Query() const noexcept { return m_query; }
    const ResolvedPath& Source() const noexcept { return m_source; }
    const AssociationFilter& Filter() const noexcept { return m_filter; }

private:
    const WqlQuery m_query;
    const ResolvedPath m_source;
    const AssociationFilter m_filter; // refers to the query
};

// About an instance: its associations are asked of their providers.
class InstanceAssociations final : public AssociationRequest
{
public:
    using AssociationRequest::AssociationRequest;

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        bool isLinked = false;
        CallStatus status = Query().kind == wbem::WqlKind::References ? AnswerReferences(call, results, isLinked)
                                                                      : AnswerAssociators(call, results, isLinked);
        if (status.Failed() || isLinked || call.IsCancelled())
            return status;
        return LookUpSource(call);
    }

    CallStatus AnswerReferences(Call& call, ResultSink& results, bool& isLinked)
    {
        ClassSet classes;
        CallStatus status = Walk(call, results,
                                 [&](ClassObject& association, std::size_t) -> CComPtr<ClassObject>
                                 {
                                     isLinked = true;
                                     if (!Query().classDefsOnly)
                                         return View(association); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
                                     classes.Add(association.Class());
                                     return nullptr;
                                 });
        const HRESULT delivered = classes.Deliver(results);
        if (FAILED(delivered) && !status.Failed())
            status.code = delivered;
        return status;
    }

    CComPtr<ClassObject> View(ClassObject& object) const
    {
        return Query().keysOnly ? MakeObject<ClassObject>(object.Body(), KeysOf(object.Class()))
                                : MakeObject<ClassObject>(object.Body());
    }

    CallStatus AnswerAssociators(Call& call, ResultSink& results, bool& isLinked)
    {
        ClassSet classes;
        WantedObjects wanted(Scope());
        CallStatus status = Walk(call, results,
                                 [&](ClassObject& association, std::size_t sourceRole) -> CComPtr<ClassObject>
                                 {
                                     isLinked = true;
                                     NoteOtherEnds(*association.Body(), sourceRole, classes, wanted);
                                     return nullptr;
                                 });
        CallStatus fetched;
        if (Query().classDefsOnly)
            fetched.code = classes.Deliver(results);
        else
            fetched = wanted.Fetch(Query().keysOnly, results, call);
        return status.Failed() ? status : fetched;
    }

    void NoteOtherEnds(const ObjectBody& association, std::size_t sourceRole, ClassSet& classes, WantedObjects& wanted)
    {
        const auto& properties = association.Class().Properties();
        for (std::size_t i = 0; i < properties.size(); ++i)
        {
            if (i == sourceRole || properties[i].Type() != wbem::CimType::Reference ||
                !Filter().IsResultRole(properties[i]))
                continue;
            auto path = wbem::ObjectPath::Parse(association[i].AsText());
            if (!path || !path->IsInstance())
                continue;
            NameTheKey(*path, association.Class().InNamespace());
            const ClassDef* ofClass = association.Class().InNamespace().FindClass(path->className);
            if (!ofClass || !Filter().AdmitsResult(*ofClass))
                continue;
            classes.Add(*ofClass);
            wanted.Add(*path, *ofClass);
        }
    }

    // The associations, one class after the other. The provider learns which source is asked about where the class has
    // one reference that may hold it; what it sends besides is left out here.
    CallStatus Walk(Call& call, ResultSink& results, const AssociationAcceptor::Take& take)
    {
        return AskForEach(Filter().Associations(), call,
                          [&](const ClassDef& each)
                          {
                              SourceEnd source(Filter(), Source().path);
                              AssociationAcceptor acceptor(source, take);
                              return AskForInstances(Scope(), each, QueryFor(each), acceptor, results, call);
                          });
    }

    std::optional<std::wstring> QueryFor(const ClassDef& association) const
    {
        const std::vector<std::size_t> roles = Filter().SourceRoles(association);
        if (roles.size() != 1)
            return std::nullopt;
        const std::wstring& role = association.Properties()[roles.front()].Name();
        WqlQuery query;
        query.className = association.Name();
        query.testedProperties = {role};
        query.where.emplace();
        query.where->test.property = {role, 0};
        query.where->test.value = wbem::CimValue::String(Source().Text());
        return query.Text();
    }

    CallStatus LookUpSource(Call& call) const
    {
        if (!HasProvider(*Source().ofClass))
            return {};
        const auto found = MakeRef<SingleResult>();
        MakeGet(Scope(), Source().Text())->Run(call, *found);
        CallStatus status;
        if (found->Status().code == WBEM_E_NOT_FOUND)
            status = found->Status();
        return status;
    }
};

// About a class: what the schema says.
class ClassAssociations final : public AssociationRequest
{
public:
    using AssociationRequest::AssociationRequest;

private:
    CallStatus Answer(Call&, ResultSink& results) override
    {
        ClassSet classes;
        for (const ClassDef* association : Filter().Associations())
        {
            if (Query().kind == wbem::WqlKind::References)
                classes.Add(*association);
            else
                AddOtherEnds(*association, classes);
        }
        CallStatus status;
        status.code = classes.Deliver(results);
        return status;
    }

    void AddOtherEnds(const ClassDef& association, ClassSet& classes) const
    {
        for (const std::size_t sourceRole : Filter().SourceRoles(association))
        {
            for (const std::size_t role : Filter().ResultRoles(association, sourceRole))
            {
                const ClassDef* found = ReferencedClass(association.Properties()[role]);
                if (found && Filter().AdmitsResult(*found))
                    classes.Add(*found);
            }
        }
    }
};

} // namespace

Ref<Request> MakeAssociationQuery(RequestScope scope, std::wstring_view text, WqlQuery query)
{
    ResolvedPath source = ResolvePath(scope, query.objectText, WBEM_E_INVALID_CLASS);
    if (source.path.IsClass() != query.schemaOnly)
        throw CallFailure(WBEM_E_INVALID_QUERY,
                          query.schemaOnly ? L"SchemaOnly asks about a class; the path names an instance of " +
                                                 source.ofClass->Name()
                                           : L"the path names the class " + source.ofClass->Name() +
                                                 L"; ask about an instance, or about the class with SchemaOnly");
    if (query.schemaOnly)
        return MakeRequest<ClassAssociations>(std::move(scope), text, std::move(query), std::move(source));
    return MakeRequest<InstanceAssociations>(std::move(scope), text, std::move(query), std::move(source));
}

} // namespace orl
