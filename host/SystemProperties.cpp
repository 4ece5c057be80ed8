// The properties that every object has without its class declaring them.
#include "host/SystemProperties.h"

#include "host/ObjectNames.h"
#include "host/Repository.h"
#include "wbem/Text.h"

#include <algorithm>
#include <array>

namespace orl
{
namespace
{

using wbem::CimType;
using wbem::CimValue;

CimValue TextOrNull(const std::optional<std::wstring>& text)
{
    return text ? CimValue::String(*text) : CimValue::Null(CimType::String);
}

CimValue Genus(const ObjectBody& body, std::size_t)
{
    return CimValue::Signed(CimType::SInt32, body.IsInstance() ? 2 : 1);
}

CimValue ClassName(const ObjectBody& body, std::size_t)
{
    return CimValue::String(body.Class().Name());
}

CimValue Superclass(const ObjectBody& body, std::size_t)
{
    const ClassDef* superclass = body.Class().Superclass();
    return superclass ? CimValue::String(superclass->Name()) : CimValue::Null(CimType::String);
}

CimValue Dynasty(const ObjectBody& body, std::size_t)
{
    return CimValue::String(body.Class().Dynasty().Name());
}

CimValue Relative(const ObjectBody& body, std::size_t)
{
    return TextOrNull(RelativePath(body));
}

CimValue PropertyCount(const ObjectBody&, std::size_t shown)
{
    return CimValue::Signed(CimType::SInt32, static_cast<std::int64_t>(shown));
}

CimValue Derivation(const ObjectBody& body, std::size_t)
{
    std::vector<CimValue> names;
    for (const ClassDef* step = body.Class().Superclass(); step; step = step->Superclass())
        names.push_back(CimValue::String(step->Name()));
    return CimValue::Array(CimType::String, std::move(names));
}

CimValue Server(const ObjectBody&, std::size_t)
{
    return CimValue::String(ServerName());
}

CimValue NamespaceName(const ObjectBody& body, std::size_t)
{
    return CimValue::String(body.Class().InNamespace().Name());
}

CimValue Path(const ObjectBody& body, std::size_t)
{
    return TextOrNull(FullPath(body));
}

constexpr std::array<SystemProperty, 10> kProperties = {{
    {L"__GENUS", CimType::SInt32, false, Genus},
    {L"__CLASS", CimType::String, false, ClassName},
    {L"__SUPERCLASS", CimType::String, false, Superclass},
    {L"__DYNASTY", CimType::String, false, Dynasty},
    {L"__RELPATH", CimType::String, false, Relative},
    {L"__PROPERTY_COUNT", CimType::SInt32, false, PropertyCount},
    {L"__DERIVATION", CimType::String, true, Derivation},
    {L"__SERVER", CimType::String, false, Server},
    {L"__NAMESPACE", CimType::String, false, NamespaceName},
    {L"__PATH", CimType::String, false, Path},
}};

} // namespace

std::span<const SystemProperty> SystemProperties() noexcept
{
    return kProperties;
}

const SystemProperty* FindSystemProperty(std::wstring_view name) noexcept
{
    const auto found =
        std::find_if(kProperties.begin(), kProperties.end(),
                     [&](const SystemProperty& property) { return wbem::EqualNoCase(property.name, name); });
    return found == kProperties.end() ? nullptr : &*found;
}

} // namespace orl
