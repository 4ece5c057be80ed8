// The seven device classes as their common tests know them: what each asks the agent and what it makes of a record.
#pragma once

#include "tests/provider/Fixture.h"

#include <memory>
#include <string>
#include <vector>

namespace orl::test
{

// What a case makes its manager by, and how it gives the agent one record more.
template <typename Manager>
std::unique_ptr<CWomClassManagerRoot> Make(COrlFcoeAgentIntf* agent)
{
    return std::make_unique<Manager>(agent);
}

template <auto List, auto Sample>
void Add(ScriptedAgent& agent, const wchar_t* deviceId)
{
    (agent.*List).push_back(Sample(deviceId));
}

struct DeviceCase
{
    std::string name;
    std::wstring cimClass;
    std::string manager; // as the trace names it
    std::wstring operation;
    std::unique_ptr<CWomClassManagerRoot> (*make)(COrlFcoeAgentIntf* agent);
    // Gives the agent one more record, of this adapter.
    void (*add)(ScriptedAgent& agent, const wchar_t* deviceId);
    // The keys behind DeviceID and their reader's name and line; none when there is but the one.
    std::wstring key;
    std::string keyReader;
    int keyLine = 0;
    std::wstring keyText; // the key of the record as a path writes it
    // All that is put for a record of the adapter X, in order.
    std::vector<FakePut> sent;
    // What is put although properties are suppressed.
    std::vector<FakePut> always;
    // The path builders that run, in order.
    std::vector<std::string> builders;
    // What the trace calls a record of adapter B that could not be sent.
    std::string failureName;
    bool enumerationLoadsClass = true;
    bool workerIsTraced = true;

    // The path of the record of adapter X.
    std::wstring Path() const;
};

const std::vector<DeviceCase>& DeviceCases();

// One record each, of this adapter.
ORL_FCOE_HBA SampleHba(const wchar_t* deviceId);
ORL_FCOE_FABRIC SampleFabric(const wchar_t* deviceId);
ORL_FCOE_PORT SamplePort(const wchar_t* deviceId);
ORL_FCOE_TARGET SampleTarget(const wchar_t* deviceId);
ORL_FCOE_LUN SampleLun(const wchar_t* deviceId);
ORL_FCOE_VLAN SampleVlan(const wchar_t* deviceId);
ORL_FCOE_STATISTIC SampleStatistic(const wchar_t* deviceId);

} // namespace orl::test
