// CZarn_FcoeHBAToSettingAssocMgr: Zarn_FCoE_HBA_Setting_Assoc, which links each FCoE adapter to each of its settings.
#pragma once

#include "settings/SettingLink.h"

namespace orl
{

inline constexpr SettingLinkFacts HbaToSettingFacts{
    .cimClass = L"Zarn_FCoE_HBA_Setting_Assoc",
    .makeElement = &CZarn_Fcoe::MakeHBAPathFromDeviceID,
    .getScope = L"CZarn_FcoeHBAToSettingAssocMgr::GetObjectAsync",
    .enumerateScope = L"CZarn_FcoeHBAToSettingAssocMgr::CreateInstanceEnumAsync",
    .sendScope = L"CZarn_FcoeHBAToSettingAssocMgr::SendInstance",
    .listing = {.hbasFailed = L"CZarn_FcoeHBAToSettingAssocMgr::EnumerateHBAs",
                .source = {L"Src\\Zarn_HBAToSettingAssocMgr", 178},
                .settingsFailed = L"EnumerateFCOESettings failed for %s"},
    .keyMissing = {L"Src\\Zarn_HBAToSettingAssocMgr", 73},
    .settingMissing = {L"Src\\Zarn_HBAToSettingAssocMgr", 100},
    .kindUnknown = {L"Src\\Zarn_HBAToSettingAssocMgr", 278},
};

} // namespace orl

class CZarn_FcoeHBAToSettingAssocMgr final : public CZarn_SettingLink<orl::HbaToSettingFacts>
{
public:
    CZarn_FcoeHBAToSettingAssocMgr(COrlFcoeAgentIntf* fcoeAgent, OrlAdapterAgent* adapterAgent)
        : CZarn_SettingLink(fcoeAgent, adapterAgent)
    {
        const COrlTraceScope scope(L"CZarn_FcoeHBAToSettingAssocMgr::CZarn_FcoeHBAToSettingAssocMgr");
    }
    ~CZarn_FcoeHBAToSettingAssocMgr() override
    {
        const COrlTraceScope scope(L"CZarn_FcoeHBAToSettingAssocMgr::~CZarn_FcoeHBAToSettingAssocMgr");
    }
};
