// IWbemClassObject: the properties of an object.
#include "host/ClassObject.h"

#include "host/CallStatus.h"
#include "host/Qualifiers.h"
#include "host/Repository.h"
#include "host/SystemProperties.h"
#include "host/VariantValue.h"

#include <algorithm>

namespace orl
{
namespace
{

using wbem::CimType;
using wbem::CimValue;

// Asked for this, an object of this library answers itself as a ClassObject.
constexpr IID kOwnObject = {0x6b1f6d3c, 0x8a55, 0x4c2b, {0x9d, 0x1e, 0x35, 0x70, 0xb2, 0x4f, 0xc8, 0x17}};

void AnswerSystem(const SystemProperty& property, const ObjectBody& body, std::size_t shown, VARIANT* value,
                  CIMTYPE* type, LONG* flavor)
{
    if (value)
        ToVariant(property.value(body, shown), body.Class().InNamespace(), *value);
    if (type)
        *type = static_cast<CIMTYPE>(property.type) | (property.isArray ? CIMTYPE{wbem::kCimFlagArray} : 0);
    if (flavor)
        *flavor = WBEM_FLAVOR_ORIGIN_SYSTEM;
}

std::size_t ShownCount(const ObjectBody& body, const Projection* projection) noexcept
{
    return projection ? projection->count : body.Count();
}

// Whether a property's qualifiers meet the condition of GetNames.
bool MeetsCondition(const std::vector<Qualifier>& qualifiers, LPCWSTR name, LONG condition, const VARIANT* wanted)
{
    const Qualifier* found = FindQualifier(qualifiers, name);
    if (condition == WBEM_FLAG_ONLY_IF_FALSE)
        return found == nullptr;
    if (condition == WBEM_FLAG_ONLY_IF_TRUE || !found)
        return found != nullptr;
    std::wstring reason;
    const std::optional<CimValue> value =
        wanted ? FromVariant(*wanted, found->value.Type(), found->value.IsArray(), reason) : std::nullopt;
    return value && *value == found->value;
}

void CheckEmbedded(const ClassDef& ofClass, const PropertyDef& property, const CimValue& value)
{
    const std::wstring& wanted = property.declaration->type.className;
    if (property.Type() != CimType::Object || value.IsNull() || wanted.empty())
        return;
    const auto check = [&](const CimValue& element)
    {
        if (element.IsNull())
            return;
        const std::wstring& given = element.AsObject()->className;
        const ClassDef* embedded = ofClass.InNamespace().FindClass(given);
        if (!embedded || !embedded->DerivesFrom(wanted))
            throw CallFailure(WBEM_E_TYPE_MISMATCH, L"the property " + property.Name() + L" of " + ofClass.Name() +
                                                        L" takes objects of " + wanted + L", not of " + given);
    };
    if (value.IsArray())
        std::for_each(value.Elements().begin(), value.Elements().end(), check);
    else
        check(value);
}

} // namespace

// Identity -----------------------------------------------------------------------------------------------------------

HRESULT ClassObject::QueryInterface(REFIID iid, void** object)
{
    if (!object || !IsEqualIID(iid, kOwnObject))
        return ComObject::QueryInterface(iid, object);
    *object = this;
    AddRef();
    return S_OK;
}

CComPtr<ClassObject> ClassObject::From(IUnknown* object) noexcept
{
    void* own = nullptr;
    CComPtr<ClassObject> found;
    if (object && SUCCEEDED(object->QueryInterface(kOwnObject, &own)))
        found.Attach(static_cast<ClassObject*>(own));
    return found;
}

CComPtr<ClassObject> ClassObject::FromEmbedded(const wbem::CimObject& object, const Namespace& nameSpace)
{
    const ClassDef* ofClass = nameSpace.FindClass(object.className);
    if (!ofClass)
        throw CallFailure(WBEM_E_INVALID_CLASS,
                          L"the class " + object.className + L" does not exist in " + nameSpace.Name());
    Ref<ObjectBody> body = ofClass->Prototype()->Copy(ObjectBody::Genus::Instance);
    for (const wbem::CimObject::Property& property : object.properties)
    {
        const std::size_t index = ofClass->FindProperty(property.name);
        if (index != ClassDef::kNotFound)
            (*body)[index] = property.value;
    }
    return MakeObject<ClassObject>(std::move(body));
}

std::optional<CimValue> ClassObject::ToEmbedded(IUnknown* object, std::wstring& reason)
{
    if (!object)
        return CimValue::Null(CimType::Object);
    const CComPtr<ClassObject> own = From(object);
    if (!own || !own->m_body->IsInstance())
    {
        reason = L"an embedded object is an instance of a class of this service";
        return std::nullopt;
    }
    wbem::CimObject embedded;
    embedded.className = own->Class().Name();
    for (std::size_t i = 0; i < own->m_body->Count(); ++i)
    {
        if (!(*own->m_body)[i].IsNull())
            embedded.properties.push_back({own->Class().Properties()[i].Name(), (*own->m_body)[i]});
    }
    return CimValue::Object(std::move(embedded));
}

// Values -------------------------------------------------------------------------------------------------------------

std::size_t ClassObject::IndexOf(LPCWSTR name) const
{
    if (!name)
        throw CallFailure(WBEM_E_INVALID_PARAMETER, L"no property is named");
    const std::size_t index = Class().FindPropertyAfter(m_lastNamed.load(std::memory_order_relaxed), name);
    if (index == ClassDef::kNotFound)
        throw CallFailure(WBEM_E_NOT_FOUND, L"the class " + Class().Name() + L" has no property " + name);
    m_lastNamed.store(index, std::memory_order_relaxed);
    if (!Shows(index))
        throw CallFailure(WBEM_E_NOT_FOUND, L"the query did not select the property " + std::wstring(name));
    return index;
}

ObjectBody& ClassObject::Writable()
{
    if (m_body->IsShared())
        m_body = m_body->Copy(m_body->GenusOf());
    return *m_body;
}

void ClassObject::Answer(std::size_t index, VARIANT* value, CIMTYPE* type, LONG* flavor) const
{
    const PropertyDef& property = Class().Properties()[index];
    if (value)
        ToVariant((*m_body)[index], Class().InNamespace(), *value);
    if (type)
        *type = property.CimTypeNumber();
    if (flavor)
        *flavor = property.origin == &Class() ? WBEM_FLAVOR_ORIGIN_LOCAL : WBEM_FLAVOR_ORIGIN_PROPAGATED;
}

bool ClassObject::SetAsItIs(const VARIANT& value, std::size_t index)
{
    const PropertyDef& property = Class().Properties()[index];
    if (property.IsArray())
        return false;
    const CimType type = property.Type();
    if (value.vt == VT_BSTR && (type == CimType::String || type == CimType::Reference))
        Writable().SetText(index, type, ViewOf(V_BSTR(&value)));
    else if (value.vt == VT_I4 && type == CimType::UInt32)
        Writable()[index] = CimValue::Unsigned(type, static_cast<ULONG>(V_I4(&value)));
    else
        return false;
    return true;
}

HRESULT ClassObject::Get(LPCWSTR name, LONG, VARIANT* value, CIMTYPE* type, LONG* flavor)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (name && IsSystemName(name))
            {
                if (const SystemProperty* property = FindSystemProperty(name))
                {
                    AnswerSystem(*property, *m_body, ShownCount(*m_body, m_projection.get()), value, type, flavor);
                    return WBEM_S_NO_ERROR;
                }
            }
            Answer(IndexOf(name), value, type, flavor);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::Put(LPCWSTR name, LONG, VARIANT* value, CIMTYPE type)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (name && IsSystemName(name) && FindSystemProperty(name))
                throw CallFailure(WBEM_E_SYSTEM_PROPERTY, std::wstring(name) + L" cannot be set");
            const std::size_t index = IndexOf(name);
            const PropertyDef& property = Class().Properties()[index];
            const auto refuse = [&](const std::wstring& reason)
            {
                throw CallFailure(WBEM_E_TYPE_MISMATCH, L"the property " + property.Name() + L" of " + Class().Name() +
                                                            L" is " + property.CimTypeText() +
                                                            (property.IsArray() ? L"[]: " : L": ") + reason);
            };
            if (type != CIM_EMPTY && type != property.CimTypeNumber())
                refuse(L"it was put as type " + std::to_wstring(type));
            if (value && SetAsItIs(*value, index))
                return WBEM_S_NO_ERROR;
            std::wstring reason;
            std::optional<CimValue> taken = value ? FromVariant(*value, property.Type(), property.IsArray(), reason)
                                                  : CimValue::Null(property.Type(), property.IsArray());
            if (!taken)
                refuse(reason);
            CheckEmbedded(Class(), property, *taken);
            Writable()[index] = *std::move(taken);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::Delete(LPCWSTR name)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (name && FindSystemProperty(name))
                throw CallFailure(WBEM_E_SYSTEM_PROPERTY, std::wstring(name) + L" cannot be deleted");
            const std::size_t index = IndexOf(name);
            Writable()[index] = (*Class().Prototype())[index];
            return WBEM_S_RESET_TO_DEFAULT;
        });
}

// Names --------------------------------------------------------------------------------------------------------------

bool ClassObject::IsAdmitted(std::size_t index, LONG flags) const noexcept
{
    const PropertyDef& property = Class().Properties()[index];
    const LONG origin = flags & WBEM_MASK_CONDITION_ORIGIN;
    const bool isLocal = property.origin == &Class();
    return Shows(index) && origin != WBEM_FLAG_SYSTEM_ONLY && !(origin == WBEM_FLAG_LOCAL_ONLY && !isLocal) &&
           !(origin == WBEM_FLAG_PROPAGATED_ONLY && isLocal) && !((flags & WBEM_FLAG_KEYS_ONLY) && !property.isKey) &&
           !((flags & WBEM_FLAG_REFS_ONLY) && property.Type() != CimType::Reference);
}

HRESULT ClassObject::GetNames(LPCWSTR qualifier, LONG flags, VARIANT* qualifierValue, SAFEARRAY** names)
{
    return ComCall(
        [&]() -> HRESULT
        {
            const LONG condition = flags & WBEM_MASK_PRIMARY_CONDITION;
            if (!names || (condition != WBEM_FLAG_ALWAYS && !qualifier))
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"GetNames needs a place for its answer and, for a "
                                                            L"condition, the qualifier's name");
            std::vector<std::wstring> found;
            const LONG origin = flags & WBEM_MASK_CONDITION_ORIGIN;
            const bool isPlain =
                condition == WBEM_FLAG_ALWAYS && !(flags & (WBEM_FLAG_KEYS_ONLY | WBEM_FLAG_REFS_ONLY));
            if (isPlain && (origin == 0 || origin == WBEM_FLAG_SYSTEM_ONLY))
            {
                for (const SystemProperty& property : SystemProperties())
                    found.emplace_back(property.name);
            }
            for (std::size_t i = 0; i < m_body->Count(); ++i)
            {
                const PropertyDef& property = Class().Properties()[i];
                if (IsAdmitted(i, flags) &&
                    (condition == WBEM_FLAG_ALWAYS ||
                     MeetsCondition(PropertyQualifiers(Class(), property), qualifier, condition, qualifierValue)))
                    found.push_back(property.Name());
            }
            *names = MakeBstrArray(found);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::BeginEnumeration(LONG flags)
{
    m_enumerated = flags;
    m_next = 0;
    return WBEM_S_NO_ERROR;
}

HRESULT ClassObject::Next(LONG, BSTR* name, VARIANT* value, CIMTYPE* type, LONG* flavor)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (name)
                *name = nullptr;
            if (m_next == kNotEnumerating)
                throw CallFailure(WBEM_E_UNEXPECTED, L"Next was called before BeginEnumeration");
            const bool isSystem = (m_enumerated & WBEM_MASK_CONDITION_ORIGIN) == WBEM_FLAG_SYSTEM_ONLY;
            while (!isSystem && m_next < m_body->Count() && !IsAdmitted(m_next, m_enumerated))
                ++m_next;
            if (m_next >= (isSystem ? SystemProperties().size() : m_body->Count()))
                return WBEM_S_NO_MORE_DATA;
            CComBSTR made;
            if (name)
                made.Attach(MakeBstr(isSystem ? SystemProperties()[m_next].name
                                              : std::wstring_view(Class().Properties()[m_next].Name())));
            if (isSystem)
                AnswerSystem(SystemProperties()[m_next], *m_body, ShownCount(*m_body, m_projection.get()), value, type,
                             flavor);
            else
                Answer(m_next, value, type, flavor);
            if (name)
                *name = made.Detach();
            ++m_next;
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::EndEnumeration()
{
    m_next = kNotEnumerating;
    return WBEM_S_NO_ERROR;
}

} // namespace orl
