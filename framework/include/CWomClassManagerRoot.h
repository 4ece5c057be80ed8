// CWomClassManagerRoot: the base of every class manager.
#pragma once

#include "com/OrlAtl.h"
#include "framework/include/COrlWmiAutoParsedObjectPath.h"
#include "framework/include/CWomClassObject.h"
#include "framework/include/CWomContext.h"
#include "framework/include/CWomWQLParser.h"
#include "framework/include/OrlFrameworkApi.h"

#include <wbemcli.h>

// The framework owns a registered manager and destroys it through its destructor. It calls the operations from any
// number of threads at once.
//
// An operation answers its request's status or throws: CWomProviderException with a status of its own, CAtlException
// with its code; any other exception is a failure without a name. The framework tells the client the end of the
// request, so an operation only indicates instances and lets go of the sink when it returns.
//
// The order of the operations is a contract with managers that are built apart from the framework.
class ORL_FRAMEWORK_API CWomClassManagerRoot
{
public:
    CWomClassManagerRoot();
    virtual ~CWomClassManagerRoot();
    CWomClassManagerRoot(const CWomClassManagerRoot&) = delete;
    CWomClassManagerRoot& operator=(const CWomClassManagerRoot&) = delete;

    // The name of the manager's CIM class. It stays valid as long as the manager.
    virtual const wchar_t* GetCimClassName() = 0;

    // Success without an instance means that there is none; the client then reads WBEM_E_NOT_FOUND.
    virtual HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                                   CComPtr<IWbemObjectSink> sink) = 0;

    virtual HRESULT CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink) = 0;

    // `path` receives the path of what was created. The default answers WBEM_E_PROVIDER_NOT_CAPABLE.
    virtual HRESULT CreateInstanceAsync(CWomClassObject& instance, CWomContext& context, CComBSTR& path,
                                        CComPtr<IWbemObjectSink> sink);

    // The default answers WBEM_E_PROVIDER_NOT_CAPABLE. `reserved` is 0.
    virtual HRESULT UpdateInstanceAsync(CWomClassObject& instance, CWomContext& context, ULONG_PTR reserved,
                                        CComPtr<IWbemObjectSink> sink);

    // The default answers WBEM_E_PROVIDER_NOT_CAPABLE.
    virtual HRESULT DeleteInstanceAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                                        CComPtr<IWbemObjectSink> sink);

    // Sets properties of `outParameters`, which the framework hands to the client when the status is a success. Either
    // wraps no object when the method has no such parameters. The method's name comes in the client's case. The default
    // answers WBEM_E_PROVIDER_NOT_CAPABLE.
    virtual HRESULT ExecMethodAsync(COrlWmiAutoParsedObjectPath& path, const wchar_t* methodName, CWomContext& context,
                                    CWomClassObject& inParameters, CWomClassObject& outParameters,
                                    CComPtr<IWbemObjectSink> sink);

    // May send more than the query asks for: the service filters. The default sends all instances, through the
    // manager's own CreateInstanceEnumAsync.
    virtual HRESULT ExecQueryAsync(CWomWQLParser& query, CWomContext& context, CComPtr<IWbemObjectSink> sink);
};
