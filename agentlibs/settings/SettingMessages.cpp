// What the adapter agent tells users about changes of settings.

#include "agentlibs/settings/SettingMessages.h"

#include "Common/Src/OrlString.h"

#include <string_view>

namespace orl
{

namespace
{

constexpr ULONG KindAdvice = 2;
constexpr std::wstring_view Place = L"%s";

} // namespace

// Not the string's own formatting, which looks for the next place from the front: inserts come from users and may hold
// what looks like one.
std::wstring TextOf(SettingMessage message, const std::vector<std::wstring>& inserts)
{
    const auto number = static_cast<ULONG>(message);
    COrlString format;
    if (format.LoadCommonResString(number) <= 0)
    {
        format = L"message " + std::to_wstring(number) + L" of the resource library, which is missing:";
        for (std::size_t i = 0; i < inserts.size(); ++i)
            format += L" %s";
    }
    std::wstring text;
    std::size_t next = 0;
    for (const std::wstring& insert : inserts)
    {
        const std::size_t place = format.find(Place, next);
        if (place == std::wstring::npos)
            break;
        text.append(format, next, place - next).append(insert);
        next = place + Place.size();
    }
    return text.append(format, next, std::wstring::npos);
}

WarningMessageObj Advice(SettingMessage message, const std::vector<std::wstring>& inserts)
{
    return {KindAdvice, static_cast<ULONG>(message), TextOf(message, inserts)};
}

} // namespace orl
