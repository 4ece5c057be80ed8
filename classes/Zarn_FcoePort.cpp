// CZarn_FcoePort: deleting a virtual port.

#include "classes/Zarn_FcoePort.h"

#include <algorithm>

HRESULT CZarn_FcoePort::DeleteInstanceAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                                            CComPtr<IWbemObjectSink>)
{
    CResult status = AgentStatus(context);
    const COrlString deviceId = GetDeviceIdFromPath(path, context);
    const COrlString portWWN = GetKeyFromPath(path, L"WorldWidePortName", context);
    std::vector<WarningMessageObj> warnings;
    const bool deleted = Agent()->DeleteVirtualPort(deviceId, portWWN, warnings, status);
    const bool refused =
        std::any_of(warnings.begin(), warnings.end(),
                    [](const WarningMessageObj& warning) { return warning.ulKind == WarningMessageObj::KindError; });
    if (deleted && !refused)
        return WBEM_S_NO_ERROR;
    throw CWomProviderException(context, 0x8004091A, CComBSTR(L"DeleteVirtualPort()"), WBEM_E_NOT_FOUND,
                                L"Src\\Zarn_FcoePort", 101);
}
