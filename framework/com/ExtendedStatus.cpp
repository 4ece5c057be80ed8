// ExtendedStatus: filling the object.

#include "framework/com/ExtendedStatus.h"

#include "framework/include/CWomClassObject.h"

namespace orl
{

namespace
{

// The name under which the provider is registered with the service.
constexpr wchar_t ProviderName[] = L"Orl2InstUtility";

} // namespace

CComPtr<IWbemClassObject> MakeExtendedStatus(CWomContext& context, const FailureWords& words) noexcept
{
    try
    {
        CComPtr<IWbemClassObject> definition;
        CComPtr<IWbemClassObject> object;
        if (FAILED(context.LoadClass(CComBSTR(L"__ExtendedStatus"), definition)) || definition == nullptr ||
            FAILED(definition->SpawnInstance(0, &object)))
            return nullptr;
        CWomClassObject status(context, object);
        status.SetProperty(L"Description", words.description);
        status.SetProperty(L"Operation", words.operation);
        status.SetProperty(L"ParameterInfo", words.parameterInfo);
        status.SetProperty(L"ProviderName", ProviderName);
        status.SetPropertyUint32(L"StatusCode", static_cast<ULONG>(words.status));
        return object;
    }
    catch (...)
    {
        return nullptr;
    }
}

} // namespace orl
