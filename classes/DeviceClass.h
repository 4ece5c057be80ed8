// CZarn_DeviceClass: the one pattern of the device classes: a get or an enumeration asks the agent for records, and
// each record that passes the class's filter becomes one instance.
//
// A class says what is its own in a description (see DeviceClassDefaults for what it may leave out):
//
//     struct FcoeThing : DeviceClassDefaults<ORL_FCOE_THING>
//     {
//         static constexpr auto CimClass = FixedText(L"Zarn_FCoEThing");
//         static constexpr auto Manager = FixedText(L"CZarn_FcoeThing");           // how the trace names it
//         static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateThings;
//         static constexpr auto FailureName = &ORL_FCOE_THING::name; // what "SendInstance failed for" calls a record
//         static constexpr DeviceProperty<ORL_FCOE_THING> Properties[] = {...}; // in the order that they are sent
//     };
//     using CZarn_FcoeThing = CZarn_DeviceClass<FcoeThing>;
#pragma once

#include "classes/DeviceProperty.h"
#include "Common/Src/OrlDebug.h"
#include "framework/include/CWomProviderException.h"
#include "framework/include/OrlStatusOfCurrentException.h"
#include "provider/FixedText.h"
#include "provider/Zarn_Fcoe.h"

#include <functional>
#include <vector>

// What most device classes have in common. Records are not filtered unless the class has a filter of its own.
template <typename RecordType>
struct DeviceClassDefaults
{
    using Record = RecordType;

    // What a request asks for within its HBA: nothing more than the HBA.
    struct Filter
    {
    };
    static Filter Everything() { return {}; }
    static Filter FromPath(const CZarn_Fcoe&, COrlWmiAutoParsedObjectPath&, CWomContext&) { return {}; }
    static bool Admits(const Filter&, const COrlString& /*deviceId*/, const Record&) { return true; }

    // Whether an enumeration loads the class definition before its worker does, so that a class that the namespace
    // lacks is refused before anything else is done.
    static constexpr bool EnumerationLoadsClass = true;
    // Whether the worker opens a trace scope of its own.
    static constexpr bool WorkerIsTraced = true;
    // Whether a refusal of the framework is traced in the framework's own words instead of the record's name.
    static constexpr bool TracesProviderText = false;

    // What every instance carries, also one that was asked for without properties.
    static void SetAlways(CWomClassObject&, const Record&) {}
};

// Of a class whose instances are known within their HBA by a text: `Key` names the path's key and KeyField is what it
// is compared with, without regard to case. An empty text asks for all.
template <typename RecordType, COrlString RecordType::*KeyField>
struct DeviceClassWithTextKey : DeviceClassDefaults<RecordType>
{
    using Filter = COrlString;
    static Filter Everything() { return {}; }
    static bool Admits(const Filter& key, const COrlString& /*deviceId*/, const RecordType& record)
    {
        return key.empty() || COrlString(key).CompareI(record.*KeyField);
    }
};

template <typename Class>
class CZarn_DeviceClass : public CZarn_Fcoe
{
public:
    using Record = typename Class::Record;
    using Filter = typename Class::Filter;

    using CZarn_Fcoe::CZarn_Fcoe;

    const wchar_t* GetCimClassName() override { return Class::CimClass.text; }

    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                           CComPtr<IWbemObjectSink> sink) override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::GetObjectAsync");
        COrlTraceScope scope(name.text);
        const COrlString deviceId = GetDeviceIdFromPath(path, context);
        const Filter filter = FilterFromPath(path, context);
        return QueryForAndSend(deviceId, filter, context, sink);
    }

    HRESULT CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink) override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::CreateInstanceEnumAsync");
        COrlTraceScope scope(name.text);
        if constexpr (Class::EnumerationLoadsClass)
        {
            CWomClassObject unused(context);
            unused.CreateClass(CComBSTR(GetCimClassName()));
        }
        return QueryForAndSend(COrlString(), Class::Everything(), context, sink);
    }

    // No method, unless a class has its own.
    HRESULT ExecMethodAsync(COrlWmiAutoParsedObjectPath&, const wchar_t* /*methodName*/, CWomContext&, CWomClassObject&,
                            CWomClassObject&, CComPtr<IWbemObjectSink>) override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::ExecMethodAsync");
        g_OrlDebug.Print(L"%s", name.text);
        return static_cast<HRESULT>(WBEM_E_METHOD_NOT_IMPLEMENTED);
    }

    // Sends what the agent reports for the device id (empty: all HBAs) and the filter admits. Success also when nothing
    // matched or the agent refused; a record that cannot be sent is traced and left out.
    HRESULT QueryForAndSend(const COrlString& deviceId, const Filter& filter, CWomContext& context,
                            CComPtr<IWbemObjectSink> sink)
    {
        static constexpr auto name = Class::Manager + FixedText(L"::QueryForAndSend");
        if constexpr (Class::WorkerIsTraced)
        {
            COrlTraceScope scope(name.text);
            return AskAndSend(deviceId, filter, context, sink);
        }
        else
        {
            return AskAndSend(deviceId, filter, context, sink);
        }
    }

    HRESULT SendInstance(CWomClassObject& classObject, const Record& record, CWomContext& context,
                         CComPtr<IWbemObjectSink> sink)
    {
        static constexpr auto name = Class::Manager + FixedText(L"::SendInstance");
        COrlTraceScope scope(name.text);
        CWomClassObject instance(context);
        instance.SpawnInstanceFromClass(classObject);
        Class::SetAlways(instance, record);
        if (context.ulSuppressProperties == 0)
        {
            // A property that the framework refuses is left out; the rest of the instance still tells the client much.
            for (const DeviceProperty<Record>& property : Class::Properties)
                property.set(DevicePropertyCall<Record>{instance, property.name, record, *this, context});
        }
        instance.Indicate(sink);
        return WBEM_S_NO_ERROR;
    }

private:
    Filter FilterFromPath(COrlWmiAutoParsedObjectPath& path, CWomContext& context) const
    {
        if constexpr (requires { Class::Key; })
            return GetKeyFromPath(path, Class::Key, context);
        else
            return Class::FromPath(*this, path, context);
    }

    HRESULT AskAndSend(const COrlString& deviceId, const Filter& filter, CWomContext& context,
                       CComPtr<IWbemObjectSink>& sink)
    {
        CResult status = AgentStatus(context);
        CWomClassObject classObject(context);
        classObject.CreateClass(CComBSTR(GetCimClassName()));
        std::vector<Record> records;
        if (!(Agent()->*Class::Enumerate)(deviceId, records, status))
            return WBEM_S_NO_ERROR;
        for (const Record& record : records)
        {
            if (Class::Admits(filter, deviceId, record))
                SendOrTrace(classObject, record, context, sink);
        }
        return WBEM_S_NO_ERROR;
    }

    // One bad record never stops the others.
    void SendOrTrace(CWomClassObject& classObject, const Record& record, CWomContext& context,
                     CComPtr<IWbemObjectSink>& sink)
    {
        try
        {
            SendInstance(classObject, record, context, sink);
        }
        catch (const CWomProviderException& refusal)
        {
            context.NoteLostRecord(OrlStatusOfCurrentException());
            if constexpr (Class::TracesProviderText)
                TraceFailure(refusal.FormatErrorMessage());
            else
                TraceFailure(std::invoke(Class::FailureName, record));
        }
        catch (...)
        {
            context.NoteLostRecord(OrlStatusOfCurrentException());
            TraceFailure(std::invoke(Class::FailureName, record));
        }
    }

    static void TraceFailure(const COrlString& what) { g_OrlDebug.Print(L"SendInstance failed for %s", what.c_str()); }
};
