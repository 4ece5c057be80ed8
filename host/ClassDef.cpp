// A class of the schema: inheritance resolved into one table of properties and one of methods.
#include "host/ClassDef.h"

#include "host/Qualifiers.h"
#include "wbem/Text.h"

#include <algorithm>
#include <bit>
#include <cwchar>

namespace orl
{
namespace
{

constexpr std::uint16_t kFree = 0xffff;
// Steps keep a class from writing down a new number with each instance.
constexpr std::size_t kTextRoomStep = 64;
constexpr std::size_t kMaxTextRoom = 1024;
constexpr std::size_t kMaxProperties = 1024; // WBEM_MAX_USER_PROPERTIES

bool SameType(const wbem::MofType& left, const wbem::MofType& right) noexcept
{
    return left.type == right.type && left.isArray == right.isArray;
}

bool IsInParameter(const wbem::MofProperty& parameter) noexcept
{
    const wbem::MofQualifier* in = wbem::FindQualifier(parameter.qualifiers, L"In");
    return in ? IsTrue(in) : !IsTrue(wbem::FindQualifier(parameter.qualifiers, L"Out"));
}

bool IsOutParameter(const wbem::MofProperty& parameter) noexcept
{
    return IsTrue(wbem::FindQualifier(parameter.qualifiers, L"Out"));
}

} // namespace

std::int32_t PropertyDef::CimTypeNumber() const noexcept
{
    return static_cast<std::int32_t>(Type()) | (IsArray() ? std::int32_t{wbem::kCimFlagArray} : 0);
}

std::wstring PropertyDef::CimTypeText() const
{
    std::wstring text(wbem::CimTypeName(Type()));
    const std::wstring& named = declaration->type.className;
    const bool hasClass = Type() == wbem::CimType::Reference || Type() == wbem::CimType::Object;
    return hasClass && !named.empty() ? text + L":" + named : text;
}

ClassDef::ClassDef(wbem::MofClass declaration, const ClassDef* superclass, const Namespace& nameSpace)
    : m_declaration(std::move(declaration)), m_superclass(superclass), m_namespace(nameSpace)
{
    TakeProperties();
    IndexProperties();
    TakeMethods();
    FillPrototype();
    const wbem::CimValue* association = FindClassQualifier(*this, L"association");
    m_isAssociation = association && association->AsBool();
    const wbem::CimValue* singleton = FindClassQualifier(*this, L"singleton");
    m_isSingleton = singleton && singleton->AsBool();
}

void ClassDef::TakeProperties()
{
    if (m_superclass)
        m_properties = m_superclass->m_properties;
    const std::size_t inherited = m_properties.size();
    m_properties.reserve(inherited + m_declaration.properties.size());
    for (const wbem::MofProperty& own : m_declaration.properties)
    {
        const std::size_t index = m_superclass ? m_superclass->FindProperty(own.name) : kNotFound;
        const bool isKey = IsTrue(wbem::FindQualifier(own.qualifiers, L"key"));
        if (index == kNotFound)
        {
            m_properties.push_back({&own, this, this, isKey});
            continue;
        }
        PropertyDef& overridden = m_properties[index];
        if (!SameType(own.type, overridden.declaration->type))
            throw SchemaError(own.position, L"the property " + own.name + L" of " + Name() + L" is " +
                                                overridden.CimTypeText() + L" in " + overridden.declaredBy->Name() +
                                                L" and cannot change its type");
        overridden.declaration = &own;
        overridden.declaredBy = this;
        overridden.isKey = overridden.isKey || isKey;
    }
    if (m_properties.size() > kMaxProperties)
        throw SchemaError(m_declaration.position, L"the class " + Name() + L" has more than " +
                                                      std::to_wstring(kMaxProperties) + L" properties");
    for (std::size_t i = 0; i < m_properties.size(); ++i)
    {
        if (m_properties[i].isKey)
            m_keys.push_back(i);
    }
}

void ClassDef::IndexProperties()
{
    m_followers = std::vector<std::atomic<std::uint32_t>>(m_properties.size() + 1);
    m_index.assign(std::bit_ceil(m_properties.size() * 2 + 1), kFree);
    for (std::size_t i = 0; i < m_properties.size(); ++i)
    {
        const std::wstring& name = m_properties[i].Name();
        std::size_t place = wbem::HashNoCase(name) & (m_index.size() - 1);
        while (m_index[place] != kFree)
            place = (place + 1) & (m_index.size() - 1);
        m_index[place] = static_cast<std::uint16_t>(i);
    }
}

std::size_t ClassDef::FindProperty(std::wstring_view name) const noexcept
{
    std::size_t place = wbem::HashNoCase(name) & (m_index.size() - 1);
    while (m_index[place] != kFree)
    {
        if (wbem::EqualNoCase(m_properties[m_index[place]].Name(), name))
            return m_index[place];
        place = (place + 1) & (m_index.size() - 1);
    }
    return kNotFound;
}

std::size_t ClassDef::FindPropertyAfter(std::size_t last, const wchar_t* name) const noexcept
{
    std::atomic<std::uint32_t>& followers = m_followers[last + 1]; // kNotFound + 1 is 0
    const std::uint32_t guesses = followers.load(std::memory_order_relaxed);
    for (const std::size_t guess : {guesses & 0xffff, guesses >> 16})
    {
        if (guess < m_properties.size() && std::wcscmp(m_properties[guess].Name().c_str(), name) == 0)
            return guess;
    }
    const std::size_t index = FindProperty(name);
    if (index != kNotFound)
        followers.store(static_cast<std::uint32_t>(guesses << 16 | index), std::memory_order_relaxed);
    return index;
}

void ClassDef::NoteTextRoom(std::size_t taken) const noexcept
{
    const std::size_t usual = UsualTextRoom();
    const std::size_t wanted = std::min((taken + kTextRoomStep - 1) / kTextRoomStep * kTextRoomStep, kMaxTextRoom);
    if (wanted > usual)
        m_usualTextRoom.store(wanted, std::memory_order_relaxed);
    else if (wanted < usual / 4) // one object of much text shall not cost all later ones the room
        m_usualTextRoom.store(usual / 2, std::memory_order_relaxed);
}

void ClassDef::FillPrototype()
{
    m_prototype = ObjectBody::Make(*this, ObjectBody::Genus::Class, m_properties.size());
    for (std::size_t i = 0; i < m_properties.size(); ++i)
    {
        const PropertyDef& property = m_properties[i];
        wbem::CimValue& slot = (*m_prototype)[i];
        if (property.declaration->defaultValue)
            slot = *property.declaration->defaultValue;
        else if (property.origin != this)
            slot = (*m_superclass->m_prototype)[i];
        else
            slot = wbem::CimValue::Null(property.Type(), property.IsArray());
    }
}

void ClassDef::TakeMethods()
{
    if (m_superclass)
        m_methods = m_superclass->m_methods;
    for (const wbem::MofMethod& own : m_declaration.methods)
    {
        const auto found =
            std::find_if(m_methods.begin(), m_methods.end(),
                         [&](const MethodDef& method) { return wbem::EqualNoCase(method.Name(), own.name); });
        MethodDef& method = found != m_methods.end() ? *found : m_methods.emplace_back();
        method.declaration = &own;
        method.declaredBy = this;
        if (!method.origin)
            method.origin = this;
        method.in = Signature(own, true);
        method.out = Signature(own, false);
    }
}

// Parameters of one direction as the properties of a class; the qualifier ID counts the parameters of both directions.
std::shared_ptr<const ClassDef> ClassDef::Signature(const wbem::MofMethod& method, bool isIn) const
{
    wbem::MofClass parameters;
    parameters.name = kParametersClass;
    parameters.position = method.position;
    std::int64_t id = 0;
    for (const wbem::MofProperty& parameter : method.parameters)
    {
        if (isIn ? IsInParameter(parameter) : IsOutParameter(parameter))
        {
            parameters.properties.push_back(parameter);
            parameters.properties.back().qualifiers.push_back(
                {L"ID", wbem::CimValue::Integer(id), 0, parameter.position});
        }
        ++id;
    }
    if (!isIn && method.result.type != wbem::CimType::Empty)
    {
        wbem::MofProperty result;
        result.name = L"ReturnValue";
        result.type = method.result;
        result.position = method.position;
        result.qualifiers.push_back({L"out", wbem::CimValue::Bool(true), 0, method.position});
        parameters.properties.push_back(std::move(result));
    }
    if (parameters.properties.empty())
        return nullptr;
    return std::make_shared<ClassDef>(std::move(parameters), nullptr, m_namespace);
}

const MethodDef* ClassDef::FindMethod(std::wstring_view name) const noexcept
{
    const auto found = std::find_if(m_methods.begin(), m_methods.end(),
                                    [&](const MethodDef& method) { return wbem::EqualNoCase(method.Name(), name); });
    return found == m_methods.end() ? nullptr : &*found;
}

const ClassDef& ClassDef::Dynasty() const noexcept
{
    const ClassDef* top = this;
    while (top->m_superclass)
        top = top->m_superclass;
    return *top;
}

bool ClassDef::DerivesFrom(const ClassDef& ancestor) const noexcept
{
    const ClassDef* step = this;
    while (step && step != &ancestor)
        step = step->m_superclass;
    return step != nullptr;
}

bool ClassDef::DerivesFrom(std::wstring_view ancestor) const noexcept
{
    const ClassDef* step = this;
    while (step && !wbem::EqualNoCase(step->Name(), ancestor))
        step = step->m_superclass;
    return step != nullptr;
}

} // namespace orl
