// JSON texts put together from parts. By hand: the JSON library's own values need memory to be destroyed, and end the
// process when there is none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orl
{

// `"key": value`; the value is a JSON text, the key needs no escapes.
std::string JsonMemberText(std::string_view key, const std::string& value);

// The parts with commas between and a bracket on either side. `before` stands in front of each: a line break and an
// indentation, or nothing for a list or object on one line.
std::string JsonEnclosed(char open, const std::vector<std::string>& parts, char close, const char* before);

} // namespace orl
