// IWbemClassObject: what an object tells about its class, and what is made from it.
#include "host/ClassObject.h"

#include "host/CallStatus.h"
#include "host/QualifierSet.h"
#include "host/Repository.h"
#include "host/SystemProperties.h"
#include "host/VariantValue.h"
#include "wbem/Mof.h"

namespace orl
{
namespace
{

using wbem::CimValue;

[[noreturn]] void RefuseSchemaChange()
{
    throw CallFailure(WBEM_E_NOT_SUPPORTED, L"classes change in their MOF files only");
}

CComPtr<IWbemClassObject> View(Ref<ObjectBody> body)
{
    CComPtr<IWbemClassObject> view;
    view.Attach(MakeObject<ClassObject>(std::move(body)).Detach());
    return view;
}

void AnswerSignature(const std::shared_ptr<const ClassDef>& signature, IWbemClassObject** place)
{
    if (place)
        *place = signature ? View(signature->Prototype()).Detach() : nullptr;
}

void AnswerSet(std::vector<Qualifier> qualifiers, const ObjectBody& body, IWbemQualifierSet** place)
{
    NeedPlace(place);
    if (body.IsInstance())
        qualifiers = ForInstance(std::move(qualifiers));
    *place = MakeObject<QualifierSet>(std::move(qualifiers), body.Class().InNamespace()).Detach();
}

// The declaration with the default values that this object has in place of the declared ones.
wbem::MofClass TextOfClass(const ObjectBody& body, bool withFlavors)
{
    const ClassDef& ofClass = body.Class();
    wbem::MofClass declaration = ofClass.Declaration();
    for (wbem::MofProperty& property : declaration.properties)
    {
        const CimValue& value = body[ofClass.FindProperty(property.name)];
        if (!value.IsNull())
            property.defaultValue = value;
    }
    if (withFlavors)
        return declaration;
    const auto strip = [](std::vector<wbem::MofQualifier>& qualifiers)
    {
        for (wbem::MofQualifier& qualifier : qualifiers)
            qualifier.flavors = 0;
    };
    strip(declaration.qualifiers);
    for (wbem::MofProperty& property : declaration.properties)
        strip(property.qualifiers);
    for (wbem::MofMethod& method : declaration.methods)
    {
        strip(method.qualifiers);
        for (wbem::MofProperty& parameter : method.parameters)
            strip(parameter.qualifiers);
    }
    return declaration;
}

wbem::MofInstance TextOfInstance(const ObjectBody& body, const Projection* projection)
{
    wbem::MofInstance declaration;
    declaration.className = body.Class().Name();
    for (std::size_t i = 0; i < body.Count(); ++i)
    {
        if (!body[i].IsNull() && (!projection || projection->Shows(i)))
            declaration.properties.push_back({body.Class().Properties()[i].Name(), body[i], {}, {}});
    }
    return declaration;
}

bool SameValue(const CimValue& left, const CimValue& right, LONG flags)
{
    if (left == right)
        return true;
    return (flags & WBEM_FLAG_IGNORE_CASE) && left.Type() == right.Type() && left.IsNull() == right.IsNull() &&
           wbem::EqualNoCase(wbem::PlainText(left), wbem::PlainText(right));
}

bool SameObjects(const ObjectBody& left, const ObjectBody& right, LONG flags)
{
    if (!(flags & WBEM_FLAG_IGNORE_CLASS) &&
        (&left.Class() != &right.Class() || left.IsInstance() != right.IsInstance()))
        return false;
    if (left.Count() != right.Count())
        return false;
    if (!left.IsInstance() && (flags & WBEM_FLAG_IGNORE_DEFAULT_VALUES))
        return true;
    for (std::size_t i = 0; i < left.Count(); ++i)
    {
        const std::size_t other = right.Class().FindProperty(left.Class().Properties()[i].Name());
        if (other == ClassDef::kNotFound || !SameValue(left[i], right[other], flags))
            return false;
    }
    return true;
}

} // namespace

// Qualifiers ---------------------------------------------------------------------------------------------------------

HRESULT ClassObject::GetQualifierSet(IWbemQualifierSet** set)
{
    return ComCall(
        [&]() -> HRESULT
        {
            AnswerSet(ClassQualifiers(Class()), *m_body, set);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::GetPropertyQualifierSet(LPCWSTR property, IWbemQualifierSet** set)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (property && FindSystemProperty(property))
                throw CallFailure(WBEM_E_SYSTEM_PROPERTY, std::wstring(property) + L" has no qualifiers");
            AnswerSet(PropertyQualifiers(Class(), Class().Properties()[IndexOf(property)]), *m_body, set);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::GetMethodQualifierSet(LPCWSTR method, IWbemQualifierSet** set)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(set);
            *set =
                MakeObject<QualifierSet>(MethodQualifiers(Class(), MethodOf(method)), Class().InNamespace()).Detach();
            return WBEM_S_NO_ERROR;
        });
}

// Copies and texts ---------------------------------------------------------------------------------------------------

HRESULT ClassObject::Clone(IWbemClassObject** copy)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(copy);
            *copy = MakeObject<ClassObject>(m_body, m_projection).Detach();
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::GetObjectText(LONG flags, BSTR* text)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(text);
            *text = MakeBstr(m_body->IsInstance()
                                 ? wbem::PrintInstance(TextOfInstance(*m_body, m_projection.get()))
                                 : wbem::PrintClass(TextOfClass(*m_body, !(flags & WBEM_FLAG_NO_FLAVORS))));
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::SpawnInstance(LONG, IWbemClassObject** instance)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(instance);
            if (m_body->IsInstance())
                throw CallFailure(WBEM_E_INVALID_OPERATION,
                                  L"an instance of " + Class().Name() + L" spawns none: its class does");
            *instance = View(m_body->Copy(ObjectBody::Genus::Instance)).Detach();
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::SpawnDerivedClass(LONG, IWbemClassObject**)
{
    return ComCall([]() -> HRESULT { RefuseSchemaChange(); });
}

HRESULT ClassObject::CompareTo(LONG flags, IWbemClassObject* other)
{
    return ComCall(
        [&]() -> HRESULT
        {
            const CComPtr<ClassObject> own = From(other);
            if (!own)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"the other object is none of this service");
            return SameObjects(*m_body, *own->m_body, flags) ? WBEM_S_SAME : WBEM_S_DIFFERENT;
        });
}

HRESULT ClassObject::GetPropertyOrigin(LPCWSTR name, BSTR* className)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(className);
            const bool isSystem = name && FindSystemProperty(name);
            *className = MakeBstr(isSystem ? L"___SYSTEM" : Class().Properties()[IndexOf(name)].origin->Name());
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::InheritsFrom(LPCWSTR ancestor)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!ancestor)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"no ancestor is named");
            return Class().DerivesFrom(ancestor) ? WBEM_S_NO_ERROR : WBEM_S_FALSE;
        });
}

// Methods ------------------------------------------------------------------------------------------------------------

const MethodDef& ClassObject::MethodOf(LPCWSTR name) const
{
    const MethodDef* method = name ? Class().FindMethod(name) : nullptr;
    if (!method)
        throw CallFailure(WBEM_E_NOT_FOUND, L"the class " + Class().Name() + L" has no method " + (name ? name : L""));
    return *method;
}

HRESULT ClassObject::GetMethod(LPCWSTR name, LONG, IWbemClassObject** in, IWbemClassObject** out)
{
    return ComCall(
        [&]() -> HRESULT
        {
            const MethodDef& method = MethodOf(name);
            AnswerSignature(method.in, in);
            AnswerSignature(method.out, out);
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::GetMethodOrigin(LPCWSTR method, BSTR* className)
{
    return ComCall(
        [&]() -> HRESULT
        {
            NeedPlace(className);
            *className = MakeBstr(MethodOf(method).origin->Name());
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::PutMethod(LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*)
{
    return ComCall([]() -> HRESULT { RefuseSchemaChange(); });
}

HRESULT ClassObject::DeleteMethod(LPCWSTR)
{
    return ComCall([]() -> HRESULT { RefuseSchemaChange(); });
}

HRESULT ClassObject::BeginMethodEnumeration(LONG flags)
{
    m_enumeratedMethods = flags & WBEM_MASK_CONDITION_ORIGIN;
    m_nextMethod = 0;
    return WBEM_S_NO_ERROR;
}

HRESULT ClassObject::NextMethod(LONG, BSTR* name, IWbemClassObject** in, IWbemClassObject** out)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (name)
                *name = nullptr;
            if (m_nextMethod == kNotEnumerating)
                throw CallFailure(WBEM_E_UNEXPECTED, L"NextMethod was called before BeginMethodEnumeration");
            const auto isAdmitted = [&](const MethodDef& method)
            {
                const bool isLocal = method.origin == &Class();
                return !(m_enumeratedMethods == WBEM_FLAG_LOCAL_ONLY && !isLocal) &&
                       !(m_enumeratedMethods == WBEM_FLAG_PROPAGATED_ONLY && isLocal);
            };
            const std::vector<MethodDef>& methods = Class().Methods();
            while (m_nextMethod < methods.size() && !isAdmitted(methods[m_nextMethod]))
                ++m_nextMethod;
            if (m_nextMethod >= methods.size())
                return WBEM_S_NO_MORE_DATA;
            const MethodDef& method = methods[m_nextMethod];
            CComBSTR made;
            if (name)
                made.Attach(MakeBstr(method.Name()));
            AnswerSignature(method.in, in);
            AnswerSignature(method.out, out);
            if (name)
                *name = made.Detach();
            ++m_nextMethod;
            return WBEM_S_NO_ERROR;
        });
}

HRESULT ClassObject::EndMethodEnumeration()
{
    m_nextMethod = kNotEnumerating;
    return WBEM_S_NO_ERROR;
}

} // namespace orl
