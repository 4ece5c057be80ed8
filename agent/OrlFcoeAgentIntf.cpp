// COrlFcoeAgentIntf: the members that every agent inherits.

#include "agent/OrlFcoeAgentIntf.h"

// Out of line on purpose: the provider exports them, and the class's table of operations is emitted once, beside them.
COrlFcoeAgentIntf::COrlFcoeAgentIntf() = default;
COrlFcoeAgentIntf::COrlFcoeAgentIntf(const COrlFcoeAgentIntf&) = default;
COrlFcoeAgentIntf& COrlFcoeAgentIntf::operator=(const COrlFcoeAgentIntf&) = default;
COrlFcoeAgentIntf::~COrlFcoeAgentIntf() = default;
