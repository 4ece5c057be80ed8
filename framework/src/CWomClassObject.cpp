// CWomClassObject: making, filling, reading and sending of objects.

#include "framework/include/CWomClassObject.h"

#include "framework/include/CWomProviderException.h"
#include "framework/src/PropertyValue.h"
#include "framework/src/TextArgument.h"

namespace
{

constexpr wchar_t SourceName[] = L"Src\\CWomClassObject";
constexpr wchar_t WarningClass[] = L"Zarn_WarningMessage";

// The framework's own failures have no code beside the status.
[[noreturn]] void Fail(const CWomContext& context, const wchar_t* operation, HRESULT status, int line,
                       const COrlString& subject = COrlString())
{
    throw CWomProviderException(context, static_cast<ULONG>(status), CComBSTR(operation), status, SourceName, line,
                                subject);
}

} // namespace

void CWomClassObject::CreateClass(const CComBSTR& className)
{
    m_object.Release();
    HRESULT status = WBEM_E_INVALID_CLASS;
    if (className.Length() != 0)
        status = m_context.LoadClass(className, m_object);
    if (SUCCEEDED(status) && m_object == nullptr)
        status = WBEM_E_FAILED;
    if (FAILED(status))
    {
        m_object.Release();
        const wchar_t* name = className.m_str;
        Fail(m_context, L"CWomClassObject::CreateClass", status, __LINE__, COrlString(name));
    }
}

void CWomClassObject::SpawnInstanceFromClass(const CWomClassObject& classObject)
{
    HRESULT status = WBEM_E_INVALID_OBJECT;
    CComPtr<IWbemClassObject> instance;
    if (m_context.IsCancelled())
        status = WBEM_E_CALL_CANCELLED;
    else if (classObject.m_object != nullptr)
        status = classObject.m_object->SpawnInstance(0, &instance);
    if (SUCCEEDED(status) && instance == nullptr)
        status = WBEM_E_FAILED;
    if (FAILED(status))
        Fail(m_context, L"CWomClassObject::SpawnInstanceFromClass", status, __LINE__);
    m_object.Attach(instance.Detach());
}

void CWomClassObject::Indicate(CComPtr<IWbemObjectSink> sink)
{
    if (sink == nullptr)
        Fail(m_context, L"CWomClassObject::Indicate", WBEM_E_INVALID_PARAMETER, __LINE__);
    if (m_object == nullptr)
        Fail(m_context, L"CWomClassObject::Indicate", WBEM_E_INVALID_OBJECT, __LINE__);
    IWbemClassObject* object = m_object;
    const HRESULT status = sink->Indicate(1, &object);
    if (FAILED(status))
    {
        if (status == WBEM_E_CALL_CANCELLED)
            m_context.NoteCancelled();
        Fail(m_context, L"CWomClassObject::Indicate", status, __LINE__);
    }
}

HRESULT CWomClassObject::SetProperty(const wchar_t* name, const wchar_t* text)
{
    return Put(name, orl::TextArgument(text, text != nullptr ? wcslen(text) : 0).Variant());
}

HRESULT CWomClassObject::SetProperty(const wchar_t* name, const COrlString& text)
{
    return Put(name, orl::TextArgument(text.c_str(), text.size()).Variant());
}

HRESULT CWomClassObject::SetProperty(const wchar_t* name, const CComBSTR& text)
{
    // Put copies the value, so the BSTR stays its owner's and the VARIANT is not cleared.
    VARIANT value;
    VariantInit(&value);
    value.vt = text.m_str != nullptr ? static_cast<VARTYPE>(VT_BSTR) : static_cast<VARTYPE>(VT_NULL);
    value.bstrVal = text.m_str;
    return Put(name, value);
}

HRESULT CWomClassObject::SetProperty(const wchar_t* name, const std::vector<LONG>& numbers)
{
    CComVariant value = orl::NumberArray(numbers);
    return Put(name, value);
}

HRESULT CWomClassObject::SetProperty(const wchar_t* name, const std::vector<COrlString>& texts)
{
    CComVariant value = orl::TextArray(texts);
    return Put(name, value);
}

HRESULT CWomClassObject::SetProperty(const wchar_t* name, const std::vector<WarningMessageObj>& warnings)
{
    std::vector<CComPtr<IWbemClassObject>> objects;
    objects.reserve(warnings.size());
    CComPtr<IWbemClassObject> definition;
    if (!warnings.empty())
    {
        const HRESULT status = orl::ThrowIfOutOfMemory(m_context.LoadClass(CComBSTR(WarningClass), definition));
        if (FAILED(status) || definition == nullptr)
            return FAILED(status) ? status : WBEM_E_INVALID_CLASS;
    }
    for (const WarningMessageObj& warning : warnings)
    {
        CComPtr<IWbemClassObject> spawned;
        HRESULT status = orl::ThrowIfOutOfMemory(definition->SpawnInstance(0, &spawned));
        CWomClassObject message(m_context, spawned);
        if (SUCCEEDED(status))
            status = message.SetPropertyUint32(L"Kind", warning.ulKind);
        if (SUCCEEDED(status))
            status = message.SetPropertyUint32(L"MessageID", warning.ulMessageId);
        if (SUCCEEDED(status))
            status = message.SetProperty(L"Message", warning.strMessage);
        if (FAILED(status))
            return status;
        objects.push_back(spawned);
    }
    CComVariant value = orl::ObjectArray(objects);
    return Put(name, value);
}

HRESULT CWomClassObject::SetPropertyUint16(const wchar_t* name, USHORT value)
{
    return PutInteger(name, value);
}

HRESULT CWomClassObject::SetPropertyUint32(const wchar_t* name, ULONG value)
{
    return PutInteger(name, static_cast<LONG>(value));
}

HRESULT CWomClassObject::SetPropertyUint64(const wchar_t* name, ULONGLONG value)
{
    return PutDecimal(name, false, value);
}

HRESULT CWomClassObject::SetPropertySint64(const wchar_t* name, LONGLONG value)
{
    const ULONGLONG bits = static_cast<ULONGLONG>(value);
    return PutDecimal(name, value < 0, value < 0 ? 0 - bits : bits);
}

HRESULT CWomClassObject::SetPropertyBool(const wchar_t* name, bool value)
{
    VARIANT flag;
    VariantInit(&flag);
    flag.vt = VT_BOOL;
    flag.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return Put(name, flag);
}

HRESULT CWomClassObject::GetProperty(const wchar_t* name, CComBSTR& text) const
{
    text.Empty();
    CComVariant value;
    CIMTYPE type = CIM_EMPTY;
    const HRESULT status = Get(name, value, type);
    if (FAILED(status) || value.vt == VT_NULL)
        return status;
    if (value.vt != VT_BSTR)
        return WBEM_E_TYPE_MISMATCH;
    text.Attach(value.bstrVal);
    value.vt = VT_EMPTY;
    return status;
}

HRESULT CWomClassObject::GetPropertySint64(const wchar_t* name, LONGLONG& value, bool& isNull) const
{
    return GetNumber(name, value, isNull, orl::ReadSint64);
}

HRESULT CWomClassObject::GetPropertyUint32(const wchar_t* name, ULONG& value, bool& isNull) const
{
    return GetNumber(name, value, isNull, orl::ReadUint32);
}

template <typename Number>
HRESULT CWomClassObject::GetNumber(const wchar_t* name, Number& value, bool& isNull,
                                   bool (*read)(const VARIANT&, CIMTYPE, Number&)) const
{
    value = 0;
    CComVariant held;
    CIMTYPE type = CIM_EMPTY;
    const HRESULT status = Get(name, held, type);
    isNull = SUCCEEDED(status) && held.vt == VT_NULL;
    if (FAILED(status) || isNull || read(held, type, value))
        return status;
    value = 0;
    return WBEM_E_TYPE_MISMATCH;
}

HRESULT CWomClassObject::Put(const wchar_t* name, VARIANT& value)
{
    if (m_object == nullptr)
        return WBEM_E_INVALID_OBJECT;
    return orl::ThrowIfOutOfMemory(m_object->Put(name, 0, &value, CIM_EMPTY));
}

HRESULT CWomClassObject::PutInteger(const wchar_t* name, LONG value)
{
    VARIANT integer;
    VariantInit(&integer);
    integer.vt = VT_I4;
    integer.lVal = value;
    return Put(name, integer);
}

// 64-bit integers travel as decimal texts.
HRESULT CWomClassObject::PutDecimal(const wchar_t* name, bool negative, ULONGLONG magnitude)
{
    constexpr size_t Capacity = 24; // 20 digits and a sign
    wchar_t digits[Capacity];
    size_t first = Capacity;
    do
    {
        digits[--first] = static_cast<wchar_t>(L'0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative)
        digits[--first] = L'-';
    return Put(name, orl::TextArgument(digits + first, Capacity - first).Variant());
}

HRESULT CWomClassObject::Get(const wchar_t* name, CComVariant& value, CIMTYPE& type) const
{
    if (m_object == nullptr)
        return WBEM_E_INVALID_OBJECT;
    const HRESULT status = orl::ThrowIfOutOfMemory(m_object->Get(name, 0, &value, &type, nullptr));
    if (SUCCEEDED(status) && value.vt == VT_EMPTY)
        value.vt = VT_NULL;
    return status;
}
