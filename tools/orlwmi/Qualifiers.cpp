// Reading one qualifier.
#include "tools/orlwmi/Qualifiers.h"

#include "tools/orlwmi/Objects.h"
#include "winport/portable/Utf8.h"

namespace orl::client
{
namespace
{

Value Read(HRESULT status, IWbemQualifierSet* qualifiers, const std::string& name)
{
    CComVariant value;
    if (FAILED(status) || qualifiers == nullptr || FAILED(qualifiers->Get(FromUtf8(name).c_str(), 0, &value, nullptr)))
    {
        return {};
    }
    return ReadValue(value, CIM_EMPTY);
}

} // namespace

Value ClassQualifier(IWbemClassObject* definition, const std::string& name)
{
    CComPtr<IWbemQualifierSet> qualifiers;
    const HRESULT status = definition->GetQualifierSet(&qualifiers);
    return Read(status, qualifiers, name);
}

Value PropertyQualifier(IWbemClassObject* definition, const std::string& property, const std::string& name)
{
    CComPtr<IWbemQualifierSet> qualifiers;
    const HRESULT status = definition->GetPropertyQualifierSet(FromUtf8(property).c_str(), &qualifiers);
    return Read(status, qualifiers, name);
}

Value MethodQualifier(IWbemClassObject* definition, const std::string& method, const std::string& name)
{
    CComPtr<IWbemQualifierSet> qualifiers;
    const HRESULT status = definition->GetMethodQualifierSet(FromUtf8(method).c_str(), &qualifiers);
    return Read(status, qualifiers, name);
}

} // namespace orl::client
