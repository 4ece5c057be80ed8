// Those who ask, change, leave and refuse. Each runs on a thread of its own and takes one step after the other.
#pragma once

#include "tests/stress/World.h"

#include <functional>
#include <string>

namespace orl::test
{

struct Actor
{
    std::string name;
    std::function<void(Dice& dice)> step;
};

// Reads whatever there is, waits for each answer and looks at every object from all sides.
Actor MakeReader(World& world, CComPtr<IWbemServices> services);
// Begins calls with sinks, and cancels them, or refuses what comes.
Actor MakeRefuser(World& world, CComPtr<IWbemServices> services);
// Begins enumerations and calls, and goes away.
Actor MakeDeserter(World& world, CComPtr<IWbemServices> services);

// What may be asked about: an object path, a class, a query. Most of them are there.
std::wstring SomePath(Dice& dice);
std::wstring SomeClass(Dice& dice);
std::wstring SomeQuery(Dice& dice);

} // namespace orl::test
