// Objects that are known by their paths, and fetched together.
#include "host/WantedObjects.h"

#include "host/ObjectIdentity.h"
#include "host/ProviderAccess.h"
#include "host/VariantValue.h"
#include "wbem/Text.h"
#include "wbem/Wql.h"

#include <algorithm>

namespace orl
{
namespace
{

// Up to so many objects of one class are asked for one by one: a provider answers a get by walking one adapter.
constexpr std::size_t MostGets = 4;

// SELECT * FROM Class, narrowed to the first property that a path names where all objects share its value.
std::wstring QueryFor(const ClassDef& ofClass, const wbem::PathKey& first, bool isShared)
{
    wbem::WqlQuery query;
    query.className = ofClass.Name();
    if (isShared)
    {
        query.testedProperties = {first.name};
        query.where.emplace();
        query.where->test.property = {first.name, 0};
        query.where->test.value = first.value;
    }
    return query.Text();
}

// What a value counts for among the values of its property, as a text that ends where the next one's begins. Texts
// count without case, and a path in a text for the object that it names.
void AppendKeyText(std::wstring& text, const wbem::CimValue& value)
{
    const bool isText = wbem::IsText(value.Type());
    const auto path = isText && value.AsText().find(L'=') != std::wstring_view::npos
                          ? wbem::ObjectPath::Parse(value.AsText())
                          : wbem::Parsed<wbem::ObjectPath>(wbem::ObjectPath());
    if (path && path->IsInstance())
        text += IdentityOf(*path);
    else
        text += isText ? wbem::FoldCase(value.AsText()) : wbem::PlainText(value);
    text += L'\0';
}

std::wstring KeyTextOf(const wbem::ObjectPath& path)
{
    std::wstring text;
    for (const wbem::PathKey& key : path.keys)
        AppendKeyText(text, key.value);
    return text;
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

// Instances that are wanted.
class WantedObjects::GroupAcceptor final : public Acceptor
{
public:
    GroupAcceptor(Group& group, bool keysOnly) : m_group(group), m_keysOnly(keysOnly) {}

    // Asked for one object alone, from now on.
    void Narrow(const wbem::ObjectPath& path) { m_only = KeyTextOf(path); }

    CComPtr<ClassObject> Accept(ClassObject& object) override
    {
        const ObjectBody& body = *object.Body();
        if (!body.IsInstance() || !body.Class().DerivesFrom(*m_group.ofClass))
            return nullptr;
        m_key.clear();
        for (const std::size_t index : m_group.named)
            AppendKeyText(m_key, body[index]);
        if (m_only.empty() ? !m_group.wanted.Contains(m_key) : m_key != m_only)
            return nullptr;
        if (!m_group.isServed)
            m_found.Insert(m_key);
        return View(object); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the caller holds it
    }
    CComPtr<ClassObject> View(ClassObject& object)
    {
        return MakeObject<ClassObject>(object.Body(), ShownOf(object.Class()));
    }
    // Of a class that no provider serves.
    bool HasFound(const wbem::ObjectPath& path) { return m_found.Contains(KeyTextOf(path)); }

private:
    // Null for all properties.
    const std::shared_ptr<const Projection>& ShownOf(const ClassDef& ofClass)
    {
        if (m_keysOnly && m_viewed != &ofClass)
        {
            m_viewed = &ofClass;
            m_shown = KeysOf(ofClass);
        }
        return m_shown;
    }

    Group& m_group;
    const bool m_keysOnly;
    std::wstring m_only;
    std::wstring m_key;
    const ClassDef* m_viewed = nullptr; // the class of the last object
    std::shared_ptr<const Projection> m_shown;
    KeyTextSet m_found;
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
    m_values.clear();
    for (const wbem::PathKey& key : path.keys)
    {
        const std::size_t index = ofClass.FindProperty(key.name);
        if (index == ClassDef::kNotFound)
            return;
        const PropertyDef& property = ofClass.Properties()[index];
        if (IsSystemKey(property.Name()) && HasProvider(ofClass))
            continue;
        std::wstring reason;
        auto typed = wbem::ConvertTo(key.value, property.Type(), property.IsArray(), reason);
        SetKey(m_values, index, std::move(typed).value_or(key.value));
    }
    if (m_values.empty())
        return;
    m_text.clear();
    for (const auto& [index, value] : m_values)
        AppendKeyText(m_text, value);
    Group& group = GroupOf(ofClass, m_values);
    if (!group.wanted.Insert(m_text))
        return;
    group.isFirstShared = group.isFirstShared &&
                          (group.paths.empty() || group.paths.front().keys.front().value == m_values.front().second);
    if (group.paths.size() > MostGets && group.isServed)
        return;
    wbem::ObjectPath spelled;
    spelled.className = ofClass.Name();
    for (auto& [index, value] : m_values)
        spelled.keys.push_back({ofClass.Properties()[index].Name(), std::move(value)});
    group.paths.push_back(std::move(spelled)); // whole or, for want of memory, not at all
}

// Ascending; the last value of a key that a path names twice counts.
void WantedObjects::SetKey(KeyValues& values, std::size_t index, wbem::CimValue value)
{
    const auto place = std::lower_bound(values.begin(), values.end(), index,
                                        [](const auto& each, std::size_t wanted) { return each.first < wanted; });
    if (place != values.end() && place->first == index)
        place->second = std::move(value);
    else
        values.emplace(place, index, std::move(value));
}

WantedObjects::Group& WantedObjects::GroupOf(const ClassDef& ofClass, const KeyValues& values)
{
    const auto isNamed = [](std::size_t index, const auto& value) { return index == value.first; };
    for (Group& group : m_groups)
    {
        if (group.ofClass == &ofClass &&
            std::equal(group.named.begin(), group.named.end(), values.begin(), values.end(), isNamed))
            return group;
    }
    Group& group = m_groups.emplace_back();
    group.ofClass = &ofClass;
    group.isServed = HasProvider(ofClass);
    for (const auto& [index, value] : values)
        group.named.push_back(index);
    return group;
}

CallStatus WantedObjects::Fetch(bool keysOnly, ResultSink& results, Call& call)
{
    CallStatus first;
    for (Group& group : m_groups)
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

CallStatus WantedObjects::FetchGroup(Group& group, bool keysOnly, ResultSink& results, Call& call) const
{
    if (group.paths.empty())
        return {}; // there was no memory for the first one, and the status of that says so
    GroupAcceptor acceptor(group, keysOnly);
    if (!group.isServed)
    {
        CallStatus status = AskForInstances(m_scope, *group.ofClass, {}, acceptor, results, call);
        for (const wbem::ObjectPath& path : group.paths)
        {
            if (status.Failed() || acceptor.HasFound(path))
                continue;
            Objects made;
            made.push_back(acceptor.View(*StandIn(*group.ofClass, path)));
            status.code = results.Deliver(made);
        }
        return status;
    }
    if (group.paths.size() <= MostGets && NamesAllKeys(*group.ofClass, group.named) &&
        FindRegistration(*group.ofClass).supportsGet)
        return FetchEach(group, acceptor, results, call);
    const std::wstring query = QueryFor(*group.ofClass, group.paths.front().keys.front(), group.isFirstShared);
    return AskForInstances(m_scope, *group.ofClass, query, acceptor, results, call);
}

CallStatus WantedObjects::FetchEach(const Group& group, GroupAcceptor& acceptor, ResultSink& results, Call& call) const
{
    const Registration& registration = FindRegistration(*group.ofClass);
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
