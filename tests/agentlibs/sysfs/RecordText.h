// Records as one line of text each, so that a test compares and shows them whole.
#pragma once

#include "agentlibs/fcoelink/Backend.h"

#include <string>
#include <vector>

namespace orl
{

// The fields in the order of the record, divided by bars. FCIDs and FC-MAPs are written in hexadecimal.
std::string Line(const ORL_FCOE_HBA& hba);
std::string Line(const ORL_FCOE_PORT& port);
std::string Line(const ORL_FCOE_FABRIC& fabric);
std::string Line(const ORL_FCOE_TARGET& target);
std::string Line(const ORL_FCOE_LUN& lun);
std::string Line(const ORL_FCOE_VLAN& vlan);
std::string Line(const ORL_FCOE_STATISTIC& statistic);

template <class Record>
std::vector<std::string> Lines(const std::vector<Record>& records)
{
    std::vector<std::string> lines;
    for (const Record& record : records)
        lines.push_back(Line(record));
    return lines;
}

// What the back end answers, as lines. An enumeration that answers false gives the line "refused", one that throws the
// line "error CODE: TEXT".
std::vector<std::string> Hbas(FcoeBackend& backend, const wchar_t* deviceId = L"");
std::vector<std::string> Ports(FcoeBackend& backend, const wchar_t* deviceId = L"");
std::vector<std::string> Fabrics(FcoeBackend& backend, const wchar_t* deviceId = L"");
std::vector<std::string> Targets(FcoeBackend& backend, const wchar_t* deviceId = L"");
std::vector<std::string> Luns(FcoeBackend& backend, const wchar_t* deviceId = L"");
std::vector<std::string> Vlans(FcoeBackend& backend, const wchar_t* deviceId = L"");
std::vector<std::string> Statistics(FcoeBackend& backend, const wchar_t* deviceId = L"");

} // namespace orl
