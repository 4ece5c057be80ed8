// CResult: the status record of the framework, which agents fill as well.
#pragma once

#include "agent/CResult.h"
