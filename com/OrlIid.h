// The identifier of an interface by its type, for compilers that have no __uuidof.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <wbemcli.h>
#include <wbemprov.h>

namespace orl
{

// Specialised for every interface below; ORL_INTERFACE_ID does it for another, inside this namespace.
template <class Interface>
struct InterfaceId;

template <class Interface>
REFIID IidOf()
{
    return InterfaceId<Interface>::Get();
}

#define ORL_INTERFACE_ID(Interface, Id)                                                                                \
    template <>                                                                                                        \
    struct InterfaceId<Interface>                                                                                      \
    {                                                                                                                  \
        static REFIID Get() { return Id; }                                                                             \
    }

ORL_INTERFACE_ID(IUnknown, IID_IUnknown);
ORL_INTERFACE_ID(IClassFactory, IID_IClassFactory);
ORL_INTERFACE_ID(IErrorInfo, IID_IErrorInfo);
ORL_INTERFACE_ID(IWbemQualifierSet, IID_IWbemQualifierSet);
ORL_INTERFACE_ID(IWbemClassObject, IID_IWbemClassObject);
ORL_INTERFACE_ID(IWbemObjectSink, IID_IWbemObjectSink);
ORL_INTERFACE_ID(IEnumWbemClassObject, IID_IEnumWbemClassObject);
ORL_INTERFACE_ID(IWbemContext, IID_IWbemContext);
ORL_INTERFACE_ID(IWbemCallResult, IID_IWbemCallResult);
ORL_INTERFACE_ID(IWbemServices, IID_IWbemServices);
ORL_INTERFACE_ID(IWbemLocator, IID_IWbemLocator);
ORL_INTERFACE_ID(IWbemShutdown, IID_IWbemShutdown);
ORL_INTERFACE_ID(IWbemProviderInitSink, IID_IWbemProviderInitSink);
ORL_INTERFACE_ID(IWbemProviderInit, IID_IWbemProviderInit);

} // namespace orl
