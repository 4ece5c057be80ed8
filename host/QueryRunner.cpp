// Queries: what they name, checked against the schema, and their answers.
#include "host/QueryRunner.h"

#include "host/AssociationQuery.h"
#include "host/EnumRequests.h"
#include "host/ProviderAccess.h"
#include "host/QuerySource.h"
#include "host/Repository.h"
#include "wbem/Wql.h"

#include <map>

namespace orl
{
namespace
{

using wbem::WqlQuery;

// Null where everything is selected. System properties are in every object and not counted. Names that the class lacks
// are passed over.
std::shared_ptr<const Projection> ProjectionOf(const WqlQuery& query, const ClassDef& ofClass)
{
    if (query.SelectsAll())
        return nullptr;
    const auto projection = std::make_shared<Projection>();
    projection->shows.resize(ofClass.Properties().size());
    for (const std::wstring& name : query.selected)
    {
        const std::size_t index = ofClass.FindProperty(name.substr(0, name.find(L'.')));
        if (index == ClassDef::kNotFound || projection->shows[index])
            continue;
        projection->shows[index] = true;
        ++projection->count;
    }
    return projection;
}

// How a query reads the objects of one class.
struct Reading
{
    // Throws CallFailure WBEM_E_INVALID_QUERY for a name that the class has not got.
    static Reading Strict(const WqlQuery& query, const ClassDef& ofClass)
    {
        for (const std::wstring& name : query.selected)
            NeedProperty(ofClass, name);
        return {TestedProperties(query, ofClass), ProjectionOf(query, ofClass)};
    }
    // Of a class that the query does not name: what it lacks reads as NULL.
    static Reading Foreign(const WqlQuery& query, const ClassDef& ofClass)
    {
        return {TestedProperties::OfForeign(query, ofClass), ProjectionOf(query, ofClass)};
    }

    TestedProperties tested;
    std::shared_ptr<const Projection> projection;
};

// What the WHERE admits, with what the SELECT lists.
class QueryAcceptor final : public Acceptor
{
public:
    QueryAcceptor(const WqlQuery& query, const Reading& reading, const ClassDef& asked)
        : m_query(query), m_reading(reading), m_asked(asked)
    {
    }

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        const ObjectBody& body = *object.Body();
        if (!BelongsTo(body, m_asked, true))
            return nullptr;
        const Reading& reading = ReadingOf(body.Class());
        if (!m_query.Admits(QuerySource(reading.tested, body)))
            return nullptr;
        return MakeObject<ClassObject>(object.Body(), reading.projection);
    }

private:
    const Reading& ReadingOf(const ClassDef& ofClass)
    {
        if (ofClass.DerivesFrom(m_asked))
            return m_reading;
        const auto known = m_foreign.find(&ofClass);
        return known != m_foreign.end() ? known->second
                                        : m_foreign.emplace(&ofClass, Reading::Foreign(m_query, ofClass)).first->second;
    }

    const WqlQuery& m_query;
    const Reading& m_reading;
    const ClassDef& m_asked;
    std::map<const ClassDef*, Reading> m_foreign;
};

// SELECT over the instances of a class and of all classes below it.
class SelectRequest final : public Request
{
public:
    SelectRequest(RequestScope scope, std::wstring_view text, WqlQuery query)
        : Request(scope, L"ExecQuery", std::wstring(text)), m_text(text), m_query(std::move(query)),
          m_class(NeedClass(scope.nameSpace, m_query.className)), m_reading(Reading::Strict(m_query, m_class))
    {
    }

private:
    CallStatus Answer(Call& call, ResultSink& results) override
    {
        if (Scope().flags & WBEM_FLAG_PROTOTYPE)
        {
            Objects prototype{MakeObject<ClassObject>(m_class.Prototype(), m_reading.projection)};
            CallStatus status;
            status.code = results.Deliver(prototype);
            return status;
        }
        return AskForEach(m_class.InNamespace().WithSubclasses(m_class), call,
                          [&](const ClassDef& each)
                          {
                              QueryAcceptor acceptor(m_query, m_reading, each);
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
    const Reading m_reading;
};

// SELECT over the classes of the namespace: FROM meta_class.
class SchemaRequest final : public Request
{
public:
    SchemaRequest(RequestScope scope, std::wstring_view text, WqlQuery query)
        : Request(std::move(scope), L"ExecQuery", std::wstring(text)), m_query(std::move(query)), m_tested(m_query)
    {
        for (const std::wstring& name : m_query.selected)
            NeedSystemProperty(name);
    }

private:
    CallStatus Answer(Call&, ResultSink& results) override
    {
        CallStatus status;
        for (const auto& each : Scope().nameSpace.Classes())
        {
            if (status.Failed() || !m_query.Admits(QuerySource(m_tested, *each->Prototype())))
                continue;
            Objects found{MakeObject<ClassObject>(each->Prototype(), ProjectionOf(m_query, *each))};
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
    if (parsed->kind != wbem::WqlKind::Select)
        return MakeAssociationQuery(std::move(scope), text, *std::move(parsed));
    if (parsed->IsSchemaQuery())
        return MakeRequest<SchemaRequest>(std::move(scope), text, *std::move(parsed));
    return MakeRequest<SelectRequest>(std::move(scope), text, *std::move(parsed));
}

} // namespace orl
