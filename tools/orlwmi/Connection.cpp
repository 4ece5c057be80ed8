// Connecting through the locator that COM finds: the machine's own WMI service, or the host where there is none.
#include "tools/orlwmi/Connection.h"

#include "tools/orlwmi/ErrorInfo.h"
#include "winport/portable/Utf8.h"

#include <algorithm>
#include <memory>

namespace orl::client
{
namespace
{

// What one attempt came to. Shared with the thread that makes it, which may outlive the wait for it.
struct Attempt
{
    std::string path;
    HRESULT status = E_UNEXPECTED;
    std::string step;
    ExtendedStatus extended;
    CComPtr<IWbemServices> services;

    void Run()
    {
        ClearErrorInfo();
        CComPtr<IWbemLocator> locator;
        step = "cannot reach a WMI service";
        status = CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                                  reinterpret_cast<void**>(&locator));
        if (SUCCEEDED(status))
        {
            step = "cannot connect to the namespace " + path;
            status = locator->ConnectServer(CComBSTR(FromUtf8(path).c_str()), nullptr, nullptr, nullptr, 0, nullptr,
                                            nullptr, &services);
        }
        if (FAILED(status))
        {
            extended = TakeErrorInfo();
        }
    }
};

// The service acts for the user where its providers need the user's rights. A service within this process has no proxy
// and acts as the process anyway.
void AllowImpersonation(IWbemServices* services)
{
    const HRESULT status = CoSetProxyBlanket(services, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                             RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE);
    if (FAILED(status) && status != E_NOINTERFACE)
    {
        throw Failure(ExitCode::NoConnection, "cannot set up security for the connection", status, {});
    }
}

} // namespace

ComRuntime::ComRuntime()
{
    const HRESULT status = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    if (FAILED(status))
    {
        throw Failure(ExitCode::NoConnection, "cannot start COM", status, {});
    }
    const HRESULT security =
        CoInitializeSecurity(nullptr, -1, nullptr, nullptr, static_cast<DWORD>(RPC_C_AUTHN_LEVEL_DEFAULT),
                             static_cast<DWORD>(RPC_C_IMP_LEVEL_IMPERSONATE), nullptr, EOAC_NONE, nullptr);
    if (FAILED(security))
    {
        CoUninitialize();
        throw Failure(ExitCode::NoConnection, "cannot set up security for COM", security, {});
    }
}

ComRuntime::~ComRuntime()
{
    CoUninitialize();
}

std::string NamespacePath(const std::string& server, const std::string& nameSpace)
{
    std::string path = nameSpace;
    std::replace(path.begin(), path.end(), '/', '\\');
    return server.empty() ? path : "\\\\" + server + "\\" + path;
}

CComPtr<IWbemServices> Connect(const std::string& namespacePath, const Deadline& deadline)
{
    auto attempt = std::make_shared<Attempt>();
    attempt->path = namespacePath;
    deadline.Await([attempt] { attempt->Run(); });
    if (FAILED(attempt->status))
    {
        throw Failure(ExitCode::NoConnection, attempt->step, attempt->status, attempt->extended);
    }
    AllowImpersonation(attempt->services);
    return attempt->services;
}

} // namespace orl::client
