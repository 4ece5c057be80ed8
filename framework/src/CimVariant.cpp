// The values of paths and queries as VARIANTs.

#include "framework/src/CimVariant.h"

#include "framework/src/PropertyValue.h"
#include "wbem/Text.h"

namespace orl
{

namespace
{

CComVariant TextVariant(std::wstring_view text)
{
    CComVariant made;
    made.bstrVal = MakeBstr(text.data(), text.size()).Detach();
    made.vt = VT_BSTR;
    return made;
}

} // namespace

CComVariant CimVariant(const wbem::CimValue& value)
{
    CComVariant made;
    made.vt = VT_NULL;
    if (value.IsNull() || value.IsArray())
        return made;
    switch (value.Type())
    {
    case wbem::CimType::SInt32:
        made.vt = VT_I4;
        made.lVal = static_cast<LONG>(value.AsSigned());
        return made;
    case wbem::CimType::Boolean:
        made.vt = VT_BOOL;
        made.boolVal = value.AsBool() ? VARIANT_TRUE : VARIANT_FALSE;
        return made;
    case wbem::CimType::Real64:
        made.vt = VT_R8;
        made.dblVal = value.AsReal();
        return made;
    case wbem::CimType::String:
    case wbem::CimType::DateTime:
    case wbem::CimType::Reference:
        return TextVariant(value.AsText());
    default:
        return TextVariant(wbem::PlainText(value));
    }
}

const COrlWmiNamedValue* FindNamedValue(const std::vector<COrlWmiNamedValue>& values, const wchar_t* name)
{
    if (name == nullptr)
        return nullptr;
    for (const COrlWmiNamedValue& value : values)
    {
        if (wbem::EqualNoCase(value.name, name))
            return &value;
    }
    return nullptr;
}

} // namespace orl

COrlString COrlWmiNamedValue::Text() const
{
    switch (value.vt)
    {
    case VT_BSTR:
        return value.bstrVal != nullptr ? COrlString(static_cast<const wchar_t*>(value.bstrVal)) : COrlString();
    case VT_I4:
        return COrlString(std::to_wstring(value.lVal));
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE ? L"TRUE" : L"FALSE";
    case VT_R8:
        return COrlString(wbem::PlainText(wbem::CimValue::Real(wbem::CimType::Real64, value.dblVal)));
    default:
        return COrlString();
    }
}
