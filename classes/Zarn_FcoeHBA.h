// CZarn_FcoeHBA: Zarn_FCOEHBA, one instance for each FCoE host bus adapter.
#pragma once

#include "classes/DeviceClass.h"

namespace orl
{

// The last part of a device instance path: what follows its last backslash, or all of it.
COrlString HbaIdOf(const ORL_FCOE_HBA& hba);

struct FcoeHBA : DeviceClassDefaults<ORL_FCOE_HBA>
{
    static constexpr auto CimClass = FixedText(L"Zarn_FCOEHBA");
    static constexpr auto Manager = FixedText(L"CZarn_FcoeHBA");
    static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateHBAs;
    static constexpr auto FailureName = &ORL_FCOE_HBA::hbaName;
    static constexpr bool EnumerationLoadsClass = false;
    static constexpr bool TracesProviderText = true;

    static constexpr DeviceProperty<ORL_FCOE_HBA> Properties[] = {
        TextProperty<&ORL_FCOE_HBA::deviceId>(L"DeviceID"),
        TextProperty<&ORL_FCOE_HBA::name>(L"Name"),
        TextProperty<&ORL_FCOE_HBA::hbaName>(L"HBAName"),
        HexadecimalProperty<&ORL_FCOE_HBA::fcid>(L"FCID"),
        TextProperty<&ORL_FCOE_HBA::busInformation>(L"BusInformation"),
        TextProperty<&ORL_FCOE_HBA::linkSpeed>(L"LinkSpeed"),
        TextProperty<&ORL_FCOE_HBA::linkStatus>(L"LinkStatus"),
        TextProperty<&ORL_FCOE_HBA::model>(L"Model"),
        TextProperty<&ORL_FCOE_HBA::worldWidePortName>(L"WorldWidePortName"),
        TextProperty<&ORL_FCOE_HBA::worldWideNodeName>(L"WorldWideNodeName"),
        DerivedTextProperty<ORL_FCOE_HBA, &HbaIdOf>(L"HBAID"),
        ReferenceProperty<&CZarn_Fcoe::MakeDevicePathFromDeviceID, &ORL_FCOE_HBA::deviceId>(L"Adapter"),
    };
};

} // namespace orl

class CZarn_FcoeHBA final : public CZarn_DeviceClass<orl::FcoeHBA>
{
public:
    using CZarn_DeviceClass::CZarn_DeviceClass;

    // The methods, by name without regard to case: CreateVirtualPort, DeleteVirtualPort, GenerateVirtualPortWWPN,
    // RefreshTargets, Uninstall. "ReturnValue" is 0 whatever the agent did; what it wants the user to know is in
    // "WarningMessages". Throws CWomProviderException when an out-parameter cannot be set.
    HRESULT ExecMethodAsync(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName, CWomContext& context,
                            CWomClassObject& inParameters, CWomClassObject& outParameters,
                            CComPtr<IWbemObjectSink> sink) override;

private:
    // One call of a method: everything that a handler reads or writes.
    struct Call
    {
        COrlWmiAutoParsedObjectPath& path;
        CWomContext& context;
        CWomClassObject& in;
        CWomClassObject& out;
    };
    struct Method
    {
        const wchar_t* name;
        HRESULT (CZarn_FcoeHBA::*run)(Call& call);
    };
    static const Method Methods[];

    HRESULT CreateVirtualPort(Call& call);
    HRESULT DeleteVirtualPort(Call& call);
    HRESULT GenerateVirtualPortWWPN(Call& call);
    HRESULT RefreshTargets(Call& call);
    HRESULT Uninstall(Call& call);
};
