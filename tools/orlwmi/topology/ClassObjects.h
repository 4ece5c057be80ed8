// The objects of a class that a namespace may lack.
#pragma once

#include "tools/orlwmi/Results.h"
#include "tools/orlwmi/Session.h"

#include <functional>

namespace orl::client
{

// Hands on each object of the result that `ask` asks for. A class that the namespace lacks has no objects; every other
// failure is thrown.
void ForEachObject(const std::function<Results()>& ask, Session& session,
                   const std::function<void(IWbemClassObject*)>& visit);

} // namespace orl::client
