// The string tables of a resource script, as windres takes it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

// Texts by number, in UTF-8.
using RcTexts = std::map<uint32_t, std::string>;

// Reads the texts of a UTF-8 script. STRINGTABLE and LANGUAGE are understood, VERSIONINFO is passed over; #define of a
// number works, also in a header that is included. Throws std::runtime_error with the file, the line and the reason for
// anything else.
RcTexts ReadRcFile(const std::filesystem::path& file);
