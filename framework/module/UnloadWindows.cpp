// The end of the managers, where every library has its own exit handlers.

#include "framework/module/ModuleManagers.h"

namespace orl
{

void ReleaseManagersAtUnload() noexcept {} // DllMain does it

} // namespace orl

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds)
{
    // When the process ends, the implementors have been ended before this library: their managers can no longer run.
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr)
        orl::TheModuleManagers().Release();
    return TRUE;
}
