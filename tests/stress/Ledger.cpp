// What a run has come to.
#include "tests/stress/Ledger.h"

#include "tests/common/FailingNew.h"

namespace orl::test
{
namespace
{

constexpr std::size_t MostWrongs = 20;

constexpr std::array<const char*, Ledger::CountCount> Names = {
    "calls answered",   "  with a failure",         "objects read",           "calls with a sink",
    "  cancelled",      "  that refused",           "enumerations abandoned", "ports created",
    "ports deleted",    "settings written",         "agent: failures",        "agent: exceptions",
    "agent: hangs",     "agent: garbage",           "  with 10 MB texts",     "clients without memory to ask",
    "processes killed", "  answers of theirs kept",
};

} // namespace

void Ledger::Wrong(std::string what)
{
    const Sheltered own;
    const std::lock_guard lock(m_mutex);
    if (m_wrongs.size() < MostWrongs)
        m_wrongs.push_back(std::move(what));
}

std::vector<std::string> Ledger::Wrongs() const
{
    const std::lock_guard lock(m_mutex);
    return m_wrongs;
}

std::string Ledger::Text() const
{
    std::string text;
    for (std::size_t i = 0; i < CountCount; ++i)
    {
        const std::string number = std::to_string(m_counts[i]);
        const std::string name = Names[i];
        text += "  " + name + std::string(36 - name.size(), ' ') + std::string(12 - number.size(), ' ') + number + "\n";
    }
    return text;
}

} // namespace orl::test
