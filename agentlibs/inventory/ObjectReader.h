// ObjectReader: one JSON object against what may stand in it.
#pragma once

#include "agentlibs/inventory/JsonText.h"

#include "Common/Src/OrlString.h"

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orl
{

// Asks an object for one member after the other. A member that is absent leaves the output as it is; one that does not
// hold what was asked for is refused with its place (BackendError). What was asked for is what the object may hold:
// Finish refuses everything else.
class ObjectReader
{
public:
    static constexpr std::size_t MaxTextBytes = 1024;

    // All three are kept by reference. Refuses a value that is no object.
    ObjectReader(const JsonText& source, const JsonPlace& place, const JsonValue& value);

    void Text(std::string_view key, COrlString& out);
    // Normalized: 16 lower-case hexadecimal digits, or empty.
    void WorldWideName(std::string_view key, COrlString& out);
    // Whole numbers, in decimal or as a text with 0x in front.
    void Number(std::string_view key, ULONG& out, ULONG low = 0, ULONG high = 0xFFFFFFFF);
    void Number(std::string_view key, ULONGLONG& out);
    // With or without a minus sign.
    void Signed(std::string_view key, LONG& out, LONG low, LONG high);
    void Boolean(std::string_view key, bool& out);
    // From 0 to `high`, whole or not.
    void Real(std::string_view key, double& out, double high);
    // Which of `names` stands there.
    void Choice(std::string_view key, std::size_t& out, const std::vector<std::string_view>& names);

    // Calls visit(ObjectReader&) for each object of a list, then refuses what that one did not ask for.
    template <typename Visit>
    void ForEach(std::string_view key, Visit&& visit)
    {
        const JsonValue* list = Find(key, JsonValue::Kind::List);
        if (list == nullptr)
            return;
        const JsonPlace listPlace{&m_place, key, 0};
        for (std::size_t index = 0; index < list->items.size(); ++index)
        {
            const JsonPlace place{&listPlace, {}, index};
            ObjectReader element(m_source, place, list->items[index]);
            visit(element);
            element.Finish();
        }
    }

    // The same for a single object.
    template <typename Visit>
    void Object(std::string_view key, Visit&& visit)
    {
        const JsonValue* object = Find(key, JsonValue::Kind::Object);
        if (object == nullptr)
            return;
        const JsonPlace place{&m_place, key, 0};
        ObjectReader element(m_source, place, *object);
        visit(element);
        element.Finish();
    }

    bool Has(std::string_view key) const;
    // Reported by Finish, so that a key that is only misspelled is reported as that.
    void Require(std::string_view key) { m_required.push_back(key); }
    void Finish() const;

    // Refuses the member `key`, or the object itself when it has no such member.
    [[noreturn]] void Refuse(std::string_view key, const std::string& reason) const;

    // Where the member's value stands, to be kept for a message about another one: the line is counted only for that.
    std::size_t Offset(std::string_view key) const;
    // "line 3, column 14".
    std::string LineAndColumn(std::size_t offset) const { return m_source.LineAndColumn(offset); }

private:
    const JsonMember* Member(std::string_view key) const;
    const JsonValue* Find(std::string_view key, JsonValue::Kind kind);
    std::optional<ULONGLONG> Whole(std::string_view key, ULONGLONG low, ULONGLONG high);

    const JsonText& m_source;
    const JsonPlace& m_place;
    const JsonValue& m_value;
    std::vector<std::string_view> m_known;
    std::vector<std::string_view> m_required;
};

} // namespace orl
