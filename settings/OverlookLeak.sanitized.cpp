// Tells the leak checker that comes with the address sanitizer.

#include "settings/LeftBehind.h"

#include <sanitizer/lsan_interface.h>

void orl::OverlookLeak(const void* memory) noexcept
{
    __lsan_ignore_object(memory);
}
