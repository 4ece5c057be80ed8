// Which provider serves a class, by the registration instances of the namespace.
#include "host/Registration.h"

#include "host/CallStatus.h"
#include "host/Qualifiers.h"
#include "wbem/ObjectPath.h"
#include "wbem/Text.h"

#include <algorithm>

namespace orl
{
namespace
{

using wbem::CimValue;

const CimValue& ValueOf(const ObjectBody& body, std::wstring_view property)
{
    static const CimValue none;
    const std::size_t index = body.Class().FindProperty(property);
    return index == ClassDef::kNotFound ? none : body[index];
}

// Instances of a system class and of the classes below it.
template <class Visitor>
void ForEachInstance(const Namespace& nameSpace, std::wstring_view className, const Visitor& visit)
{
    const ClassDef* top = nameSpace.FindClass(className);
    for (const ClassDef* ofClass : nameSpace.WithSubclasses(*top))
    {
        for (const Ref<ObjectBody>& instance : nameSpace.DeclaredInstances(*ofClass))
            visit(*instance);
    }
}

bool NamesProvider(const CimValue& reference, const std::wstring& name)
{
    const auto path = wbem::ObjectPath::Parse(reference.AsText());
    return path && path->keys.size() == 1 &&
           (path->keys.front().name.empty() || wbem::EqualNoCase(path->keys.front().name, L"Name")) &&
           wbem::EqualNoCase(path->keys.front().value.AsText(), name);
}

bool SupportsQueries(const ObjectBody& registration)
{
    const auto& levels = ValueOf(registration, L"QuerySupportLevels").Elements();
    return std::any_of(levels.begin(), levels.end(),
                       [](const CimValue& level) { return wbem::StartsWithNoCase(level.AsText(), L"WQL:"); });
}

const std::wstring* ProviderName(const ClassDef& ofClass, std::wstring& holder)
{
    const CimValue* provider = FindClassQualifier(ofClass, L"provider");
    if (!provider || provider->AsText().empty())
        return nullptr;
    holder = provider->AsText();
    return &holder;
}

Registration ReadRegistration(const ClassDef& ofClass)
{
    Registration found;
    if (!ProviderName(ofClass, found.name))
        throw CallFailure(WBEM_E_PROVIDER_NOT_FOUND, L"the class " + ofClass.Name() + L" has no provider");
    const Namespace& nameSpace = ofClass.InNamespace();
    found.nameSpace = &nameSpace;
    bool isRegistered = false;
    ForEachInstance(nameSpace, L"__Provider",
                    [&](const ObjectBody& provider)
                    {
                        if (!wbem::EqualNoCase(ValueOf(provider, L"Name").AsText(), found.name))
                            return;
                        isRegistered = true;
                        found.clsid = ValueOf(provider, L"CLSID").AsText();
                    });
    if (!isRegistered)
        throw CallFailure(WBEM_E_PROVIDER_NOT_FOUND, L"the provider " + found.name + L" of the class " +
                                                         ofClass.Name() + L" is not registered in " + nameSpace.Name());
    if (found.clsid.empty())
        throw CallFailure(WBEM_E_INVALID_PROVIDER_REGISTRATION,
                          L"the registration of the provider " + found.name + L" has no CLSID");
    ForEachInstance(nameSpace, L"__InstanceProviderRegistration",
                    [&](const ObjectBody& registration)
                    {
                        if (!NamesProvider(ValueOf(registration, L"provider"), found.name))
                            return;
                        found.isInstanceProvider = true;
                        found.supportsGet = ValueOf(registration, L"SupportsGet").AsBool();
                        found.supportsEnumeration = ValueOf(registration, L"SupportsEnumeration").AsBool();
                        found.supportsPut = ValueOf(registration, L"SupportsPut").AsBool();
                        found.supportsDelete = ValueOf(registration, L"SupportsDelete").AsBool();
                        found.supportsQueries = SupportsQueries(registration);
                    });
    ForEachInstance(nameSpace, L"__MethodProviderRegistration",
                    [&](const ObjectBody& registration)
                    {
                        if (NamesProvider(ValueOf(registration, L"provider"), found.name))
                            found.isMethodProvider = true;
                    });
    return found;
}

} // namespace

bool HasProvider(const ClassDef& ofClass)
{
    std::wstring holder;
    return ProviderName(ofClass, holder) != nullptr;
}

const Registration& FindRegistration(const ClassDef& ofClass)
{
    return ofClass.InNamespace().Registrations().Get(&ofClass, [&] { return ReadRegistration(ofClass); });
}

} // namespace orl
