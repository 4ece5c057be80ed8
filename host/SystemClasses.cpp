// The system classes in MOF: as much of each as registrations, statuses and namespaces use.
#include "host/SystemClasses.h"

#include "host/Repository.h"

namespace orl
{
namespace
{

constexpr std::wstring_view kSystemMof = LR"(
[abstract] class __SystemClass {};

class __NAMESPACE : __SystemClass
{
    [key] string Name;
};

[abstract] class __Provider : __SystemClass
{
    [key] string Name;
};

class __Win32Provider : __Provider
{
    string CLSID;
    string ClientLoadableCLSID;
    string DefaultMachineName;
    string HostingModel;
    sint32 ImpersonationLevel = 0;
    sint32 InitializationReentrancy = 0;
    uint32 ConcurrentIndependantRequests;
    boolean Enabled;
    boolean InitializeAsAdminFirst;
    datetime OperationTimeoutInterval;
    datetime InitializationTimeoutInterval;
    boolean PerLocaleInitialization = FALSE;
    boolean PerUserInitialization = FALSE;
    boolean Pure = TRUE;
    string SecurityDescriptor;
    boolean SupportsExplicitShutdown;
    boolean SupportsExtendedStatus;
    boolean SupportsQuotas;
    boolean SupportsSendStatus;
    boolean SupportsShutdown;
    boolean SupportsThrottling;
    datetime UnloadTimeout;
    uint32 Version;
};

[abstract] class __ProviderRegistration : __SystemClass
{
    __Provider ref provider;
};

[abstract] class __ObjectProviderRegistration : __ProviderRegistration
{
    sint32 InteractionType;
    boolean SupportsPut = FALSE;
    boolean SupportsGet = FALSE;
    boolean SupportsDelete = FALSE;
    boolean SupportsEnumeration = FALSE;
    boolean SupportsBatching;
    boolean SupportsTransactions;
    string QuerySupportLevels[];
};

class __InstanceProviderRegistration : __ObjectProviderRegistration
{
    [key] __Provider ref provider;
};

class __ClassProviderRegistration : __ObjectProviderRegistration
{
    [key] __Provider ref provider;
    string UnsupportedQueries[];
    string ReferencedSetQueries[];
    string ResultSetQueries[];
    datetime CacheRefreshInterval;
    boolean PerUserSchema;
    boolean ReSynchroniseOnNamespaceOpen;
    sint32 Version = 1;
};

class __MethodProviderRegistration : __ProviderRegistration
{
    [key] __Provider ref provider;
};

class __PropertyProviderRegistration : __ProviderRegistration
{
    [key] __Provider ref provider;
    boolean SupportsGet;
    boolean SupportsPut;
};

class __EventProviderRegistration : __ProviderRegistration
{
    [key] __Provider ref provider;
    string EventQueryList[];
};

class __EventConsumerProviderRegistration : __ProviderRegistration
{
    [key] __Provider ref provider;
    string ConsumerClassNames[];
};

[abstract] class __NotifyStatus : __SystemClass
{
    uint32 StatusCode;
};

class __ExtendedStatus : __NotifyStatus
{
    string Description;
    string Operation;
    string ParameterInfo;
    string ProviderName;
};
)";

std::vector<wbem::MofClass> Read()
{
    wbem::MofResult read = wbem::ReadMofText(kSystemMof, L"system classes");
    if (!read)
        throw RepositoryError(read.Error().Text());
    std::vector<wbem::MofClass> classes;
    for (wbem::MofDeclaration& declaration : (*read).declarations)
        classes.push_back(std::move(std::get<wbem::MofClass>(declaration)));
    return classes;
}

} // namespace

const std::vector<wbem::MofClass>& SystemClasses()
{
    // Never destroyed: a worker thread may still use them while the process ends.
    static const auto& classes = *new std::vector<wbem::MofClass>(Read());
    return classes;
}

} // namespace orl
