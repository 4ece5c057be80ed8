// IWbemLocator: where a client begins.
#include "host/Locator.h"

#include "host/CallStatus.h"
#include "host/Host.h"
#include "host/ObjectNames.h"
#include "host/Services.h"
#include "host/VariantValue.h"
#include "wbem/ObjectPath.h"

namespace orl
{
namespace
{

const Namespace& NamespaceOf(Host& host, std::wstring_view resource)
{
    const auto path = wbem::ObjectPath::ParseNamespace(resource.empty() ? kDefaultNamespace : resource);
    if (!path)
        throw CallFailure(WBEM_E_INVALID_NAMESPACE, L"the namespace is malformed: " + path.Error().Text());
    if (!IsThisServer(path->server))
        throw CallFailure(WBEM_E_TRANSPORT_FAILURE,
                          L"this service is on " + ServerName() + L" and reaches no other machine: " + path->server);
    return NeedNamespace(host, path->namespaces);
}

} // namespace

Locator::Locator() : Locator(Host::OfProcess()) {}

HRESULT Locator::ConnectServer(const BSTR resource, const BSTR user, const BSTR, const BSTR, LONG, const BSTR authority,
                               IWbemContext*, IWbemServices** services)
{
    return ComCall(
        [&]() -> HRESULT
        {
            if (!services)
                throw CallFailure(WBEM_E_INVALID_PARAMETER, L"there is no place for the connection");
            *services = nullptr;
            CallStatus status;
            try
            {
                if (!ViewOf(user).empty() || !ViewOf(authority).empty())
                    throw CallFailure(WBEM_E_LOCAL_CREDENTIALS, L"a local connection takes no user");
                *services =
                    MakeObject<Services>(m_host, NamespaceOf(m_host, ViewOf(resource)), Services::Holder::Client)
                        .Detach();
                return WBEM_S_NO_ERROR;
            }
            catch (const RepositoryError& error)
            {
                status.code = WBEM_E_FAILED;
                status.description = error.text;
            }
            catch (...)
            {
                status = StatusOfCurrentException();
            }
            status.operation = L"ConnectServer";
            status.parameter = ViewOf(resource);
            throw CallFailure(std::move(status));
        });
}

} // namespace orl
