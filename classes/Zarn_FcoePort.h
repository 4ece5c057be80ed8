// CZarn_FcoePort: Zarn_FCoEPort, one instance for each FCoE port of an HBA.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

struct FcoePort : DeviceClassWithTextKey<ORL_FCOE_PORT, &ORL_FCOE_PORT::portWWN>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCoEPort");
    static constexpr auto Manager = FixedText(L"CZarn_FcoePort");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumeratePorts;
    static constexpr auto FailureName = &ORL_FCOE_PORT::nodeWWN;
    static constexpr const wchar_t* Key = L"WorldWidePortName";
    static constexpr bool WorkerIsTraced = false;

    static constexpr DeviceProperty<ORL_FCOE_PORT> Properties[] = {
        TextProperty<&ORL_FCOE_PORT::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_PORT::name>(L"Name"),
        TextProperty<&ORL_FCOE_PORT::nodeWWN>(L"WorldWideNodeName"),
        TextProperty<&ORL_FCOE_PORT::portWWN>(L"WorldWidePortName"),
        HexadecimalProperty<&ORL_FCOE_PORT::fcid>(L"FCID"),
        Uint32Property<&ORL_FCOE_PORT::portTypeId>(L"PortTypeID"),
        TextProperty<&ORL_FCOE_PORT::portType>(L"PortType"),
        ReferenceProperty<&CZarn_Fcoe::MakeFabricPathFromDeviceIDWWN, &ORL_FCOE_PORT::deviceId,
                          &ORL_FCOE_PORT::fabricNodeWWN>(L"Fabric"),
        TextProperty<&ORL_FCOE_PORT::fabricName>(L"FabricName"),
    };
};

} // namespace orl

class CZarn_FcoePort final : public CZarn_DeviceClass<orl::FcoePort>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;

    // Deletes the virtual port. Throws CWomProviderException when the agent refuses or warns of an error.
    HRESULT DeleteInstanceAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                                CComPtr<IWbemObjectSink> sink) override;
};
