// All of the WMI interfaces.
#pragma once

#include <wbemcli.h>
#include <wbemprov.h>
