// FaultPlan: failures to order.

#include "agentlibs/inventory/Faults.h"

#include "agentlibs/BackendError.h"
#include "agentlibs/Text.h"

#include <chrono>
#include <thread>

namespace orl
{

void FaultPlan::Add(ObjectReader& in)
{
    Fault& fault = m_faults.emplace_back();

    std::vector<std::string_view> names = OperationNames();
    names.push_back("*");
    std::size_t name = 0;
    in.Choice("operation", name, names);
    in.Require("operation");
    if (name < OperationNames().size())
        fault.operation = static_cast<Operation>(name);

    COrlString deviceId;
    in.Text("deviceId", deviceId);
    fault.deviceId = FoldCase(deviceId);
    in.Number("call", fault.call, 1);

    std::size_t effect = 0;
    in.Choice("effect", effect, {"fail", "throw", "wait"});
    in.Require("effect");
    fault.effect = static_cast<Effect>(effect);
    if (fault.effect == Effect::Wait)
    {
        in.Number("milliseconds", fault.milliseconds, 0, MaxWaitMilliseconds);
        in.Require("milliseconds");
        return;
    }
    fault.text = L"the inventory's faults ask for it";
    in.Text("text", fault.text);
    if (fault.effect == Effect::Fail)
        in.Number("code", fault.code, 1);
}

void FaultPlan::Apply(Operation operation, const COrlString& deviceId) const
{
    if (m_faults.empty())
        return;
    const std::wstring asked = FoldCase(deviceId);
    for (const Fault& fault : m_faults)
    {
        if (fault.operation && *fault.operation != operation)
            continue;
        if (!fault.deviceId.empty() && fault.deviceId != asked)
            continue;
        const ULONG number = ++fault.calls;
        if (fault.call == 0 || fault.call == number)
            Carry(fault);
    }
}

void FaultPlan::Carry(const Fault& fault)
{
    switch (fault.effect)
    {
    case Effect::Wait:
        std::this_thread::sleep_for(std::chrono::milliseconds(fault.milliseconds));
        return;
    case Effect::Fail:
        throw BackendError(fault.code, fault.text);
    case Effect::Throw:
        throw FaultException(Narrow(fault.text));
    }
}

} // namespace orl
