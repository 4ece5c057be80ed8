// Which new value a client asked for: one algorithm for both kinds of setting.
#pragma once

#include "agent/OrlSettings.h"
#include "framework/include/CWomClassObject.h"

#include <string>

namespace orl
{

// What is known of the setting that the value is for. Without a setting nothing is, and no value counts as a change.
struct KnownSetting
{
    const ORL_SETTING* setting = nullptr;
    LONG currentValue = 0;
    const COrlString* currentText = nullptr;
};

// Where the kinds of setting differ.
struct ValueRules
{
    // The number that a text stands for by the provider's own knowledge: true when it knows the text. May be null.
    bool (*numberOfText)(const ORL_SETTING& setting, const COrlString& text, LONG& number);
    // Whether a number that comes without a text carries its digits as text.
    bool numberIsItsText;
};

// Reads CurrentValue, RegistryValue and DisplayValue of `source`, an instance to be written or a method's parameters;
// what cannot be read or is null is not supplied. `value` is new. With displayUnsupported not 0, CurrentValue alone is
// read, and nothing is refused.
//
// WBEM_E_FAILED when nothing was supplied or the two numbers are both new and differ; `value` is filled all the same. A
// new text counts for more than a new number, which is no conflict.
HRESULT ReadRequestedValue(const CWomClassObject& source, const KnownSetting& known, const ValueRules& rules,
                           int displayUnsupported, ORL_SETTING_VAL_INT& value);

} // namespace orl
