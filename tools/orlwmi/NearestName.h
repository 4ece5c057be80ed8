// Names that were meant.
#pragma once

#include <string>
#include <vector>

namespace orl::client
{

// The known name that takes the fewest letters to get to, without regard to case; empty when none is known.
[[nodiscard]] std::string NearestName(const std::string& name, const std::vector<std::string>& known);

} // namespace orl::client
