// Both agents of an inventory, with mischief between them and the provider.
#pragma once

#include "agent/OrlAdapterAgent.h"
#include "agent/OrlFcoeAgentIntf.h"
#include "tests/stress/Garbage.h"
#include "tests/stress/Mischief.h"

namespace orl::test
{

// What an action that fails tells, as any agent does: the provider knows of no other way.
inline void TellRefusal(std::vector<WarningMessageObj>& warnings)
{
    warnings.push_back({WarningMessageObj::KindError, 0, L"the agent does not feel like it"});
}

class MischievousAgent final : public COrlFcoeAgentIntf
{
public:
    MischievousAgent(COrlFcoeAgentIntf& honest, Mischief& mischief, Ledger& ledger)
        : m_honest(honest), m_mischief(mischief), m_ledger(ledger)
    {
    }

    bool EnumerateHBAs(const COrlString& id, std::vector<ORL_FCOE_HBA>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumerateHBAs, id, list, status);
    }
    bool EnumerateFabrics(const COrlString& id, std::vector<ORL_FCOE_FABRIC>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumerateFabrics, id, list, status);
    }
    bool EnumeratePorts(const COrlString& id, std::vector<ORL_FCOE_PORT>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumeratePorts, id, list, status);
    }
    bool EnumerateTargets(const COrlString& id, std::vector<ORL_FCOE_TARGET>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumerateTargets, id, list, status);
    }
    bool EnumerateVLANs(const COrlString& id, std::vector<ORL_FCOE_VLAN>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumerateVLANs, id, list, status);
    }
    bool EnumerateLUNs(const COrlString& id, std::vector<ORL_FCOE_LUN>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumerateLUNs, id, list, status);
    }
    bool EnumerateStatistics(const COrlString& id, std::vector<ORL_FCOE_STATISTIC>& list, CResult& status) override
    {
        return Enumerate(&COrlFcoeAgentIntf::EnumerateStatistics, id, list, status);
    }

    bool Uninstall(CResult& status) override
    {
        status.ulErrCode = 1; // it would take the ports of all clients along
        return false;
    }
    bool CreateVirtualPort(const COrlString& id, COrlString& name, std::vector<WarningMessageObj>& told,
                           CResult& status) override
    {
        return Act(told, [&] { return m_honest.CreateVirtualPort(id, name, told, status); });
    }
    bool DeleteVirtualPort(const COrlString& id, const COrlString& name, std::vector<WarningMessageObj>& told,
                           CResult& status) override
    {
        return Act(told, [&] { return m_honest.DeleteVirtualPort(id, name, told, status); });
    }
    bool GenerateVirtualPortWWPN(const COrlString& id, COrlString& name, std::vector<WarningMessageObj>& told,
                                 CResult& status) override
    {
        return Act(told, [&] { return m_honest.GenerateVirtualPortWWPN(id, name, told, status); });
    }
    bool RefreshTargets(const COrlString& id, CResult& status) override
    {
        Mischief::Turn turn = m_mischief.Next();
        return !turn.Fails() && m_honest.RefreshTargets(id, status);
    }

private:
    template <typename Record>
    using Operation = bool (COrlFcoeAgentIntf::*)(const COrlString&, std::vector<Record>&, CResult&);

    template <typename Record>
    bool Enumerate(Operation<Record> operation, const COrlString& id, std::vector<Record>& list, CResult& status)
    {
        Mischief::Turn turn = m_mischief.Next();
        if (turn.Fails())
        {
            status.ulErrCode = 5;
            return false;
        }
        const bool answer = (m_honest.*operation)(id, list, status);
        if (turn.IsGarbage())
            Spoil(list, turn.Chance(), m_ledger);
        return answer;
    }

    // An action that fails late is done all the same.
    template <typename Action>
    bool Act(std::vector<WarningMessageObj>& told, Action action)
    {
        Mischief::Turn turn = m_mischief.Next();
        const bool isDoneFirst = turn.FailsAfterwards() && action();
        if (turn.Fails())
        {
            TellRefusal(told);
            return false;
        }
        const bool answer = isDoneFirst || action();
        if (turn.IsGarbage())
            told.push_back({2, 0xFFFFFFFF, GarbageText(turn.Chance(), m_ledger)});
        return answer;
    }

    COrlFcoeAgentIntf& m_honest;
    Mischief& m_mischief;
    Ledger& m_ledger;
};

class MischievousAdapterAgent final : public OrlAdapterAgent
{
public:
    MischievousAdapterAgent(OrlAdapterAgent& honest, Mischief& mischief, Ledger& ledger)
        : m_honest(honest), m_mischief(mischief), m_ledger(ledger)
    {
    }

    CResult GetSetting(const COrlString& id, const COrlString& name, ORL_SETTING*& setting, CResult& status) override
    {
        Mischief::Turn turn = m_mischief.Next();
        setting = nullptr;
        if (turn.Fails())
            return Failed;
        const CResult answer = m_honest.GetSetting(id, name, setting, status);
        if (turn.IsGarbage() && setting != nullptr)
            SpoilOrDelete(setting, turn);
        return answer;
    }
    CResult SetSetting(const COrlString& id, const COrlString& name, ORL_SETTING_VAL_INT* value,
                       CResult& status) override
    {
        return Act([&] { return m_honest.SetSetting(id, name, value, status); });
    }
    CResult SetSettingToDefault(const COrlString& id, const COrlString& name, CResult& status) override
    {
        return Act([&] { return m_honest.SetSettingToDefault(id, name, status); });
    }
    CResult GetAdapter(const COrlString& id, ORL_ADAPTER& adapter, CResult& status, bool reserved) override
    {
        Mischief::Turn turn = m_mischief.Next();
        if (turn.Fails())
            return Failed;
        const CResult answer = m_honest.GetAdapter(id, adapter, status, reserved);
        if (turn.IsGarbage())
            adapter.Name = GarbageText(turn.Chance(), m_ledger);
        return answer;
    }
    CResult ValidateSettingModification(const COrlString& id, const COrlString& name, ORL_SETTING_VAL_INT* value,
                                        std::vector<WarningMessageObj>& told, CResult& status, ULONG set) override
    {
        return Act([&] { return m_honest.ValidateSettingModification(id, name, value, told, status, set); });
    }
    CResult EnumerateSettings(const COrlString& id, COrlPointerArray<ORL_SETTING*>& list, CResult& status) override
    {
        Mischief::Turn turn = m_mischief.Next();
        if (turn.Fails())
            return Failed;
        const CResult answer = m_honest.EnumerateSettings(id, list, status);
        if (turn.IsGarbage())
        {
            for (ORL_SETTING* setting : list)
                Spoil(*setting, turn.Chance(), m_ledger);
            list.Add(nullptr);
        }
        return answer;
    }

private:
    static constexpr CResult Failed{5, 0};

    // What cannot be spoilt for want of memory is not handed out.
    void SpoilOrDelete(ORL_SETTING*& setting, Mischief::Turn& turn)
    {
        std::unique_ptr<ORL_SETTING> own(setting);
        setting = nullptr;
        Spoil(*own, turn.Chance(), m_ledger);
        setting = own.release();
    }

    template <typename Action>
    CResult Act(Action action)
    {
        Mischief::Turn turn = m_mischief.Next();
        CResult answer{};
        const bool isDoneFirst = turn.FailsAfterwards();
        if (isDoneFirst)
            answer = action();
        if (turn.Fails())
            return Failed;
        return isDoneFirst ? answer : action();
    }

    OrlAdapterAgent& m_honest;
    Mischief& m_mischief;
    Ledger& m_ledger;
};

} // namespace orl::test
