// Which qualifiers pass down, and to whom.
#include "host/Qualifiers.h"

#include "host/Repository.h"

#include <windows.h>
#include <wbemcli.h>

#include <algorithm>
#include <array>

namespace orl
{
namespace
{

using wbem::MofQualifier;

// What belongs to the very class that declares it: a subclass has its own provider, or none.
constexpr std::array<std::wstring_view, 5> kRestricted = {L"abstract", L"dynamic", L"provider", L"version", L"uuid"};
// What an instance shows although its text names no flavor.
constexpr std::array<std::wstring_view, 7> kToInstance = {L"key",     L"dynamic",   L"provider", L"association",
                                                          L"cimtype", L"singleton", L"static"};

template <std::size_t N>
bool IsOneOf(std::wstring_view name, const std::array<std::wstring_view, N>& names) noexcept
{
    return std::any_of(names.begin(), names.end(),
                       [&](std::wstring_view each) { return wbem::EqualNoCase(each, name); });
}

// The propagation and permission flavors in force: those written, else those declared for the qualifier, else the
// defaults of the language.
std::int32_t FlavorOf(const MofQualifier& qualifier, const Namespace& nameSpace) noexcept
{
    constexpr std::uint16_t propagation = wbem::kFlavorToInstance | wbem::kFlavorToSubclass | wbem::kFlavorRestricted |
                                          wbem::kFlavorNotToInstance | wbem::kFlavorNotToSubclass;
    std::uint16_t flavors = qualifier.flavors;
    if (!(flavors & propagation))
        flavors |= nameSpace.DeclaredFlavors(qualifier.name);
    std::int32_t flavor = 0;
    const bool said = (flavors & (wbem::kFlavorToInstance | wbem::kFlavorToSubclass)) != 0;
    const bool refused = (flavors & (wbem::kFlavorRestricted | wbem::kFlavorNotToSubclass)) != 0;
    if ((flavors & wbem::kFlavorToSubclass) || (!said && !refused && !IsOneOf(qualifier.name, kRestricted)))
        flavor |= WBEM_FLAVOR_FLAG_PROPAGATE_TO_DERIVED_CLASS;
    if ((flavors & wbem::kFlavorToInstance) ||
        (!(flavors & wbem::kFlavorNotToInstance) && IsOneOf(qualifier.name, kToInstance)))
        flavor |= WBEM_FLAVOR_FLAG_PROPAGATE_TO_INSTANCE;
    if ((flavors & wbem::kFlavorDisableOverride) || wbem::EqualNoCase(qualifier.name, L"key"))
        flavor |= WBEM_FLAVOR_NOT_OVERRIDABLE;
    if (flavors & wbem::kFlavorAmended)
        flavor |= WBEM_FLAVOR_AMENDED;
    return flavor;
}

void Take(std::vector<Qualifier>& into, const std::vector<MofQualifier>& declared, const ClassDef& holder,
          const ClassDef& asker)
{
    for (const MofQualifier& qualifier : declared)
    {
        if (FindQualifier(into, qualifier.name))
            continue;
        std::int32_t flavor = FlavorOf(qualifier, holder.InNamespace());
        if (&holder != &asker)
        {
            if (!(flavor & WBEM_FLAVOR_FLAG_PROPAGATE_TO_DERIVED_CLASS))
                continue;
            flavor |= WBEM_FLAVOR_ORIGIN_PROPAGATED;
        }
        into.push_back({qualifier.name, qualifier.value, flavor});
    }
}

template <class Member>
const Member* FindLocal(const std::vector<Member>& members, std::wstring_view name) noexcept
{
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const Member& member) { return wbem::EqualNoCase(member.name, name); });
    return found == members.end() ? nullptr : &*found;
}

template <class Member>
std::vector<Qualifier> MemberQualifiers(const ClassDef& ofClass, std::vector<Member> wbem::MofClass::*members,
                                        std::wstring_view name)
{
    std::vector<Qualifier> all;
    for (const ClassDef* holder = &ofClass; holder; holder = holder->Superclass())
    {
        if (const Member* member = FindLocal(holder->Declaration().*members, name))
            Take(all, member->qualifiers, *holder, ofClass);
    }
    return all;
}

} // namespace

std::vector<Qualifier> ClassQualifiers(const ClassDef& ofClass)
{
    std::vector<Qualifier> all;
    for (const ClassDef* holder = &ofClass; holder; holder = holder->Superclass())
        Take(all, holder->Declaration().qualifiers, *holder, ofClass);
    return all;
}

std::vector<Qualifier> PropertyQualifiers(const ClassDef& ofClass, const PropertyDef& property)
{
    std::vector<Qualifier> all = MemberQualifiers(ofClass, &wbem::MofClass::properties, property.Name());
    if (!FindQualifier(all, L"CIMTYPE"))
        all.push_back({L"CIMTYPE", wbem::CimValue::String(property.CimTypeText()),
                       WBEM_FLAVOR_FLAG_PROPAGATE_TO_INSTANCE | WBEM_FLAVOR_FLAG_PROPAGATE_TO_DERIVED_CLASS});
    return all;
}

std::vector<Qualifier> MethodQualifiers(const ClassDef& ofClass, const MethodDef& method)
{
    return MemberQualifiers(ofClass, &wbem::MofClass::methods, method.Name());
}

std::vector<Qualifier> ForInstance(std::vector<Qualifier> qualifiers)
{
    std::erase_if(qualifiers, [](const Qualifier& qualifier)
                  { return !(qualifier.flavor & WBEM_FLAVOR_FLAG_PROPAGATE_TO_INSTANCE); });
    for (Qualifier& qualifier : qualifiers)
        qualifier.flavor |= WBEM_FLAVOR_ORIGIN_PROPAGATED;
    return qualifiers;
}

const Qualifier* FindQualifier(const std::vector<Qualifier>& qualifiers, std::wstring_view name) noexcept
{
    return FindLocal(qualifiers, name);
}

bool IsTrue(const MofQualifier* qualifier) noexcept
{
    if (!qualifier || qualifier->value.IsNull())
        return false;
    return qualifier->value.Type() != wbem::CimType::Boolean || qualifier->value.AsBool();
}

const wbem::CimValue* FindClassQualifier(const ClassDef& ofClass, std::wstring_view name) noexcept
{
    for (const ClassDef* holder = &ofClass; holder; holder = holder->Superclass())
    {
        const MofQualifier* found = wbem::FindQualifier(holder->Declaration().qualifiers, name);
        if (found && (holder == &ofClass ||
                      (FlavorOf(*found, holder->InNamespace()) & WBEM_FLAVOR_FLAG_PROPAGATE_TO_DERIVED_CLASS)))
            return &found->value;
    }
    return nullptr;
}

} // namespace orl
