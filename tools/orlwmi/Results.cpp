// Semisynchronous calls: they return at once and are waited for in slices.
#include "tools/orlwmi/Results.h"

#include "tools/orlwmi/CallWait.h"
#include "tools/orlwmi/ErrorInfo.h"
#include "winport/portable/Utf8.h"

#include <utility>

namespace orl::client
{
namespace
{

constexpr LONG Streaming = WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY;

CComBSTR Bstr(const std::string& text)
{
    return CComBSTR(FromUtf8(text).c_str());
}

// Milliseconds for what is ready: nobody sees them pass.
constexpr LONG AlreadyThere = 1;

} // namespace

CComPtr<IWbemClassObject> GetObjectAt(IWbemServices* services, const std::string& path, const Deadline& deadline)
{
    const std::string what = "cannot get " + path;
    ClearErrorInfo();
    CComPtr<IWbemCallResult> call;
    Check(services->GetObject(Bstr(path), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, &call), what);
    CComPtr<IWbemClassObject> object;
    AwaitCall(call, deadline, what, [&](LONG slice) { return call->GetResultObject(slice, &object); });
    return object;
}

Results::Results(CComPtr<IEnumWbemClassObject> enumerator, std::string what)
    : m_enumerator(std::move(enumerator)), m_what(std::move(what))
{
}

Results Results::Instances(IWbemServices* services, const std::string& className)
{
    const std::string what = "cannot enumerate " + className;
    ClearErrorInfo();
    CComPtr<IEnumWbemClassObject> enumerator;
    Check(services->CreateInstanceEnum(Bstr(className), Streaming, nullptr, &enumerator), what);
    return {std::move(enumerator), what};
}

Results Results::Query(IWbemServices* services, const std::string& wql)
{
    const std::string what = "cannot run the query " + wql;
    ClearErrorInfo();
    CComPtr<IEnumWbemClassObject> enumerator;
    Check(services->ExecQuery(Bstr("WQL"), Bstr(wql), Streaming, nullptr, &enumerator), what);
    return {std::move(enumerator), what};
}

Results Results::Classes(IWbemServices* services)
{
    const std::string what = "cannot list the classes";
    ClearErrorInfo();
    CComPtr<IEnumWbemClassObject> enumerator;
    Check(services->CreateClassEnum(nullptr, WBEM_FLAG_DEEP | Streaming, nullptr, &enumerator), what);
    return {std::move(enumerator), what};
}

Results::~Results()
{
    if (m_givenUp)
    {
        Abandon(m_enumerator.Detach());
    }
}

CComPtr<IWbemClassObject> Results::Next(const Deadline& deadline, Output& output)
{
    if (m_taken == m_count && !m_ended)
    {
        Fetch(deadline, output);
    }
    if (m_taken < m_count)
    {
        return std::move(m_batch.at(m_taken++));
    }
    if (m_failure)
    {
        throw Failure(*m_failure);
    }
    return nullptr;
}

void Results::Fetch(const Deadline& deadline, Output& output)
{
    m_count = 0;
    m_taken = 0;
    LONG slice = AlreadyThere;
    while (m_count == 0 && !m_ended)
    {
        std::array<IWbemClassObject*, BatchSize> objects{};
        const HRESULT status = m_enumerator->Next(slice, BatchSize, objects.data(), &m_count);
        for (ULONG i = 0; i < m_count; ++i)
        {
            m_batch.at(i).Attach(objects.at(i));
        }
        Accept(status);
        if (m_count == 0 && !m_ended)
        {
            output.Flush();
            m_givenUp = true; // unless the deadline lets us go on
            slice = deadline.Slice();
            m_givenUp = false;
        }
    }
}

void Results::Accept(HRESULT status)
{
    if (status == WBEM_S_NO_ERROR || status == WBEM_S_TIMEDOUT)
    {
        return;
    }
    m_ended = true;
    if (status != WBEM_S_FALSE)
    {
        m_failure.emplace(m_what, status, TakeErrorInfo());
    }
}

} // namespace orl::client
