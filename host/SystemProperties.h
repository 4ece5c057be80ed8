// The properties that every object has without its class declaring them: __PATH, __CLASS and their like.
#pragma once

#include "host/ObjectBody.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace orl
{

struct SystemProperty
{
    std::wstring_view name;
    wbem::CimType type;
    bool isArray;
    // `shown` is the number of properties that the object shows. Null where the object has no such value.
    wbem::CimValue (*value)(const ObjectBody& body, std::size_t shown);
};

// In the order in which an enumeration yields them.
std::span<const SystemProperty> SystemProperties() noexcept;

// Without case; null for other names.
const SystemProperty* FindSystemProperty(std::wstring_view name) noexcept;

inline bool IsSystemName(const wchar_t* name) noexcept
{
    return name[0] == L'_' && name[1] == L'_';
}

} // namespace orl
