// Objects that are known by their paths, and fetched together.
#pragma once

#include "host/KeyTextSet.h"
#include "host/ProviderCall.h"
#include "host/Request.h"
#include "wbem/ObjectPath.h"

#include <cstddef>
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace orl
{

// The ends of associations. Few objects of a class are asked for one by one; many by one enumeration of the class,
// narrowed to what their paths have in common, so that the cost grows with the result and not with its square.
class WantedObjects
{
public:
    explicit WantedObjects(const RequestScope& scope) : m_scope(scope) {}

    // Each object once. The keys have names (NameTheKey). A path that names a property which the class lacks, or a
    // class without a key, leads to no object and is left out.
    void Add(const wbem::ObjectPath& path, const ClassDef& ofClass);

    // All instances that the paths name; of an object that is shown by several instances, all of them. What does not
    // exist is left out. Objects of a class that nobody serves are made of their keys. `keysOnly`: the instances show
    // their keys alone.
    CallStatus Fetch(bool keysOnly, ResultSink& results, Call& call);

private:
    // Objects of one class whose paths name the same properties.
    struct Group
    {
        const ClassDef* ofClass = nullptr;
        bool isServed = false;               // by a provider
        std::vector<std::size_t> named;      // indexes of the property table, ascending
        KeyTextSet wanted;                   // KeyText of each object
        std::vector<wbem::ObjectPath> paths; // spelled and typed as the class declares; the first few only
                                             // where a provider is asked for more
        bool isFirstShared = true;           // all objects have the same value of the first property named
    };

    class GroupAcceptor;

    // Keys by their indexes in the class's property table.
    using KeyValues = std::vector<std::pair<std::size_t, wbem::CimValue>>;

    static void SetKey(KeyValues& values, std::size_t index, wbem::CimValue value);
    Group& GroupOf(const ClassDef& ofClass, const KeyValues& values);
    CallStatus FetchGroup(Group& group, bool keysOnly, ResultSink& results, Call& call) const;
    CallStatus FetchEach(const Group& group, GroupAcceptor& acceptor, ResultSink& results, Call& call) const;

    RequestScope m_scope;
    // Of the object that is being added; kept for their memory.
    KeyValues m_values;
    std::wstring m_text;
    std::deque<Group> m_groups;
};

// Shows the class's keys alone; null, for all, where it has none.
std::shared_ptr<const Projection> KeysOf(const ClassDef& ofClass);

} // namespace orl
