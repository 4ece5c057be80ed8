// Where the Microsoft C runtime declares _filelength.
#pragma once

#include "winport/crt.h"
