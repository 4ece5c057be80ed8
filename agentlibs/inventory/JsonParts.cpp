// JSON texts put together from parts.

#include "agentlibs/inventory/JsonParts.h"

namespace orl
{

std::string JsonMemberText(std::string_view key, const std::string& value)
{
    return '"' + std::string(key) + "\": " + value;
}

std::string JsonEnclosed(char open, const std::vector<std::string>& parts, char close, const char* before)
{
    std::string text(1, open);
    for (const std::string& part : parts)
        text.append(text.size() == 1 ? "" : *before == '\0' ? ", " : ",").append(before).append(part);
    return text + close;
}

} // namespace orl
