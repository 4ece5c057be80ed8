// Two views of a topology: the tree that people read, and the record that programs do.
#pragma once

#include "tools/orlwmi/Record.h"
#include "tools/orlwmi/Tree.h"
#include "tools/orlwmi/topology/Topology.h"

namespace orl::client
{

[[nodiscard]] TreeNode TreeOf(const Adapter& adapter);

// Properties by the names that the classes have for them, with the lists VLANs, Fabrics (with Forwarders) and Ports
// (with Targets, with LUNs). Names are raw, numbers numbers.
[[nodiscard]] Record RecordOf(const Adapter& adapter);

} // namespace orl::client
