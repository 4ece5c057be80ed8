// Patterns against the adapters that there are.
#include "tools/orlwmi/AdapterChoice.h"

#include "tools/orlwmi/Failure.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Text.h"

#include <algorithm>

namespace orl::client
{
namespace
{

// The conditions of one query are weighed for each object, so a long list costs more than it saves.
constexpr size_t MostConditions = 16;

bool GlobMatches(std::string_view pattern, std::string_view name)
{
    size_t p = 0;
    size_t n = 0;
    size_t star = std::string_view::npos; // the last star, and how far its text reached
    size_t reached = 0;
    while (n < name.size())
    {
        if (p < pattern.size() && pattern[p] == '*')
        {
            star = p++;
            reached = n;
        }
        else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n]))
        {
            ++p;
            ++n;
        }
        else if (star != std::string_view::npos)
        {
            p = star + 1;
            n = ++reached;
        }
        else
        {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

bool IsGlob(const std::string& pattern)
{
    return pattern.find_first_of("*?") != std::string::npos;
}

std::string AnyOf(const std::vector<std::string>& ids, const std::string& property)
{
    std::string condition;
    for (const auto& id : ids)
    {
        condition += (condition.empty() ? "" : " OR ") + property + " = " + WqlText(id);
    }
    return condition;
}

std::vector<std::string> ReadIds(const std::string& condition, Session& session)
{
    const std::string query = "SELECT DeviceID FROM Zarn_FCOEHBA";
    Results results = Results::Query(session.services, condition.empty() ? query : query + " WHERE " + condition);
    std::vector<std::string> ids;
    while (const auto object = results.Next(session.deadline, session.output))
    {
        ids.push_back(ReadText(object, L"DeviceID"));
    }
    return ids;
}

[[noreturn]] void RefuseUnknown(const std::string& pattern, Session& session)
{
    constexpr size_t mostShown = 10;
    const auto ids = ReadIds({}, session);
    std::string known;
    for (size_t i = 0; i < std::min(ids.size(), mostShown); ++i)
    {
        known += (i == 0 ? "" : ", ") + ids[i];
    }
    known += ids.size() > mostShown ? ", ... (" + std::to_string(ids.size()) + " in all)" : "";
    throw Failure(ExitCode::NotFound, "there is no FCoE adapter " + pattern,
                  {{"Adapters", known.empty() ? "none" : known}});
}

} // namespace

bool NameMatches(std::string_view pattern, std::string_view name)
{
    const std::string lowerPattern = Lower(pattern);
    const std::string lowerName = Lower(name);
    return lowerPattern == lowerName || GlobMatches(lowerPattern, lowerName);
}

std::string WqlText(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text)
    {
        quoted += c == '\'' || c == '\\' ? "\\" : "";
        quoted += c;
    }
    return quoted + "'";
}

AdapterChoice::AdapterChoice(const std::vector<std::string>& patterns, Session& session) : m_all(patterns.empty())
{
    if (m_all)
    {
        return;
    }
    // Names that are written out are asked for by name, so that no other adapter is looked at.
    const bool byName = patterns.size() <= MostConditions && std::none_of(patterns.begin(), patterns.end(), IsGlob);
    const auto ids = ReadIds(byName ? AnyOf(patterns, "DeviceID") : std::string(), session);
    for (const auto& pattern : patterns)
    {
        bool found = false;
        for (const auto& id : ids)
        {
            const bool matches = NameMatches(pattern, id);
            found = found || matches;
            if (matches && m_known.insert(Lower(id)).second)
            {
                m_ids.push_back(id);
            }
        }
        if (!found)
        {
            RefuseUnknown(pattern, session);
        }
    }
}

bool AdapterChoice::Has(std::string_view deviceId) const
{
    return m_all || m_known.count(Lower(deviceId)) != 0;
}

std::string AdapterChoice::Condition(const std::string& property) const
{
    return m_ids.size() <= MostConditions ? AnyOf(m_ids, property) : std::string();
}

Results InstancesOf(const char* className, const AdapterChoice& choice, Session& session, const std::string& property)
{
    const std::string condition = choice.Condition(property);
    return condition.empty()
               ? Results::Instances(session.services, className)
               : Results::Query(session.services, std::string("SELECT * FROM ") + className + " WHERE " + condition);
}

} // namespace orl::client
