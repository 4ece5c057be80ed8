// Queries: what they name, checked against the schema, and their answers.
#include "host/QueryRunner.h"

#include "host/EnumRequests.h"
#include "host/ProviderAccess.h"
#include "host/QuerySource.h"
#include "host/Repository.h"
#include "wbem/Wql.h"

namespace orl
{
namespace
{

using wbem::WqlQuery;

// Null where everything is selected. System properties are in every object and not counted.
std::shared_ptr<const Projection> ProjectionOf(const WqlQuery& query, const ClassDef& ofClass)
{
    if (query.SelectsAll())
        return nullptr;
    const auto projection = std::make_shared<Projection>();
    projection->shows.resize(ofClass.Properties().size());
    for (const std::wstring& name : query.selected)
    {
        NeedProperty(ofClass, name);
        const std::size_t index = ofClass.FindProperty(name.substr(0, name.find(L'.')));
        if (index == ClassDef::kNotFound || projection->shows[index])
            continue;
        projection->shows[index] = true;
        ++projection->count;
    }
    return projection;
}

// What the WHERE admits, with what the SELECT lists.
class QueryAcceptor final : public Acceptor
{
public:
    QueryAcceptor(const WqlQuery& query, const TestedProperties& tested, std::shared_ptr<const Projection> projection,
                  const ClassDef& asked)
        : m_query(query), m_tested(tested), m_projection(std::move(projection)), m_asked(asked)
    {
    }

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        const ObjectBody& body = *object.Body();
        if (!BelongsTo(body, m_asked, true) || !m_query.Admits(QuerySource(m_tested, body)))
            return nullptr;
        return MakeObject<ClassObject>(object.Body(), m_projection);
    }

private:
    const WqlQuery& m_query;
    const TestedProperties& m_tested;
    const std::shared_ptr<const Projection> m_projection;
    const ClassDef& m_asked;
};

// SELECT over the instances of a class and of all classes below it.
class SelectRequest final : public Request
{
public:
    SelectRequest(RequestScope scope, std::wstring_view text, WqlQuery query)
        : Request(scope, L"ExecQuery", std::wstring(text)), m_text(text), m_query(std::move(query)),
          m_class(NeedClass(scope.nameSpace, m_query.className)), m_projection(ProjectionOf(m_query, m_class)),
          m_tested(m_query, m_class)
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        if (Scope().flags & WBEM_FLAG_PROTOTYPE)
        {
            Objects prototype{MakeObject<ClassObject>(m_class.Prototype(), m_projection)};
            CallStatus status;
            status.code = results.Deliver(prototype);
            return status;
        }
        return AskForEach(m_class.InNamespace().WithSubclasses(m_class), call,
                          [&](const ClassDef& each)
                          {
                              QueryAcceptor acceptor(m_query, m_tested, m_projection, each);
                              return AskForInstances(Scope(), each, TextFor(each), acceptor, results, call);
                          });
    }

    // The query as the provider of one class gets it: the client's own text where it names that class as the schema
    // does.
    std::wstring TextFor(const ClassDef& ofClass) const
    {
        if (m_query.className == ofClass.Name())
            return m_text;
        WqlQuery renamed = m_query;
        renamed.className = ofClass.Name();
        return renamed.Text();
    }

    const std::wstring m_text;
    const WqlQuery m_query;
    const ClassDef& m_class;
    const std::shared_ptr<const Projection> m_projection;
    const TestedProperties m_tested;
};

// SELECT over the classes of the namespace: FROM meta_class.
class SchemaRequest final : public Request
{
public:
    SchemaRequest(RequestScope scope, std::wstring_view text, WqlQuery query)
        : Request(std::move(scope), L"ExecQuery", std::wstring(text)), m_query(std::move(query)), m_tested(m_query)
    {
    }

private:
    CallStatus Answer(Call&, ResultSink& results) override
    {
        CallStatus status;
        for (const auto& each : Scope().nameSpace.Classes())
        {
            if (status.Failed() || !m_query.Admits(QuerySource(m_tested, *each->Prototype())))
                continue;
            Objects found{MakeObject<ClassObject>(each->Prototype())};
            status.code = results.Deliver(found);
        }
        return status;
    }

    const WqlQuery m_query;
    const TestedProperties m_tested;
};

} // namespace

Ref<Request> MakeQuery(RequestScope scope, std::wstring_view language, std::wstring_view text)
{
    if (!wbem::EqualNoCase(language, L"WQL"))
        throw CallFailure(WBEM_E_INVALID_QUERY_TYPE,
                          L"the query language is " + std::wstring(language) + L"; there is only WQL");
    auto parsed = WqlQuery::Parse(text);
    if (!parsed)
        throw CallFailure(WBEM_E_INVALID_QUERY, parsed.Error().Text());
    switch (parsed->kind)
    {
    case wbem::WqlKind::Associators:
        throw CallFailure(WBEM_E_NOT_SUPPORTED, L"ASSOCIATORS OF is not supported");
    case wbem::WqlKind::References:
        throw CallFailure(WBEM_E_NOT_SUPPORTED, L"REFERENCES OF is not supported");
    default:
        break;
    }
    if (parsed->IsSchemaQuery())
        return MakeRequest<SchemaRequest>(std::move(scope), text, *std::move(parsed));
    return MakeRequest<SelectRequest>(std::move(scope), text, *std::move(parsed));
}

} // namespace orl
