// ScriptedAgent: an FCoE agent that answers what a test wrote down and remembers how it was asked.
#pragma once

#include "agent/OrlFcoeAgentIntf.h"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

class ScriptedAgent final : public COrlFcoeAgentIntf
{
public:
    // What the enumerations fill in; a list is handed out for every device id, as the test wrote it, and also when the
    // answer is false: nobody looks at it then.
    std::vector<ORL_FCOE_HBA> hbas;
    std::vector<ORL_FCOE_FABRIC> fabrics;
    std::vector<ORL_FCOE_PORT> ports;
    std::vector<ORL_FCOE_TARGET> targets;
    std::vector<ORL_FCOE_VLAN> vlans;
    std::vector<ORL_FCOE_LUN> luns;
    std::vector<ORL_FCOE_STATISTIC> statistics;

    // What every operation answers.
    bool answer = true;
    // Runs inside every operation, after the call was noted: throw from here.
    std::function<void()> inside;

    // What the actions tell the user, and the name that they leave behind (unless empty).
    std::vector<WarningMessageObj> warnings;
    COrlString assignedName;

    // The calls in order, each as "Operation(device id[, name])".
    std::vector<std::wstring> calls;
    // The status record as the last call received it.
    CResult statusSeen{};

    bool EnumerateHBAs(const COrlString& id, std::vector<ORL_FCOE_HBA>& list, CResult& status) override
    {
        return Fill(L"EnumerateHBAs", id, hbas, list, status);
    }
    bool EnumerateFabrics(const COrlString& id, std::vector<ORL_FCOE_FABRIC>& list, CResult& status) override
    {
        return Fill(L"EnumerateFabrics", id, fabrics, list, status);
    }
    bool EnumeratePorts(const COrlString& id, std::vector<ORL_FCOE_PORT>& list, CResult& status) override
    {
        return Fill(L"EnumeratePorts", id, ports, list, status);
    }
    bool EnumerateTargets(const COrlString& id, std::vector<ORL_FCOE_TARGET>& list, CResult& status) override
    {
        return Fill(L"EnumerateTargets", id, targets, list, status);
    }
    bool EnumerateVLANs(const COrlString& id, std::vector<ORL_FCOE_VLAN>& list, CResult& status) override
    {
        return Fill(L"EnumerateVLANs", id, vlans, list, status);
    }
    bool EnumerateLUNs(const COrlString& id, std::vector<ORL_FCOE_LUN>& list, CResult& status) override
    {
        return Fill(L"EnumerateLUNs", id, luns, list, status);
    }
    bool EnumerateStatistics(const COrlString& id, std::vector<ORL_FCOE_STATISTIC>& list, CResult& status) override
    {
        return Fill(L"EnumerateStatistics", id, statistics, list, status);
    }

    bool Uninstall(CResult& status) override { return Act(L"Uninstall()", status); }
    bool CreateVirtualPort(const COrlString& id, COrlString& name, std::vector<WarningMessageObj>& told,
                           CResult& status) override
    {
        const std::wstring call = L"CreateVirtualPort(" + id + L", " + name + L")";
        if (!assignedName.IsEmpty())
            name = assignedName;
        told = warnings;
        return Act(call, status);
    }
    bool DeleteVirtualPort(const COrlString& id, const COrlString& name, std::vector<WarningMessageObj>& told,
                           CResult& status) override
    {
        told = warnings;
        return Act(L"DeleteVirtualPort(" + id + L", " + name + L")", status);
    }
    bool GenerateVirtualPortWWPN(const COrlString& id, COrlString& name, std::vector<WarningMessageObj>& told,
                                 CResult& status) override
    {
        name = assignedName;
        told = warnings;
        return Act(L"GenerateVirtualPortWWPN(" + id + L")", status);
    }
    bool RefreshTargets(const COrlString& id, CResult& status) override
    {
        return Act(L"RefreshTargets(" + id + L")", status);
    }

private:
    template <typename Record>
    bool Fill(const wchar_t* operation, const std::wstring& id, const std::vector<Record>& from,
              std::vector<Record>& list, CResult& status)
    {
        EXPECT_TRUE(list.empty()) << "the list is empty when it is handed to the agent";
        const bool filled = Act(std::wstring(operation) + L"(" + id + L")", status);
        list = from;
        return filled;
    }

    bool Act(const std::wstring& call, CResult& status)
    {
        {
            const std::lock_guard<std::mutex> hold(m_calls);
            calls.push_back(call);
            statusSeen = status;
        }
        // An agent may fill the record; nobody looks at it afterwards.
        status = {0xDEAD, 0xBEEF};
        if (inside)
            inside();
        return answer;
    }

    std::mutex m_calls;
};
