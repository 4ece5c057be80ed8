// The end of the managers, where one list of exit handlers serves all libraries.

#include "framework/module/ModuleManagers.h"

namespace orl
{

void ReleaseManagersAtUnload() noexcept
{
    // Made after the implementors' own objects, so the end of the process destroys it before them; a library that is
    // unloaded earlier destroys it then.
    struct Releaser
    {
        ~Releaser() { TheModuleManagers().Release(); }
    };
    static const Releaser releaser;
}

} // namespace orl
