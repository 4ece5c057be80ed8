// Asking the machine's WMI service for whatever it has.
#include "tests/live/steady/Asking.h"

#include "winport/portable/Utf8.h"

#include <algorithm>

namespace orl::test
{
namespace
{

std::wstring TextOf(IWbemClassObject& object, const wchar_t* name)
{
    CComVariant value;
    const HRESULT status = object.Get(name, 0, &value, nullptr, nullptr);
    return SUCCEEDED(status) && value.vt == VT_BSTR ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal))
                                                    : std::wstring();
}

// A class whose instances come from a provider.
bool IsDynamic(IWbemClassObject& definition)
{
    CComPtr<IWbemQualifierSet> qualifiers;
    return SUCCEEDED(definition.GetQualifierSet(&qualifiers)) &&
           qualifiers->Get(L"dynamic", 0, nullptr, nullptr) == WBEM_S_NO_ERROR;
}

bool IsEmpty(const VARIANT& value)
{
    return value.vt == VT_EMPTY || value.vt == VT_NULL || (value.vt == VT_BSTR && SysStringLen(value.bstrVal) == 0);
}

// The objects of an enumeration one after the other; the status that ended it.
template <typename Use>
HRESULT ForEach(IEnumWbemClassObject& objects, Use&& use)
{
    while (true)
    {
        CComPtr<IWbemClassObject> object;
        ULONG returned = 0;
        const HRESULT status = objects.Next(WBEM_INFINITE, 1, &object, &returned);
        if (status != WBEM_S_NO_ERROR)
            return status;
        use(*object);
    }
}

} // namespace

bool Asking::Begin()
{
    CComPtr<IWbemLocator> locator;
    HRESULT status = locator.CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(status))
        status = locator->ConnectServer(CComBSTR(L"root\\KESTA"), nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                                        &m_services);
    CComPtr<IEnumWbemClassObject> definitions;
    if (SUCCEEDED(status))
        status = m_services->CreateClassEnum(nullptr, WBEM_FLAG_DEEP, nullptr, &definitions);
    if (SUCCEEDED(status))
        status = ForEach(*definitions,
                         [this](IWbemClassObject& definition)
                         {
                             if (IsDynamic(definition))
                                 m_classes.push_back(TextOf(definition, L"__CLASS"));
                         });
    if (FAILED(status))
        m_report.Failed("connecting to", "root\\KESTA", status);
    std::sort(m_classes.begin(), m_classes.end());
    return SUCCEEDED(status);
}

void Asking::Round()
{
    m_report.RoundBegins();
    for (const std::wstring& className : m_classes)
        Enumerate(className);
    m_report.RoundEnds();
}

void Asking::Enumerate(const std::wstring& className)
{
    const std::string name = ToUtf8(className);
    m_report.Enumerating(name);
    CComPtr<IEnumWbemClassObject> instances;
    HRESULT status = m_services->CreateInstanceEnum(CComBSTR(className.c_str()), 0, nullptr, &instances);
    if (FAILED(status))
    {
        m_report.Failed("CreateInstanceEnum", name, status);
        return;
    }
    std::size_t count = 0;
    status = ForEach(*instances,
                     [&](IWbemClassObject& instance)
                     {
                         ++count;
                         Look(instance);
                     });
    if (status != WBEM_S_FALSE)
        m_report.Failed("Next", name, status);
    else
        m_report.Counted(name, count);
}

// An instance without its keys is one that was put together while its device went.
void Asking::Look(IWbemClassObject& object)
{
    const std::string name = ToUtf8(TextOf(object, L"__RELPATH"));
    std::size_t keys = 0;
    HRESULT status = object.BeginEnumeration(WBEM_FLAG_KEYS_ONLY);
    while (status == WBEM_S_NO_ERROR)
    {
        CComBSTR key;
        CComVariant value;
        status = object.Next(0, &key, &value, nullptr, nullptr);
        if (status != WBEM_S_NO_ERROR)
            break;
        ++keys;
        if (IsEmpty(value))
            m_report.Torn(name, "has no " + ToUtf8(key.m_str));
    }
    object.EndEnumeration();
    if (FAILED(status))
        m_report.Failed("reading the keys of", name, status);
    else if (keys == 0)
        m_report.Torn(name, "has no keys");

    CComBSTR text;
    status = object.GetObjectText(0, &text);
    if (FAILED(status))
        m_report.Failed("GetObjectText", name, status);
    else
        m_report.Saw(ToUtf8({text.m_str, text.Length()}));
}

} // namespace orl::test
