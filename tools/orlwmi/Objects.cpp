// Reading IWbemClassObject.
#include "tools/orlwmi/Objects.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "tools/orlwmi/Wmi.h"
#include "winport/portable/Utf8.h"

namespace orl::client
{
namespace
{

std::string TextOf(const CComBSTR& text)
{
    return text.m_str == nullptr ? std::string() : ToUtf8({text.m_str, text.Length()});
}

// Ends an enumeration of properties however it is left.
class PropertyEnumeration
{
public:
    explicit PropertyEnumeration(IWbemClassObject* object) : m_object(object)
    {
        Check(object->BeginEnumeration(WBEM_FLAG_NONSYSTEM_ONLY), "cannot read the properties of an object");
    }
    PropertyEnumeration(const PropertyEnumeration&) = delete;
    PropertyEnumeration& operator=(const PropertyEnumeration&) = delete;
    ~PropertyEnumeration() { m_object->EndEnumeration(); }

    bool Next(Property& property, int depth)
    {
        CComBSTR name;
        CComVariant value;
        CIMTYPE type = CIM_EMPTY;
        const HRESULT status = m_object->Next(0, &name, &value, &type, nullptr);
        Check(status, "cannot read the properties of an object");
        if (status == WBEM_S_NO_MORE_DATA)
        {
            return false;
        }
        property = {TextOf(name), ReadValue(value, type, depth)};
        return true;
    }

private:
    IWbemClassObject* m_object;
};

} // namespace

Record ReadRecord(IWbemClassObject* object, int depth)
{
    Record record;
    record.className = ReadText(object, L"__CLASS");
    PropertyEnumeration properties(object);
    for (Property property; properties.Next(property, depth);)
    {
        record.properties.push_back(std::move(property));
    }
    return record;
}

Record ReadProperties(IWbemClassObject* object, const std::vector<std::string>& names)
{
    Record record;
    record.className = ReadText(object, L"__CLASS");
    for (const auto& name : names)
    {
        CComVariant value;
        CIMTYPE type = CIM_EMPTY;
        const HRESULT status = object->Get(FromUtf8(name).c_str(), 0, &value, &type, nullptr);
        if (status == static_cast<HRESULT>(WBEM_E_NOT_FOUND))
        {
            throw Failure(ExitCode::NotFound, record.className + " has no property " + name);
        }
        Check(status, "cannot read the property " + name);
        record.properties.push_back({name, ReadValue(value, type)});
    }
    return record;
}

Record ReadMof(IWbemClassObject* object)
{
    CComBSTR text;
    Check(object->GetObjectText(0, &text), "cannot get the text of an object");
    Record record;
    record.className = ReadText(object, L"__CLASS");
    record.mof = TextOf(text);
    return record;
}

std::string ReadText(IWbemClassObject* object, const wchar_t* name)
{
    CComVariant value;
    if (FAILED(object->Get(name, 0, &value, nullptr, nullptr)) || value.vt != VT_BSTR || value.bstrVal == nullptr)
    {
        return {};
    }
    return ToUtf8({value.bstrVal, SysStringLen(value.bstrVal)});
}

bool IsClass(IWbemClassObject* object)
{
    CComVariant value;
    return SUCCEEDED(object->Get(L"__GENUS", 0, &value, nullptr, nullptr)) && value.vt == VT_I4 &&
           value.lVal == WBEM_GENUS_CLASS;
}

} // namespace orl::client
