// Method calls and deletions, made to return at once so that they can be given up.
#include "tools/orlwmi/Actions.h"

#include "tools/orlwmi/CallWait.h"
#include "tools/orlwmi/ErrorInfo.h"
#include "winport/portable/Utf8.h"

namespace orl::client
{
namespace
{

CComBSTR Bstr(const std::string& text)
{
    return CComBSTR(FromUtf8(text).c_str());
}

// Waits for a call that has no result but its status.
void AwaitEnd(CComPtr<IWbemCallResult>& call, const Deadline& deadline, const std::string& what)
{
    AwaitCall(call, deadline, what,
              [&](LONG slice)
              {
                  LONG outcome = WBEM_S_NO_ERROR;
                  const HRESULT status = call->GetCallStatus(slice, &outcome);
                  return status == WBEM_S_NO_ERROR ? static_cast<HRESULT>(outcome) : status;
              });
}

} // namespace

CComPtr<IWbemClassObject> CallMethod(IWbemServices* services, const std::string& path, const std::string& method,
                                     IWbemClassObject* in, const Deadline& deadline)
{
    const std::string what = "cannot call " + method + " of " + path;
    ClearErrorInfo();
    CComPtr<IWbemCallResult> call;
    Check(services->ExecMethod(Bstr(path), Bstr(method), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, in, nullptr, &call),
          what);
    CComPtr<IWbemClassObject> out;
    AwaitCall(call, deadline, what, [&](LONG slice) { return call->GetResultObject(slice, &out); });
    return out;
}

void PutInstance(IWbemServices* services, IWbemClassObject* instance, const std::string& path, const Deadline& deadline)
{
    const std::string what = "cannot change " + path;
    ClearErrorInfo();
    CComPtr<IWbemCallResult> call;
    Check(services->PutInstance(instance, WBEM_FLAG_UPDATE_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &call), what);
    AwaitEnd(call, deadline, what);
}

void DeleteInstance(IWbemServices* services, const std::string& path, const Deadline& deadline)
{
    const std::string what = "cannot delete " + path;
    ClearErrorInfo();
    CComPtr<IWbemCallResult> call;
    Check(services->DeleteInstance(Bstr(path), WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &call), what);
    AwaitEnd(call, deadline, what);
}

} // namespace orl::client
