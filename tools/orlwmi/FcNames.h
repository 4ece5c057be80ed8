// Fibre Channel's numbers in the forms that people know them by.
#pragma once

#include <string>

namespace orl::client
{

// A world wide name with colons: "20:00:52:54:00:fc:00:01". Accepts 16 hexadecimal digits, with or without 0x or
// colons; any other text is given back as it is.
[[nodiscard]] std::string ColonName(const std::string& worldWideName);

// Whether a port with this FCID is logged in somewhere: neither empty, nor 0, nor all ones.
[[nodiscard]] bool HasFcid(const std::string& fcid);

// An FCID as the provider writes it, with what it means when the port has none.
[[nodiscard]] std::string FcidText(const std::string& fcid);

} // namespace orl::client
