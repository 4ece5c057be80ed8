// Clients that go before their answer has come: they cancel, refuse, or just let go.
#include "tests/stress/Actors.h"

#include <stdexcept>
#include <thread>

namespace orl::test
{
namespace
{

void Pause(Dice& dice, std::uint64_t longestMicroseconds)
{
    std::this_thread::sleep_for(std::chrono::microseconds(dice.Below(longestMicroseconds)));
}

// How a client treats the objects that come.
void SetManner(World& world, const CComPtr<IWbemServices>& services, CountingSink& sink, Dice& dice)
{
    const std::size_t limit = 1 + dice.Below(30);
    CountingSink* const self = &sink;
    switch (dice.Below(5))
    {
    case 0:
        sink.onObject = [limit](std::size_t number) { return number < limit ? WBEM_S_NO_ERROR : E_ABORT; };
        world.ledger.Add(Ledger::Refusing);
        return;
    case 1:
        sink.onObject = [limit](std::size_t number) -> HRESULT
        {
            if (number == limit)
                throw std::runtime_error("a client that is out of order");
            return WBEM_S_NO_ERROR;
        };
        world.ledger.Add(Ledger::Refusing);
        return;
    case 2:
        // The sink holds the connection that holds the sink; Check ends that.
        sink.onObject = [limit, self, services](std::size_t number)
        { return number == limit ? services->CancelAsyncCall(self) : HRESULT{WBEM_S_NO_ERROR}; };
        world.ledger.Add(Ledger::Cancelled);
        return;
    case 3:
        sink.onObject = [limit](std::size_t number)
        {
            if (number == limit)
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            return HRESULT{WBEM_S_NO_ERROR};
        };
        return;
    default:
        return;
    }
}

HRESULT Send(Ledger& ledger, IWbemServices& services, IWbemObjectSink* sink, Dice& dice)
{
    switch (dice.Below(5))
    {
    case 0:
    {
        const CComBSTR path(SomePath(dice).c_str());
        return Ask(ledger, [&] { return services.GetObjectAsync(path, 0, nullptr, sink); });
    }
    case 1:
    {
        const CComBSTR className(SomeClass(dice).c_str());
        return Ask(ledger, [&] { return services.CreateInstanceEnumAsync(className, 0, nullptr, sink); });
    }
    case 2:
    {
        const CComBSTR path(HbaPath(L"sim0").c_str());
        const CComBSTR method(dice.OneIn(2) ? L"GenerateVirtualPortWWPN" : L"RefreshTargets");
        return Ask(ledger, [&] { return services.ExecMethodAsync(path, method, 0, nullptr, nullptr, sink); });
    }
    default:
    {
        const CComBSTR query(SomeQuery(dice).c_str());
        const CComBSTR language(L"WQL");
        return Ask(ledger, [&] { return services.ExecQueryAsync(language, query, 0, nullptr, sink); });
    }
    }
}

void Refuse(World& world, const CComPtr<IWbemServices>& services, Dice& dice)
{
    const CComPtr<CountingSink> sink = world.MakeSink();
    SetManner(world, services, *sink, dice);
    if (FAILED(Send(world.ledger, *services, sink, dice)))
        return;
    sink->Accepted();
    world.ledger.Add(Ledger::AsyncCalls);
    if (dice.OneIn(2))
    {
        Pause(dice, 5000);
        world.ledger.Add(Ledger::Cancelled);
        const HRESULT cancelled = Ask(world.ledger, [&] { return services->CancelAsyncCall(sink); });
        if (cancelled == WBEM_S_NO_ERROR || dice.OneIn(2))
            sink->Await();
        return; // some look for other work at once, also those whose call had ended before
    }
    sink->Await();
}

void LeaveEnumeration(World& world, IEnumWbemClassObject& objects, Dice& dice)
{
    Ledger& ledger = world.ledger;
    for (std::uint64_t steps = dice.Below(6); steps > 0; --steps)
    {
        const LONG patience = static_cast<LONG>(dice.Below(10));
        switch (dice.Below(8))
        {
        case 0:
            Ask(ledger, [&] { return objects.Reset(); });
            break;
        case 1:
            Ask(ledger, [&] { return objects.Skip(patience, 1 + static_cast<ULONG>(dice.Below(20))); });
            break;
        case 2:
        {
            CComPtr<IEnumWbemClassObject> copy;
            Ask(ledger, [&] { return objects.Clone(&copy); });
            if (copy)
                LeaveEnumeration(world, *copy, dice);
            break;
        }
        case 3:
        {
            const CComPtr<CountingSink> sink = world.MakeSink();
            if (SUCCEEDED(Ask(ledger, [&] { return objects.NextAsync(1 + static_cast<ULONG>(dice.Below(9)), sink); })))
                sink->Accepted();
            break;
        }
        default:
        {
            CComPtr<IWbemClassObject> object;
            ULONG returned = 0;
            Ask(ledger, [&] { return objects.Next(patience, 1, &object, &returned); });
            break;
        }
        }
    }
    ledger.Add(Ledger::Abandoned);
}

void Desert(World& world, IWbemServices& services, Dice& dice)
{
    Ledger& ledger = world.ledger;
    constexpr LONG Streaming = WBEM_FLAG_RETURN_IMMEDIATELY | WBEM_FLAG_FORWARD_ONLY;
    if (dice.OneIn(4))
    {
        const CComBSTR path(SomePath(dice).c_str());
        CComPtr<IWbemCallResult> result;
        Ask(ledger, [&] { return services.GetObject(path, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, nullptr, &result); });
        Pause(dice, 500);
        ledger.Add(Ledger::Abandoned);
        return;
    }
    CComPtr<IEnumWbemClassObject> objects;
    const CComBSTR language(L"WQL");
    const CComBSTR text((dice.OneIn(2) ? SomeClass(dice) : SomeQuery(dice)).c_str());
    const bool isQuery = std::wstring_view(text.m_str).find(L' ') != std::wstring_view::npos;
    Ask(ledger,
        [&]
        {
            return isQuery ? services.ExecQuery(language, text, Streaming, nullptr, &objects)
                           : services.CreateInstanceEnum(text, Streaming, nullptr, &objects);
        });
    if (objects)
        LeaveEnumeration(world, *objects, dice);
}

} // namespace

Actor MakeRefuser(World& world, CComPtr<IWbemServices> services)
{
    return {"refuser", [&world, services](Dice& dice) { Refuse(world, services, dice); }};
}

Actor MakeDeserter(World& world, CComPtr<IWbemServices> services)
{
    return {"deserter", [&world, services](Dice& dice) { Desert(world, *services, dice); }};
}

} // namespace orl::test
