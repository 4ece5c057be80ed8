// How a call ended: the error object that carries an __ExtendedStatus.
#include "host/CallStatus.h"

#include "host/ClassObject.h"
#include "host/Repository.h"
#include "host/SystemClasses.h"
#include "host/VariantValue.h"

namespace orl
{
namespace
{

using wbem::CimValue;

// A namespace of system classes alone, for statuses that belong to no connection. Never destroyed: a status may be the
// last thing that a process hands out.
const ClassDef& ExtendedStatusClass()
{
    static const Repository& own = *Repository::FromText(L"", L"system").release();
    static const ClassDef& found = *own.Namespaces().front()->FindClass(L"__ExtendedStatus");
    return found;
}

void Fill(ObjectBody& body, std::wstring_view property, const std::wstring& text)
{
    if (!text.empty())
        body[body.Class().FindProperty(property)] = CimValue::String(text);
}

// A COM error object around an __ExtendedStatus: asked for IWbemClassObject it answers the status.
class ErrorInfo final : public ComObject<IErrorInfo>
{
public:
    ErrorInfo(CComPtr<IWbemClassObject> status, std::wstring description)
        : m_status(std::move(status)), m_description(std::move(description))
    {
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (object && IsEqualIID(iid, IID_IWbemClassObject))
            return m_status->QueryInterface(iid, object);
        return ComObject::QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) override
    {
        if (!guid)
            return E_POINTER;
        *guid = IID_IWbemServices;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return Answer(source, L"orlwmihost"); }
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) override { return Answer(description, m_description); }
    HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) override { return Answer(file, {}); }
    HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) override
    {
        if (!context)
            return E_POINTER;
        *context = 0;
        return S_OK;
    }

private:
    static HRESULT Answer(BSTR* out, std::wstring_view text)
    {
        if (!out)
            return E_POINTER;
        *out = OrlAllocBstr(text.data(), text.size());
        return *out ? S_OK : E_OUTOFMEMORY;
    }

    CComPtr<IWbemClassObject> m_status;
    std::wstring m_description;
};

} // namespace

std::wstring HexText(HRESULT code)
{
    std::wstring text = L"0x00000000";
    ULONG rest = static_cast<ULONG>(code);
    for (std::size_t i = text.size(); rest; rest >>= 4)
        text[--i] = L"0123456789ABCDEF"[rest & 0xf];
    return text;
}

CallStatus StatusOfCurrentException() noexcept
{
    CallStatus status;
    try
    {
        throw;
    }
    catch (CallFailure& failure)
    {
        return std::move(failure.status);
    }
    catch (const CAtlException& exception)
    {
        status.code = exception.m_hr;
    }
    catch (const std::bad_alloc&)
    {
        status.code = WBEM_E_OUT_OF_MEMORY;
    }
    catch (...)
    {
        status.code = WBEM_E_FAILED;
    }
    return status;
}

CComPtr<IWbemClassObject> ExtendedStatusOf(const CallStatus& status) noexcept
try
{
    if (!status.Failed())
        return nullptr;
    if (status.object)
        return status.object;
    const ClassDef& ofClass = ExtendedStatusClass();
    Ref<ObjectBody> body = ofClass.Prototype()->Copy(ObjectBody::Genus::Instance);
    (*body)[ofClass.FindProperty(L"StatusCode")] =
        CimValue::Unsigned(wbem::CimType::UInt32, static_cast<ULONG>(status.code));
    Fill(*body, L"Description", status.description);
    Fill(*body, L"Operation", status.operation);
    Fill(*body, L"ParameterInfo", status.parameter);
    Fill(*body, L"ProviderName", status.provider);
    CComPtr<IWbemClassObject> object;
    object.Attach(MakeObject<ClassObject>(std::move(body)).Detach());
    return object;
}
catch (...)
{
    return nullptr; // the code alone must do where there is no memory for more
}

HRESULT Publish(const CallStatus& status) noexcept
try
{
    CComPtr<IWbemClassObject> object = ExtendedStatusOf(status);
    if (!object)
    {
        SetErrorInfo(0, nullptr);
        return status.code;
    }
    std::wstring description = status.description;
    if (status.object)
    {
        CComVariant told;
        if (SUCCEEDED(object->Get(L"Description", 0, &told, nullptr, nullptr)) && told.vt == VT_BSTR)
            description = ViewOf(told.bstrVal);
    }
    SetErrorInfo(0, MakeObject<ErrorInfo>(std::move(object), std::move(description)));
    return status.code;
}
catch (...)
{
    SetErrorInfo(0, nullptr);
    return status.code;
}

CComPtr<IWbemClassObject> TakeExtendedStatus() noexcept
{
    CComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, &info) != S_OK || !info)
        return nullptr;
    CComPtr<IWbemClassObject> object;
    if (FAILED(info.QueryInterface(&object)))
        return nullptr;
    return object;
}

} // namespace orl
