// The WMI client interfaces and the owners of their references.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <wbemcli.h>

#include "com/OrlAtl.h"
