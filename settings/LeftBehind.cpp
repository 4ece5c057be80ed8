// What the setting managers leave behind on purpose.

#include "settings/LeftBehind.h"

#include <new>

namespace orl
{

void FreeSettingValue(ORL_SETTING_VAL* value) noexcept
{
    if (value == nullptr)
        return;
    if (value->GetType() == ORL_SETTING::IntType)
        OverlookLeak(static_cast<const ORL_SETTING_VAL_INT*>(value)->DisplayValue.data());
    // `delete value` would be undefined, for the base's destructor is not virtual. The base's own is trivial, so giving
    // the storage back ends the object without it; no destructor of the text runs, which is what is wanted. The storage
    // begins where the whole object does.
    ::operator delete(dynamic_cast<void*>(value));
}

void LeaveSettingBehind(const ORL_SETTING* setting) noexcept
{
    if (setting != nullptr)
        OverlookLeak(dynamic_cast<const void*>(setting));
}

} // namespace orl
