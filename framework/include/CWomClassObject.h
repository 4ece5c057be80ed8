// CWomClassObject: a CIM class or instance in the hands of a manager.
#pragma once

#include "com/OrlAtl.h"
#include "Common/Src/OrlString.h"
#include "framework/include/CWomContext.h"
#include "framework/include/OrlFrameworkApi.h"
#include "framework/include/WarningMessageObj.h"

#include <wbemcli.h>

#include <vector>

// The setters and getters answer an HRESULT: WBEM_E_NOT_FOUND for a property that the class lacks, WBEM_E_TYPE_MISMATCH
// for one of another type, WBEM_E_INVALID_OBJECT while there is no object. Only a lack of memory throws, CAtlException
// with E_OUTOFMEMORY, because most callers do not look at the results and an instance that lost a property that way
// would pass for a whole one.
//
// The context must outlive the object. Like the context, an object belongs to one thread.
class ORL_FRAMEWORK_API CWomClassObject
{
public:
    explicit CWomClassObject(CWomContext& context) : m_context(context) {}
    // Wraps an object of the service: an instance to be written, a method's parameters. May be null.
    CWomClassObject(CWomContext& context, IWbemClassObject* object) : m_context(context), m_object(object) {}

    // These three throw CWomProviderException, with the status of what failed.

    // Makes this the definition of the class, which is shared with other requests: instances are spawned from it, and
    // nothing is set in it.
    void CreateClass(const CComBSTR& className);
    // Makes this a new instance of the class. Once the client is gone it throws with WBEM_E_CALL_CANCELLED at once.
    void SpawnInstanceFromClass(const CWomClassObject& classObject);
    // Hands the instance to the client. It must not be changed afterwards.
    void Indicate(CComPtr<IWbemObjectSink> sink);

    HRESULT SetProperty(const wchar_t* name, const wchar_t* text); // a null text makes the property null
    HRESULT SetProperty(const wchar_t* name, const COrlString& text);
    HRESULT SetProperty(const wchar_t* name, const CComBSTR& text); // copies nothing
    HRESULT SetProperty(const wchar_t* name, const std::vector<LONG>& numbers);
    HRESULT SetProperty(const wchar_t* name, const std::vector<COrlString>& texts);
    HRESULT SetProperty(const wchar_t* name, const std::vector<WarningMessageObj>& warnings);
    HRESULT SetPropertyUint16(const wchar_t* name, USHORT value);
    HRESULT SetPropertyUint32(const wchar_t* name, ULONG value);
    HRESULT SetPropertyUint64(const wchar_t* name, ULONGLONG value);
    HRESULT SetPropertySint64(const wchar_t* name, LONGLONG value);
    HRESULT SetPropertyBool(const wchar_t* name, bool value);

    // A property that is null reads as a null BSTR.
    HRESULT GetProperty(const wchar_t* name, CComBSTR& text) const;
    // A property that is null reads as 0 with `isNull` set. A number that does not fit is WBEM_E_TYPE_MISMATCH.
    HRESULT GetPropertySint64(const wchar_t* name, LONGLONG& value, bool& isNull) const;
    HRESULT GetPropertyUint32(const wchar_t* name, ULONG& value, bool& isNull) const;

    // Null as long as there is no object.
    IWbemClassObject* Object() const { return m_object; }

private:
    HRESULT Put(const wchar_t* name, VARIANT& value);
    HRESULT PutInteger(const wchar_t* name, LONG value);
    HRESULT PutDecimal(const wchar_t* name, bool negative, ULONGLONG magnitude);
    HRESULT Get(const wchar_t* name, CComVariant& value, CIMTYPE& type) const;
    template <typename Number>
    HRESULT GetNumber(const wchar_t* name, Number& value, bool& isNull,
                      bool (*read)(const VARIANT&, CIMTYPE, Number&)) const;

    CWomContext& m_context;
    CComPtr<IWbemClassObject> m_object;
};
