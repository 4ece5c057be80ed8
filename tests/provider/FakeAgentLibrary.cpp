// An agent library that holds nothing but a factory: its name and what it answers come from the build.

#include <windows.h>

extern "C" __declspec(dllexport) void* ORL_FAKE_FACTORY();

void* ORL_FAKE_FACTORY()
{
    static int agent = 0;
    return ORL_FAKE_FACTORY_ANSWERS ? &agent : nullptr;
}
