// What the states of a topology mean, in words.
#pragma once

#include "tools/orlwmi/topology/Topology.h"

#include <string>

namespace orl::client
{

// What is wrong with an adapter, for the people who look after it; empty when it is online, or when its state says it
// all.
[[nodiscard]] std::string ProblemOf(const Adapter& adapter);

// What a forwarder is to the adapter that sees it: "logged in through it: 2 ports", "standby, ...", "lost, ...".
[[nodiscard]] std::string UseOf(const Forwarder& forwarder, const Adapter& adapter);

// Where a port is logged in: the fabric and its forwarder, or that it is not.
[[nodiscard]] std::string LoginOf(const Port& port, const Adapter& adapter);

[[nodiscard]] const char* StateName(TargetState state);

// A number of bytes with one of the units B to EiB and at most one decimal: "64 MiB", "1.5 GiB". Any other text is
// given back as it is.
[[nodiscard]] std::string SizeText(const std::string& bytes);

} // namespace orl::client
