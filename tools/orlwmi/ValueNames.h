// ValueNames: what the numbers of a class's properties stand for, as its qualifiers ValueMap and Values tell.
#pragma once

#include "tools/orlwmi/Integer.h"
#include "tools/orlwmi/Record.h"
#include "tools/orlwmi/Session.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace orl::client
{

// The names of one property's values.
class ValueMap
{
public:
    // Takes the two qualifiers as they are read; null for one that is missing. Without ValueMap the values count from
    // 0. Entries are numbers, ranges ("3..5", "..2", "6..") and ".." for all that no other entry names; one that is
    // neither names nothing.
    ValueMap() = default;
    ValueMap(const Value& valueMap, const Value& values);

    // The name of the number; empty when it has none.
    [[nodiscard]] std::string NameOf(const Number& number) const;

private:
    struct Entry
    {
        std::optional<Integer> from; // open where there is none
        std::optional<Integer> to;
        std::string name;
    };

    void Add(std::string_view text, std::string name);

    std::vector<Entry> m_entries;
    std::string m_rest; // the name of all other numbers
};

// The names of all classes whose records come by. Each definition is read once, when the first number of such a record
// is looked at. A class whose definition the service does not hand out has no names.
class ValueNames
{
public:
    explicit ValueNames(Session& session) : m_session(session) {}

    // Sets the meaning of each number of the record, in lists too. Not of what is embedded in it: parameters and
    // messages have classes of their own.
    void Explain(Record& record);

private:
    struct KnownClass
    {
        CComPtr<IWbemClassObject> definition; // null when there is none to be had
        std::unordered_map<std::string, ValueMap> properties;
    };

    KnownClass& Find(const std::string& className);
    const ValueMap& MapOf(const std::string& className, const std::string& property);

    Session& m_session;
    std::unordered_map<std::string, KnownClass> m_classes; // by names in lower case, as properties are
};

} // namespace orl::client
