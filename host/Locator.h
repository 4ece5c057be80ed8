// IWbemLocator: where a client begins.
#pragma once

#include "com/OrlCom.h"

namespace orl
{

class Host;

class Locator : public ComObject<IWbemLocator>
{
public:
    // Of the service of this process.
    Locator();
    explicit Locator(Host& host) : m_host(host) {}

    // The resource names a namespace of this machine, root\KESTA when it is empty. Users are not told apart: a user or
    // an authority is refused with WBEM_E_LOCAL_CREDENTIALS. Loads the schema; one that is bad answers WBEM_E_FAILED
    // with file, line, column and reason.
    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR resource, const BSTR user, const BSTR password,
                                            const BSTR locale, LONG flags, const BSTR authority, IWbemContext* context,
                                            IWbemServices** services) override;

private:
    Host& m_host;
};

} // namespace orl
