// Objects that are known by their paths, and fetched together.
#include "host/WantedObjects.h"

#include "host/ObjectIdentity.h"
#include "host/ProviderAccess.h"
#include "host/VariantValue.h"
#include "wbem/Wql.h"

#include <algorithm>
#include <map>

namespace orl
{
namespace
{

// Up to so many objects of one class are asked for one by one: a provider answers a get by walking one adapter.
constexpr std::size_t MostGets = 4;

// SELECT * FROM Class, with the first named property as the WHERE where all paths have the same value of it.
std::wstring QueryFor(const ClassDef& ofClass, const std::vector<wbem::ObjectPath>& paths)
{
    wbem::WqlQuery query;
    query.className = ofClass.Name();
    const wbem::PathKey& first = paths.front().keys.front();
    const bool isShared = std::all_of(paths.begin(), paths.end(),
                                      [&](const wbem::ObjectPath& path) { return path.keys.front() == first; });
    if (isShared)
    {
        query.testedProperties = {first.name};
        query.where.emplace();
        query.where->test.property = {first.name, 0};
        query.where->test.value = first.value;
    }
    return query.Text();
}

bool NamesAllKeys(const ClassDef& ofClass, const std::vector<std::size_t>& named)
{
    return std::all_of(ofClass.Keys().begin(), ofClass.Keys().end(),
                       [&](std::size_t key) {
                           return IsSystemKey(ofClass.Properties()[key].Name()) ||
                                  std::find(named.begin(), named.end(), key) != named.end();
                       });
}

// An instance that says no more than its path does.
CComPtr<ClassObject> StandIn(const ClassDef& ofClass, const wbem::ObjectPath& path)
{
    const Ref<ObjectBody> body = ofClass.Prototype()->Copy(ObjectBody::Genus::Instance);
    for (std::size_t i = 0; i < body->Count(); ++i)
    {
        const wbem::PathKey* key = path.FindKey(ofClass.Properties()[i].Name());
        if (key)
            (*body)[i] = key->value;
    }
    return MakeObject<ClassObject>(body);
}

} // namespace

// Instances whose identity is wanted.
class WantedObjects::GroupAcceptor final : public Acceptor
{
public:
    GroupAcceptor(const Group& group, bool keysOnly) : m_group(group), m_keysOnly(keysOnly) {}

    // Asked for one object alone, from now on.
    void Narrow(const wbem::ObjectPath& path) { m_only = IdentityOf(path); }

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        const ObjectBody& body = *object.Body();
        if (!body.IsInstance() || !body.Class().DerivesFrom(*m_group.ofClass))
            return nullptr;
        const std::wstring identity = IdentityOf(PathBy(body, *m_group.ofClass, m_group.named));
        if (m_only.empty() ? !m_group.identities.contains(identity) : identity != m_only)
            return nullptr;
        m_found.insert(identity);
        return View(object);
    }
    CComPtr<ClassObject> View(ClassObject& object) const
    {
        return m_keysOnly ? MakeObject<ClassObject>(object.Body(), KeysOf(object.Class()))
                          : MakeObject<ClassObject>(object.Body());
    }
    bool HasFound(const wbem::ObjectPath& path) const { return m_found.contains(IdentityOf(path)); }

private:
    const Group& m_group;
    const bool m_keysOnly;
    std::wstring m_only;
    std::unordered_set<std::wstring> m_found;
};

std::shared_ptr<const Projection> KeysOf(const ClassDef& ofClass)
{
    if (ofClass.Keys().empty())
        return nullptr;
    const auto keys = std::make_shared<Projection>();
    keys->shows.resize(ofClass.Properties().size());
    for (const std::size_t key : ofClass.Keys())
        keys->shows[key] = true;
    keys->count = ofClass.Keys().size();
    return keys;
}

void WantedObjects::Add(const wbem::ObjectPath& path, const ClassDef& ofClass)
{
    wbem::ObjectPath spelled;
    spelled.className = ofClass.Name();
    std::map<std::size_t, wbem::CimValue> values;
    for (const wbem::PathKey& key : path.keys)
    {
        const bool isUnnamed = key.name.empty() && ofClass.Keys().size() == 1;
        const std::size_t index = isUnnamed ? ofClass.Keys().front() : ofClass.FindProperty(key.name);
        if (index == ClassDef::kNotFound)
            return;
        const PropertyDef& property = ofClass.Properties()[index];
        if (IsSystemKey(property.Name()) && HasProvider(ofClass))
            continue;
        std::wstring reason;
        const auto typed = wbem::ConvertTo(key.value, property.Type(), property.IsArray(), reason);
        values.insert_or_assign(index, typed ? *typed : key.value);
    }
    if (values.empty())
        return;
    std::vector<std::size_t> named;
    for (auto& [index, value] : values)
    {
        named.push_back(index);
        spelled.keys.push_back({ofClass.Properties()[index].Name(), std::move(value)});
    }
    Group& group = GroupOf(ofClass, std::move(named));
    if (group.identities.insert(IdentityOf(spelled)).second)
        group.paths.push_back(std::move(spelled));
}

WantedObjects::Group& WantedObjects::GroupOf(const ClassDef& ofClass, std::vector<std::size_t> named)
{
    for (Group& group : m_groups)
    {
        if (group.ofClass == &ofClass && group.named == named)
            return group;
    }
    return m_groups.emplace_back(Group{&ofClass, std::move(named), {}, {}});
}

CallStatus WantedObjects::Fetch(bool keysOnly, ResultSink& results, Call& call) const
{
    CallStatus first;
    for (const Group& group : m_groups)
    {
        if (call.IsCancelled())
            break;
        CallStatus status = AskForEach({group.ofClass}, call,
                                       [&](const ClassDef&) { return FetchGroup(group, keysOnly, results, call); });
        if (status.Failed() && !first.Failed())
            first = std::move(status);
    }
    return first;
}

CallStatus WantedObjects::FetchGroup(const Group& group, bool keysOnly, ResultSink& results, Call& call) const
{
    GroupAcceptor acceptor(group, keysOnly);
    if (!HasProvider(*group.ofClass))
    {
        CallStatus status = AskForInstances(m_scope, *group.ofClass, {}, acceptor, results, call);
        for (const wbem::ObjectPath& path : group.paths)
        {
            if (status.Failed() || acceptor.HasFound(path))
                continue;
            Objects made{acceptor.View(*StandIn(*group.ofClass, path))};
            status.code = results.Deliver(made);
        }
        return status;
    }
    if (group.paths.size() <= MostGets && NamesAllKeys(*group.ofClass, group.named) &&
        FindRegistration(*group.ofClass).supportsGet)
        return FetchEach(group, acceptor, results, call);
    return AskForInstances(m_scope, *group.ofClass, QueryFor(*group.ofClass, group.paths), acceptor, results, call);
}

CallStatus WantedObjects::FetchEach(const Group& group, GroupAcceptor& acceptor, ResultSink& results, Call& call) const
{
    const Registration registration = FindRegistration(*group.ofClass);
    const LONG flags = ProviderFlags(m_scope.flags);
    CallStatus first;
    for (const wbem::ObjectPath& path : group.paths)
    {
        if (call.IsCancelled())
            break;
        acceptor.Narrow(path);
        CComBSTR text;
        text.Attach(MakeBstr(path.RelativeText()));
        CallStatus status = AskProvider(m_scope, registration, acceptor, results, call,
                                        [&](IWbemServices* provider, IWbemObjectSink* sink)
                                        { return provider->GetObjectAsync(text, flags, m_scope.context, sink); });
        // An end that has gone since its association was read is no failure.
        if (status.Failed() && status.code != WBEM_E_NOT_FOUND && !first.Failed())
            first = std::move(status);
    }
    return first;
}

} // namespace orl
