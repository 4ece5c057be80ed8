// The schema of the device classes and of the associations, held against what the managers send.

#include "tests/provider/DeviceCases.h"
#include "tests/provider/Schema.h"

#include "assoc/Zarn_AdapterToHBAAssoc.h"
#include "assoc/Zarn_FabricToPortAssoc.h"
#include "assoc/Zarn_HBAToFabricAssoc.h"
#include "assoc/Zarn_HBAToLunAssoc.h"
#include "assoc/Zarn_HBAToStatisticsAssoc.h"
#include "assoc/Zarn_HBAToVLANAssoc.h"
#include "assoc/Zarn_PortToTargetAssoc.h"
#include "wbem/ObjectPath.h"

#include <map>
#include <set>

namespace orl::test
{
namespace
{

using ::testing::UnorderedElementsAreArray;

struct SchemaCase
{
    std::wstring cimClass; // that the manager is registered for
    std::unique_ptr<CWomClassManagerRoot> manager;
};

template <typename Manager>
SchemaCase LinkOf(const wchar_t* cimClass, COrlFcoeAgentIntf& agent)
{
    return {cimClass, std::make_unique<Manager>(&agent)};
}

using KeyNames = std::vector<std::wstring>;

KeyNames NamesOf(const wbem::ObjectPath& path)
{
    KeyNames names;
    for (const wbem::PathKey& key : path.keys)
        names.push_back(key.name);
    return names;
}

std::set<std::wstring> References(const wbem::MofClass& schema)
{
    std::set<std::wstring> names;
    for (const wbem::MofProperty& property : schema.properties)
    {
        if (property.type.type == wbem::CimType::Reference)
            names.insert(property.name);
    }
    return names;
}

class DeviceSchema : public ManagerTest
{
protected:
    DeviceSchema()
    {
        for (const DeviceCase& c : DeviceCases())
        {
            c.add(agent, L"X");
            cases.push_back({c.cimClass, c.make(&agent)});
        }
        cases.push_back(LinkOf<CZarn_AdapterToHBAAssocMgr>(L"Zarn_FCoE_Adapter_HBA_Assoc", agent));
        cases.push_back(LinkOf<CZarn_FabricToPortAssocMgr>(L"Zarn_FCoE_Fabric_Port_Assoc", agent));
        cases.push_back(LinkOf<CZarn_HBAToFabricAssocMgr>(L"Zarn_FCoE_HBA_Fabric_Assoc", agent));
        cases.push_back(LinkOf<CZarn_HBAToLUNAssocMgr>(L"Zarn_FCoE_HBA_LUN_Assoc", agent));
        cases.push_back(LinkOf<CZarn_HbaToStatsAssocMgr>(L"Zarn_FCoE_HBA_Statistics_Assoc", agent));
        cases.push_back(LinkOf<CZarn_HBAToVLANAssocMgr>(L"Zarn_FCoE_HBA_VLAN_Assoc", agent));
        cases.push_back(LinkOf<CZarn_PortToTargetAssocMgr>(L"Zarn_FCoE_Port_Target_Assoc", agent));
        for (const SchemaCase& c : cases)
            services->Add(MakeFakeClass(c.cimClass));
    }

    // Each property that the manager sends, once, with its type.
    std::set<std::pair<std::wstring, VARTYPE>> SentBy(CWomClassManagerRoot& manager)
    {
        std::set<std::pair<std::wstring, VARTYPE>> sent;
        for (const std::vector<FakePut>& instance : Enumerate(manager).instances)
        {
            for (const FakePut& put : instance)
                sent.emplace(put.name, put.type);
        }
        return sent;
    }

    // The key names of each path that the managers send in references, by the path's class.
    std::map<std::wstring, std::set<KeyNames>> KeysOfSentPaths()
    {
        std::map<std::wstring, std::set<KeyNames>> keys;
        for (const SchemaCase& c : cases)
        {
            const std::set<std::wstring> references = References(Schema(c.cimClass));
            for (const std::vector<FakePut>& instance : Enumerate(*c.manager).instances)
            {
                for (const FakePut& put : instance)
                {
                    if (references.count(put.name) == 0)
                        continue;
                    const auto path = wbem::ObjectPath::Parse(put.value);
                    if (path)
                        keys[path->className].insert(NamesOf(*path));
                    else
                        ADD_FAILURE() << Narrow(put.value) << " is no path";
                }
            }
        }
        return keys;
    }

    std::vector<SchemaCase> cases;
};

TEST_F(DeviceSchema, DeclaresWhatTheManagersSendWithItsTypeAndNothingElse)
{
    for (const SchemaCase& c : cases)
    {
        SCOPED_TRACE(Narrow(c.cimClass));
        const auto sent = SentBy(*c.manager);
        ASSERT_FALSE(sent.empty());
        std::vector<std::pair<std::wstring, VARTYPE>> declared;
        for (const wbem::MofProperty& property : Schema(c.cimClass).properties)
            declared.emplace_back(property.name, Travels(property.type));
        EXPECT_THAT(declared, UnorderedElementsAreArray(sent));
    }
}

TEST_F(DeviceSchema, KeysAreThoseOfThePathsThatReferencesSend)
{
    // With the keys that only the Ethernet adapter's class has.
    omitSystemKeys = 0;
    std::vector<std::wstring> classes;
    for (const auto& [cimClass, written] : KeysOfSentPaths())
    {
        SCOPED_TRACE(Narrow(cimClass));
        classes.push_back(cimClass);
        ASSERT_EQ(written.size(), 1U);
        KeyNames keys = Keys(Schema(cimClass));
        // A target is known by its node; what refers to one names it by its port.
        if (cimClass == L"Zarn_FcoeTarget")
        {
            EXPECT_EQ(keys, (KeyNames{L"DeviceID", L"WorldWideNodeName"}));
            keys[1] = L"WorldWidePortName";
        }
        EXPECT_THAT(*written.begin(), UnorderedElementsAreArray(keys));
    }
    EXPECT_THAT(classes, UnorderedElementsAreArray({L"Zarn_FCOEHBA", L"Zarn_FCoEFabric", L"Zarn_FCoEPort",
                                                    L"Zarn_FCoEStatistics", L"Zarn_FCoeLUN", L"Zarn_FCoeVLAN",
                                                    L"Zarn_FcoeTarget", L"Zarn_PhysicalEthernetAdapter"}));
}

TEST_F(DeviceSchema, KeysAreThoseThatAGetReads)
{
    for (const DeviceCase& c : DeviceCases())
    {
        SCOPED_TRACE(c.name);
        const KeyNames expected = c.key.empty() ? KeyNames{L"DeviceID"} : KeyNames{L"DeviceID", c.key};
        EXPECT_THAT(Keys(Schema(c.cimClass)), UnorderedElementsAreArray(expected));
        EXPECT_EQ(Get(*c.make(&agent), c.Path().c_str()).instances.size(), 1U);
    }
}

// The fake is what the framework's own tests make messages of: it takes no property that it does not declare.
TEST_F(DeviceSchema, AMessageIsDeclaredAsItIsPutTogether)
{
    std::vector<std::pair<std::wstring, CIMTYPE>> declared;
    for (const wbem::MofProperty& property : Schema(L"Zarn_WarningMessage").properties)
        declared.emplace_back(property.name, property.type.type == wbem::CimType::String ? CIM_STRING : CIM_UINT32);
    EXPECT_EQ(declared, FakeWarningMessage()->properties);
}

} // namespace
} // namespace orl::test
