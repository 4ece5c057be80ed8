// Distance in letters added, left out or changed.
#include "tools/orlwmi/NearestName.h"

#include "tools/orlwmi/Text.h"

#include <algorithm>
#include <numeric>

namespace orl::client
{
namespace
{

size_t Distance(const std::string& from, const std::string& to)
{
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i)
    {
        size_t diagonal = row[0]++;
        for (size_t j = 0; j < to.size(); ++j)
        {
            const size_t changed = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string NearestName(const std::string& name, const std::vector<std::string>& known)
{
    const std::string wanted = Lower(name);
    std::string nearest;
    size_t least = static_cast<size_t>(-1);
    for (const auto& candidate : known)
    {
        const size_t distance = Distance(wanted, Lower(candidate));
        if (distance < least)
        {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace orl::client
