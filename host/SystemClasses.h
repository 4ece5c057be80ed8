// The classes that every namespace has without declaring them.
#pragma once

#include "wbem/Mof.h"

#include <vector>

namespace orl
{

// Registration classes, statuses and __NAMESPACE; superclasses first. Made once a process.
const std::vector<wbem::MofClass>& SystemClasses();

} // namespace orl
