// CZarn_FCOESettingMgr: Zarn_FCoeSetting, which links each Ethernet adapter that carries FCoE to each of its settings.
#pragma once

#include "settings/SettingLink.h"

namespace orl
{

inline constexpr SettingLinkFacts FcoeSettingFacts{
    .cimClass = L"Zarn_FCoeSetting",
    .makeElement = &CZarn_Fcoe::MakeDevicePathFromDeviceID,
    .getScope = L"CZarn_FCOESettingMgr::GetObjectAsync",
    .enumerateScope = L"CZarn_FCOESettingMgr::CreateInstanceEnumAsync",
    .sendScope = L"CZarn_FCOESettingMgr::SendInstance",
    // Tools know this failure under the association's name.
    .listing = {.hbasFailed = L"CZarn_FcoeHBAToSettingAssocMgr::EnumerateHBAs",
                .source = {L"Src\\Zarn_FCOESettingMgr", 192},
                .settingsFailed = L"EnumerateSettings failed for %s"},
    .keyMissing = {L"Src\\Zarn_FCOESettingMgr", 88},
    .settingMissing = {L"Src\\Zarn_FCOESettingMgr", 115},
    .kindUnknown = {L"Src\\Zarn_FCOESettingMgr", 291},
};

} // namespace orl

using CZarn_FCOESettingMgr = CZarn_SettingLink<orl::FcoeSettingFacts>;
