// A provider whose answers a test writes.
#include "tests/host/ScriptedProvider.h"

#include <stdexcept>

namespace orl::test
{
namespace
{

void Need(HRESULT code, const char* what)
{
    if (FAILED(code))
        throw std::runtime_error(std::string(what) + " failed");
}

} // namespace

std::wstring TextOf(BSTR text)
{
    return text ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

std::vector<std::wstring> ScriptedProvider::Calls() const
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

CComPtr<IWbemContext> ScriptedProvider::LastContext() const
{
    const std::lock_guard lock(m_mutex);
    return m_context;
}

void ScriptedProvider::Note(const std::wstring& made, IWbemContext* context)
{
    const std::lock_guard lock(m_mutex);
    m_calls.push_back(made);
    m_context = context;
}

CComPtr<IWbemClassObject> ScriptedProvider::Make(const wchar_t* className, Properties properties) const
{
    CComPtr<IWbemClassObject> definition;
    Need(m_service->GetObject(CComBSTR(className), 0, nullptr, &definition, nullptr), "GetObject");
    CComPtr<IWbemClassObject> instance;
    Need(definition->SpawnInstance(0, &instance), "SpawnInstance");
    for (const auto& [name, value] : properties)
        Need(instance->Put(name, 0, const_cast<CComVariant*>(&value), 0), "Put");
    return instance;
}

CComPtr<IWbemClassObject> ScriptedProvider::MakeResult(const wchar_t* className, const wchar_t* method) const
{
    CComPtr<IWbemClassObject> definition;
    Need(m_service->GetObject(CComBSTR(className), 0, nullptr, &definition, nullptr), "GetObject");
    CComPtr<IWbemClassObject> signature;
    Need(definition->GetMethod(method, 0, nullptr, &signature), "GetMethod");
    CComPtr<IWbemClassObject> result;
    Need(signature->SpawnInstance(0, &result), "SpawnInstance");
    return result;
}

HRESULT ScriptedProvider::Do(const Answer& answer, const wchar_t* operation, BSTR what, IWbemContext* context,
                             IWbemObjectSink* sink)
{
    Note(std::wstring(operation) + L" " + TextOf(what), context);
    return answer ? answer(TextOf(what), sink) : WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT ScriptedProvider::Initialize(LPWSTR, LONG, LPWSTR nameSpace, LPWSTR, IWbemServices* service,
                                     IWbemContext* context, IWbemProviderInitSink* sink)
{
    Note(std::wstring(L"Initialize ") + nameSpace, context);
    m_service = service;
    if (initialize)
        return initialize(sink);
    return sink->SetStatus(WBEM_S_NO_ERROR, 0);
}

HRESULT ScriptedProvider::CancelAsyncCall(IWbemObjectSink* sink)
{
    Note(L"CancelAsyncCall", nullptr);
    if (cancel)
        cancel(sink);
    return WBEM_S_NO_ERROR;
}

HRESULT ScriptedProvider::GetObjectAsync(const BSTR path, LONG, IWbemContext* context, IWbemObjectSink* sink)
{
    return Do(get, L"GetObject", path, context, sink);
}

HRESULT ScriptedProvider::CreateInstanceEnumAsync(const BSTR className, LONG, IWbemContext* context,
                                                  IWbemObjectSink* sink)
{
    return Do(enumerate, L"CreateInstanceEnum", className, context, sink);
}

HRESULT ScriptedProvider::ExecQueryAsync(const BSTR, const BSTR text, LONG, IWbemContext* context,
                                         IWbemObjectSink* sink)
{
    return Do(query, L"ExecQuery", text, context, sink);
}

HRESULT ScriptedProvider::DeleteInstanceAsync(const BSTR path, LONG, IWbemContext* context, IWbemObjectSink* sink)
{
    return Do(remove, L"DeleteInstance", path, context, sink);
}

HRESULT ScriptedProvider::PutInstanceAsync(IWbemClassObject* instance, LONG, IWbemContext* context,
                                           IWbemObjectSink* sink)
{
    Note(L"PutInstance", context);
    return put ? put(instance, sink) : WBEM_E_PROVIDER_NOT_CAPABLE;
}

HRESULT ScriptedProvider::ExecMethodAsync(const BSTR path, const BSTR method, LONG, IWbemContext* context,
                                          IWbemClassObject* in, IWbemObjectSink* sink)
{
    Note(L"ExecMethod " + TextOf(path) + L" " + TextOf(method), context);
    return call ? call(TextOf(path), TextOf(method), in, sink) : WBEM_E_PROVIDER_NOT_CAPABLE;
}

} // namespace orl::test
