// World wide names and addresses for people.
#include "tools/orlwmi/FcNames.h"

#include "tools/orlwmi/Text.h"

namespace orl::client
{

std::string ColonName(const std::string& worldWideName)
{
    const bool prefixed = worldWideName.compare(0, 2, "0x") == 0 || worldWideName.compare(0, 2, "0X") == 0;
    std::string digits;
    for (size_t i = prefixed ? 2 : 0; i < worldWideName.size(); ++i)
    {
        const char c = worldWideName[i];
        const bool digit = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
        if (digit || (c >= 'A' && c <= 'F'))
        {
            digits += digit ? c : static_cast<char>(c - 'A' + 'a');
        }
        else if (c != ':')
        {
            return worldWideName;
        }
    }
    if (digits.size() != 16)
    {
        return worldWideName;
    }
    std::string name;
    for (size_t i = 0; i < digits.size(); i += 2)
    {
        name += (i == 0 ? "" : ":") + digits.substr(i, 2);
    }
    return name;
}

bool HasFcid(const std::string& fcid)
{
    // The kernel gives all ones before a port's first login and zero after it lost one.
    return !fcid.empty() && fcid != "0x0" && !SameName(fcid, "0xFFFFFFFF");
}

std::string FcidText(const std::string& fcid)
{
    return fcid.empty() || HasFcid(fcid) ? fcid : "none, not logged in (" + fcid + ")";
}

} // namespace orl::client
