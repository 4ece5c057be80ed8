// The fake service itself: requests, result sets, call results, the error object.
#include "tests/client/FakeWmi.h"

#include <algorithm>
#include <memory>

namespace orl::test
{
namespace
{

// An IErrorInfo that is a WMI object too.
class FakeErrorInfo final : public ComObject<IErrorInfo>
{
public:
    explicit FakeErrorInfo(CComPtr<IWbemClassObject> object) : m_object(std::move(object)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        return IsEqualIID(iid, IID_IWbemClassObject) ? m_object->QueryInterface(iid, out)
                                                     : ComObject::QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE GetGUID(GUID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSource(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD*) override { return E_NOTIMPL; }

private:
    CComPtr<IWbemClassObject> m_object;
};

HRESULT Answered(HRESULT status, const FakeContent& explanation)
{
    if (FAILED(status) && !explanation.properties.empty())
    {
        LeaveErrorInfo(explanation);
    }
    return status;
}

class FakeEnumerator final : public ComObject<IEnumWbemClassObject>
{
public:
    explicit FakeEnumerator(FakeAnswer answer) : m_answer(std::move(answer)), m_slices(m_answer.slices) {}

    HRESULT STDMETHODCALLTYPE Next(LONG, ULONG count, IWbemClassObject** objects, ULONG* returned) override
    {
        *returned = 0;
        if (m_answer.never || m_slices-- > 0)
        {
            return WBEM_S_TIMEDOUT;
        }
        m_slices = m_answer.slices;
        while (*returned < count && m_made < m_answer.count)
        {
            objects[(*returned)++] = MakeFakeObject(m_answer.make(m_made++)).Detach();
        }
        return *returned == count ? WBEM_S_NO_ERROR : Answered(m_answer.atEnd, m_answer.explanation);
    }

    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NextAsync(ULONG, IWbemObjectSink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Skip(LONG, ULONG) override { return E_NOTIMPL; }

private:
    FakeAnswer m_answer;
    int m_slices;
    size_t m_made = 0;
};

class FakeCallResult final : public ComObject<IWbemCallResult>
{
public:
    explicit FakeCallResult(FakeAnswer answer) : m_answer(std::move(answer)) {}

    HRESULT STDMETHODCALLTYPE GetResultObject(LONG, IWbemClassObject** object) override
    {
        if (m_answer.never || m_answer.slices-- > 0)
        {
            return WBEM_S_TIMEDOUT;
        }
        if (m_answer.count == 0)
        {
            return Answered(m_answer.atEnd, m_answer.explanation);
        }
        *object = MakeFakeObject(m_answer.make(0)).Detach();
        return WBEM_S_NO_ERROR;
    }

    HRESULT STDMETHODCALLTYPE GetResultString(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetResultServices(LONG, IWbemServices**) override { return E_NOTIMPL; }
    // The call's own status is handed out; this method itself succeeds.
    HRESULT STDMETHODCALLTYPE GetCallStatus(LONG, LONG* status) override
    {
        if (m_answer.never || m_answer.slices-- > 0)
        {
            return WBEM_S_TIMEDOUT;
        }
        *status = Answered(m_answer.atEnd, m_answer.explanation);
        return WBEM_S_NO_ERROR;
    }

private:
    FakeAnswer m_answer;
};

} // namespace

struct FakeServices::State
{
    std::map<std::wstring, FakeAnswer> answers; // by the call as it is noted
    std::vector<std::wstring> calls;

    const FakeAnswer& Answer(const std::wstring& call)
    {
        static const FakeAnswer none = Refusal(WBEM_E_NOT_FOUND);
        calls.push_back(call);
        const auto found = answers.find(call);
        return found == answers.end() ? none : found->second;
    }

    HRESULT Enumerate(const std::wstring& call, LONG flags, IEnumWbemClassObject** enumerator)
    {
        const FakeAnswer& answer = Answer(call);
        if ((flags & WBEM_FLAG_RETURN_IMMEDIATELY) == 0 || (flags & WBEM_FLAG_FORWARD_ONLY) == 0)
        {
            return WBEM_E_INVALID_PARAMETER; // it would hold the whole result
        }
        if (FAILED(answer.atOnce))
        {
            return Answered(answer.atOnce, answer.explanation);
        }
        *enumerator = MakeObject<FakeEnumerator>(answer).Detach();
        return WBEM_S_NO_ERROR;
    }
};

namespace
{

std::wstring NotedScalar(const VARIANT& value)
{
    switch (value.vt)
    {
    case VT_BSTR:
        return std::wstring(value.bstrVal, SysStringLen(value.bstrVal));
    case VT_BOOL:
        return value.boolVal == VARIANT_FALSE ? L"false" : L"true";
    case VT_UI1:
        return std::to_wstring(value.bVal);
    case VT_I2:
        return std::to_wstring(value.iVal);
    case VT_I4:
        return std::to_wstring(value.lVal);
    case VT_R4:
        return std::to_wstring(value.fltVal);
    case VT_R8:
        return std::to_wstring(value.dblVal);
    default:
        return L"?";
    }
}

std::wstring TypeOf(VARTYPE type)
{
    static const std::map<VARTYPE, std::wstring> names = {{VT_BSTR, L"BSTR"}, {VT_BOOL, L"BOOL"}, {VT_UI1, L"UI1"},
                                                          {VT_I2, L"I2"},     {VT_I4, L"I4"},     {VT_R4, L"R4"},
                                                          {VT_R8, L"R8"}};
    const auto name = names.find(type);
    return name == names.end() ? L"VT " + std::to_wstring(type) : name->second;
}

std::wstring NotedArray(SAFEARRAY* array, VARTYPE type)
{
    LONG last = -1;
    SafeArrayGetUBound(array, 1, &last);
    std::wstring text;
    for (LONG i = 0; i <= last; ++i)
    {
        CComVariant element;
        SafeArrayGetElement(array, &i, &element.llVal);
        element.vt = type;
        text += (i == 0 ? L"" : L", ") + NotedScalar(element);
    }
    return TypeOf(type) + L"[] {" + text + L"}";
}

std::wstring NotedParameters(IWbemClassObject* in)
{
    std::wstring text;
    if (in == nullptr)
    {
        return text;
    }
    in->BeginEnumeration(WBEM_FLAG_NONSYSTEM_ONLY);
    for (;;)
    {
        CComBSTR name;
        CComVariant value;
        if (in->Next(0, &name, &value, nullptr, nullptr) != WBEM_S_NO_ERROR)
        {
            return text;
        }
        if (value.vt != VT_EMPTY)
        {
            text += L", " + std::wstring(name) + L" = " + NotedValue(value);
        }
    }
}

class Services final : public ComObject<IWbemServices>
{
public:
    explicit Services(std::shared_ptr<FakeServices::State> state) : m_state(std::move(state)) {}

    HRESULT STDMETHODCALLTYPE GetObject(const BSTR path, LONG flags, IWbemContext*, IWbemClassObject**,
                                        IWbemCallResult** result) override
    {
        return HandOut(m_state->Answer(L"GetObject(" + std::wstring(path) + L")"), flags, result);
    }

    HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR name, LONG flags, IWbemContext*,
                                                 IEnumWbemClassObject** enumerator) override
    {
        return m_state->Enumerate(L"CreateInstanceEnum(" + std::wstring(name) + L")", flags, enumerator);
    }

    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags, IWbemContext*,
                                        IEnumWbemClassObject** enumerator) override
    {
        const std::wstring call = L"ExecQuery(" + std::wstring(language) + L", " + query + L")";
        return m_state->Enumerate(call, flags, enumerator);
    }

    HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR, LONG flags, IWbemContext*,
                                              IEnumWbemClassObject** enumerator) override
    {
        return m_state->Enumerate(L"CreateClassEnum()", flags, enumerator);
    }

    HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**,
                                            IWbemCallResult**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG, IWbemObjectSink**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject* instance, LONG flags, IWbemContext*,
                                          IWbemCallResult** result) override
    {
        if ((flags & WBEM_FLAG_UPDATE_ONLY) == 0)
        {
            return WBEM_E_INVALID_PARAMETER; // it could make an instance
        }
        CComVariant name;
        instance->Get(L"__CLASS", 0, &name, nullptr, nullptr);
        const std::wstring call = L"PutInstance(" + NotedScalar(name);
        const FakeAnswer& answer = m_state->Answer(call + L")");
        m_state->calls.back() = call + NotedParameters(instance) + L")";
        return HandOut(answer, flags & ~WBEM_FLAG_UPDATE_ONLY, result);
    }
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR path, LONG flags, IWbemContext*,
                                             IWbemCallResult** result) override
    {
        return HandOut(m_state->Answer(L"DeleteInstance(" + std::wstring(path) + L")"), flags, result);
    }
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*,
                                                    IEnumWbemClassObject**) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                                         IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR path, const BSTR method, LONG flags, IWbemContext*,
                                         IWbemClassObject* in, IWbemClassObject**, IWbemCallResult** result) override
    {
        const std::wstring call = L"ExecMethod(" + std::wstring(path) + L", " + method;
        const FakeAnswer& answer = m_state->Answer(call + L")");
        m_state->calls.back() = call + NotedParameters(in) + L")";
        return HandOut(answer, flags, result);
    }
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                              IWbemObjectSink*) override
    {
        return E_NOTIMPL;
    }

private:
    static HRESULT HandOut(const FakeAnswer& answer, LONG flags, IWbemCallResult** result)
    {
        if (flags != WBEM_FLAG_RETURN_IMMEDIATELY || result == nullptr)
        {
            return WBEM_E_INVALID_PARAMETER; // it could not be given up
        }
        if (FAILED(answer.atOnce))
        {
            return Answered(answer.atOnce, answer.explanation);
        }
        *result = MakeObject<FakeCallResult>(answer).Detach();
        return WBEM_S_NO_ERROR;
    }

    std::shared_ptr<FakeServices::State> m_state;
};

} // namespace

std::wstring NotedValue(const VARIANT& value)
{
    if (value.vt == VT_NULL)
    {
        return L"NULL";
    }
    return (value.vt & VT_ARRAY) != 0 ? NotedArray(value.parray, static_cast<VARTYPE>(value.vt & ~VT_ARRAY))
                                      : TypeOf(value.vt) + L" " + NotedScalar(value);
}

FakeAnswer Objects(std::vector<FakeContent> contents)
{
    FakeAnswer answer;
    answer.count = contents.size();
    answer.make = [contents = std::move(contents)](size_t index) { return contents.at(index); };
    return answer;
}

FakeAnswer Refusal(HRESULT status, FakeContent explanation)
{
    FakeAnswer answer;
    answer.atEnd = status;
    answer.explanation = std::move(explanation);
    return answer;
}

FakeContent MakeExtendedStatus(const std::wstring& description, const std::wstring& operation,
                               const std::wstring& parameter, const std::wstring& provider, LONG status)
{
    FakeContent content = Instance(L"__ExtendedStatus", {{L"Description", CComVariant(description.c_str())},
                                                         {L"Operation", CComVariant(operation.c_str())},
                                                         {L"ParameterInfo", CComVariant(parameter.c_str())},
                                                         {L"ProviderName", CComVariant(provider.c_str())}});
    CComVariant code;
    code.vt = VT_I4;
    code.lVal = status;
    content.properties.push_back({L"StatusCode", code, CIM_UINT32, {}});
    return content;
}

void LeaveErrorInfo(const FakeContent& explanation)
{
    const auto info = MakeObject<FakeErrorInfo>(MakeFakeObject(explanation));
    SetErrorInfo(0, info);
}

FakeServices::FakeServices() : m_state(std::make_shared<State>())
{
    m_services.Attach(MakeObject<Services>(m_state).Detach());
}

void FakeServices::OnGetObject(const std::wstring& path, FakeAnswer answer)
{
    m_state->answers[L"GetObject(" + path + L")"] = std::move(answer);
}

void FakeServices::OnEnumerate(const std::wstring& className, FakeAnswer answer)
{
    m_state->answers[L"CreateInstanceEnum(" + className + L")"] = std::move(answer);
}

void FakeServices::OnQuery(const std::wstring& wql, FakeAnswer answer)
{
    m_state->answers[L"ExecQuery(WQL, " + wql + L")"] = std::move(answer);
}

void FakeServices::OnClasses(FakeAnswer answer)
{
    m_state->answers[L"CreateClassEnum()"] = std::move(answer);
}

void FakeServices::OnDelete(const std::wstring& path, FakeAnswer answer)
{
    m_state->answers[L"DeleteInstance(" + path + L")"] = std::move(answer);
}

void FakeServices::OnPut(const std::wstring& className, FakeAnswer answer)
{
    m_state->answers[L"PutInstance(" + className + L")"] = std::move(answer);
}

void FakeServices::OnMethod(const std::wstring& path, const std::wstring& method, FakeAnswer answer)
{
    m_state->answers[L"ExecMethod(" + path + L", " + method + L")"] = std::move(answer);
}

const std::vector<std::wstring>& FakeServices::Calls() const
{
    return m_state->calls;
}

} // namespace orl::test
