// The Win32 names that this system uses, on POSIX. Each header below says what it promises.
#pragma once

#include "winport/types.h"
#include "winport/errors.h"
#include "winport/crt.h"
#include "winport/system.h"
#include "winport/text.h"
#include "winport/registry.h"
#include "winport/library.h"
