// The thread's error object, which is an __ExtendedStatus object where the failure comes from WMI.
#include "tools/orlwmi/ErrorInfo.h"

#include "tools/orlwmi/HresultNames.h"
#include "tools/orlwmi/Objects.h"
#include "tools/orlwmi/Wmi.h"
#include "winport/portable/Utf8.h"

#include <charconv>

namespace orl::client
{
namespace
{

constexpr const char* Members[] = {"Description", "Operation", "ParameterInfo", "ProviderName", "StatusCode"};

std::string StatusText(const std::string& decimal)
{
    ULONG code = 0;
    const auto [end, error] = std::from_chars(decimal.data(), decimal.data() + decimal.size(), code);
    return error == std::errc() && end == decimal.data() + decimal.size() ? HresultLabel(static_cast<HRESULT>(code))
                                                                          : decimal;
}

ExtendedStatus FromObject(IWbemClassObject* object)
{
    ExtendedStatus status;
    const Record record = ReadRecord(object);
    for (const char* name : Members)
    {
        if (std::string text = TextOf(record, name); !text.empty())
        {
            status.emplace_back(name, name == std::string("StatusCode") ? StatusText(text) : std::move(text));
        }
    }
    return status;
}

} // namespace

void ClearErrorInfo()
{
    SetErrorInfo(0, nullptr);
}

ExtendedStatus TakeErrorInfo()
{
    CComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, &info) != S_OK || !info)
    {
        return {};
    }
    CComPtr<IWbemClassObject> object;
    if (SUCCEEDED(info->QueryInterface(IID_IWbemClassObject, reinterpret_cast<void**>(&object))) && object)
    {
        try
        {
            return FromObject(object);
        }
        catch (const Failure&)
        {
            // An explanation that cannot be read must not take the place of what it explains; the plain text is left.
        }
    }
    CComBSTR description;
    if (FAILED(info->GetDescription(&description)) || description.Length() == 0)
    {
        return {};
    }
    return {{"Description", ToUtf8({description.m_str, description.Length()})}};
}

void Check(HRESULT status, const std::string& what)
{
    if (FAILED(status))
    {
        throw Failure(what, status, TakeErrorInfo());
    }
}

} // namespace orl::client
