// The settings that the kernel has for an FCoE adapter: one attribute each.
#pragma once

#include "agentlibs/settings/SettingDescription.h"

#include <span>
#include <string>
#include <string_view>

namespace orl::sysfs
{

// In whose folder the attribute is.
enum class AttributePlace
{
    Controller, // net/IF/ctlr_N
    FcHost,     // .../fc_host/hostN
    Interface   // net/IF
};

// A choice and the words of the kernel for it.
struct KernelChoice
{
    LONG value;
    const wchar_t* text;
    std::string_view read;    // whatever the case
    std::string_view written; // exactly
};

struct SettingAttribute
{
    const wchar_t* name;
    const wchar_t* displayName;
    const wchar_t* miniHelp;
    const wchar_t* description;
    const char* file;
    AttributePlace place;
    LONG defaultValue;
    LONG min; // of a number
    LONG max;
    std::span<const KernelChoice> choices; // none: the attribute is a number
};

inline constexpr const wchar_t* ControllerModeName = L"ControllerMode";
inline constexpr const wchar_t* MtuName = L"Mtu";
inline constexpr LONG FullFrameMtu = 2158; // a Fibre Channel frame of full length within Ethernet's payload

// In the order in which clients see them.
std::span<const SettingAttribute> SettingAttributes();

// The setting with the value that the attribute's text says; nothing for a text that is no value of it, as an attribute
// that is missing or that another kernel writes in other words.
std::optional<SettingDescription> Describe(const SettingAttribute& attribute, std::string_view text);

// What the kernel is given for the value.
std::string KernelText(const SettingAttribute& attribute, LONG value);

} // namespace orl::sysfs
