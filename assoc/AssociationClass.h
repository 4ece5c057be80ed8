// CZarn_AssociationClass: the one pattern of the associations: a get or an enumeration asks the agent for the records
// of the dependent side, and each becomes one instance of two object paths.
//
// A class says what is its own in a description (see AssociationDefaults for what it may leave out):
//
//     struct HbaToThing : AssociationDefaults<ORL_FCOE_THING>
//     {
//         static constexpr auto CimClass = FixedText(L"Zarn_FCoE_HBA_Thing_Assoc");
//         static constexpr auto Manager = FixedText(L"CZarn_HBAToThingAssocMgr"); // how the trace names it
//         static constexpr auto Enumerate = &COrlFcoeAgentIntf::EnumerateThings;
//         static constexpr AssociationFailures Failures{L"OrlAdapterAgent::...", L"Src\\Zarn_...", 69, 149};
//         using Antecedent = PathOf<&CZarn_Fcoe::MakeHBAPathFromDeviceID, &ORL_FCOE_THING::deviceId>;
//         using Dependent = PathOf<&CZarn_Fcoe::MakeThingPath, &ORL_FCOE_THING::deviceId, &ORL_FCOE_THING::name>;
//     };
//     using CZarn_HBAToThingAssocMgr = CZarn_AssociationClass<HbaToThing>;
#pragma once

#include "Common/Src/OrlDebug.h"
#include "provider/FixedText.h"
#include "provider/PathOf.h"
#include "provider/Refusals.h"
#include "provider/Zarn_Fcoe.h"

#include <vector>

// The path that a reference holds; what is none has no keys.
inline COrlWmiAutoParsedObjectPath ParsedPath(const COrlWmiNamedValue& reference)
{
    COrlWmiAutoParsedObjectPath path;
    path.Parse(reference.Text().c_str());
    return path;
}

// What the exceptions of an association carry.
struct AssociationFailures
{
    const wchar_t* agentText; // when the agent refuses; tools know all of them under the adapter agent's name
    const wchar_t* sourceName;
    int pathLine; // of a path without both keys
    int agentLine;
};

// What most associations have in common. A get is answered with all associations of the adapter that its Antecedent
// names unless the class has a filter of its own; the framework's caller compares the keys.
template <typename RecordType>
struct AssociationDefaults
{
    using Record = RecordType;

    struct Filter
    {
    };
    static Filter Everything() { return {}; }
    // From the two keys of a path, of which the Antecedent is parsed already. A key that one of them lacks throws.
    static Filter FromKeys(const CZarn_Fcoe&, COrlWmiAutoParsedObjectPath& /*antecedent*/,
                           const COrlWmiNamedValue& /*dependent*/, CWomContext&)
    {
        return {};
    }
    static bool Admits(const Filter&, const Record&) { return true; }
};

template <typename Class>
class CZarn_AssociationClass : public CZarn_Fcoe
{
public:
    using Record = typename Class::Record;
    using Filter = typename Class::Filter;

    explicit CZarn_AssociationClass(COrlFcoeAgentIntf* agent) : CZarn_Fcoe(agent)
    {
        static constexpr auto name = Class::Manager + FixedText(L"::") + Class::Manager;
        const COrlTraceScope scope(name.text);
    }
    ~CZarn_AssociationClass() override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::~") + Class::Manager;
        const COrlTraceScope scope(name.text);
    }

    const wchar_t* GetCimClassName() override { return Class::CimClass.text; }

    HRESULT GetObjectAsync(COrlWmiAutoParsedObjectPath& path, CWomContext& context,
                           CComPtr<IWbemObjectSink> sink) override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::GetObjectAsync");
        const COrlTraceScope scope(name.text);
        constexpr orl::SourceLine pathSource{Class::Failures.sourceName, Class::Failures.pathLine};
        const COrlWmiNamedValue& antecedentKey = orl::RequireKey(path, L"Antecedent", context, pathSource);
        const COrlWmiNamedValue& dependentKey = orl::RequireKey(path, L"Dependent", context, pathSource);
        COrlWmiAutoParsedObjectPath antecedent = ParsedPath(antecedentKey);
        const COrlString deviceId = GetDeviceIdFromPath(antecedent, context);
        const Filter filter = Class::FromKeys(*this, antecedent, dependentKey, context);
        return AskAndSend(deviceId, filter, context, sink);
    }

    HRESULT CreateInstanceEnumAsync(CWomContext& context, CComPtr<IWbemObjectSink> sink) override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::CreateInstanceEnumAsync");
        const COrlTraceScope scope(name.text);
        return AskAndSend(COrlString(), Class::Everything(), context, sink);
    }

protected:
    // Asks for the records of the device id (empty: all HBAs) and sends those that the filter admits. What is thrown on
    // the way ends the request; instances that were sent before stay sent.
    HRESULT AskAndSend(const COrlString& deviceId, const Filter& filter, CWomContext& context,
                       CComPtr<IWbemObjectSink>& sink)
    {
        CWomClassObject classObject(context);
        classObject.CreateClass(CComBSTR(GetCimClassName()));
        CResult status = AgentStatus(context);
        std::vector<Record> records;
        if (!(Agent()->*Class::Enumerate)(deviceId, records, status))
            orl::RefuseEnumeration(context, Class::Failures.agentText,
                                   {Class::Failures.sourceName, Class::Failures.agentLine});
        for (const Record& record : records)
        {
            if (Class::Admits(filter, record))
                SendInstance(classObject, record, context, sink);
        }
        return WBEM_S_NO_ERROR;
    }

private:
    void SendInstance(CWomClassObject& classObject, const Record& record, CWomContext& context,
                      CComPtr<IWbemObjectSink>& sink)
    {
        static constexpr auto name = Class::Manager + FixedText(L"::SendInstance");
        const COrlTraceScope scope(name.text);
        CWomClassObject instance(context);
        instance.SpawnInstanceFromClass(classObject);
        instance.SetProperty(L"Antecedent", Class::Antecedent::Make(*this, context, record));
        instance.SetProperty(L"Dependent", Class::Dependent::Make(*this, context, record));
        instance.Indicate(sink);
    }
};

// An association whose queries are narrowed to the adapter of the Antecedent that they ask for.
template <typename Class>
class CZarn_QueriedAssociationClass : public CZarn_AssociationClass<Class>
{
public:
    using CZarn_AssociationClass<Class>::CZarn_AssociationClass;

    HRESULT ExecQueryAsync(CWomWQLParser& query, CWomContext& context, CComPtr<IWbemObjectSink> sink) override
    {
        static constexpr auto name = Class::Manager + FixedText(L"::ExecQueryAsync");
        const COrlTraceScope scope(name.text);
        if (query.Failed() || query.FailureCode() != 0)
        {
            g_OrlDebug.Print(L"Bad WQL - sending everything");
            return this->CreateInstanceEnumAsync(context, sink);
        }
        const COrlWmiNamedValue* restriction = query.GetAttributeRestriction(L"Antecedent");
        if (restriction == nullptr)
        {
            g_OrlDebug.Print(L"Must have ParentId for query to work type");
            return this->CreateInstanceEnumAsync(context, sink);
        }
        COrlWmiAutoParsedObjectPath antecedent = ParsedPath(*restriction);
        return this->AskAndSend(this->GetDeviceIdFromPath(antecedent, context), Class::Everything(), context, sink);
    }
};
