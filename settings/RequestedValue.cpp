// Which new value a client asked for.

#include "settings/RequestedValue.h"

#include "Common/Src/OrlDebug.h"

namespace orl
{

namespace
{

constexpr const wchar_t* NumberProperties[] = {L"CurrentValue", L"RegistryValue"};
constexpr wchar_t TextProperty[] = L"DisplayValue";

// What the client's wishes came to so far.
struct Wishes
{
    LONG workingValue = 0;
    COrlString workingText;
    int changes = 0;
    bool conflict = false;
    bool nothingSupplied = true;
};

void TakeNumber(LONG number, const KnownSetting& known, Wishes& wishes, ORL_SETTING_VAL_INT& value)
{
    wishes.nothingSupplied = false;
    wishes.workingValue = number;
    if (known.setting == nullptr || number == known.currentValue)
        return;
    if (wishes.changes > 0 && number != value.Value)
        wishes.conflict = true;
    ++wishes.changes;
    value.Value = number;
}

void ReadNumbers(const CWomClassObject& source, const KnownSetting& known, bool firstOnly, Wishes& wishes,
                 ORL_SETTING_VAL_INT& value)
{
    for (const wchar_t* property : NumberProperties)
    {
        LONGLONG number = 0;
        bool isNull = false;
        // The properties are wider than a setting's value, whose 32 bits are what counts.
        if (SUCCEEDED(source.GetPropertySint64(property, number, isNull)) && !isNull)
            TakeNumber(static_cast<LONG>(static_cast<ULONG>(number)), known, wishes, value);
        if (firstOnly)
            return;
    }
}

void TakeText(const KnownSetting& known, const ValueRules& rules, Wishes& wishes, ORL_SETTING_VAL_INT& value)
{
    if (known.setting == nullptr)
        return;
    if (rules.numberOfText != nullptr && rules.numberOfText(*known.setting, wishes.workingText, value.Value))
    {
        if (value.Value != known.currentValue)
            ++wishes.changes;
    }
    else if (wishes.workingText != *known.currentText)
    {
        value.DisplayValue = wishes.workingText;
        known.setting->ApplyDisplayValue(&value);
        ++wishes.changes;
    }
}

void ReadText(const CWomClassObject& source, const KnownSetting& known, const ValueRules& rules, Wishes& wishes,
              ORL_SETTING_VAL_INT& value)
{
    if (rules.numberIsItsText)
        wishes.workingText = std::to_wstring(wishes.workingValue);
    CComBSTR text;
    if (FAILED(source.GetProperty(TextProperty, text)) || text.m_str == nullptr)
        return;
    wishes.nothingSupplied = false;
    wishes.workingText = COrlString(static_cast<const wchar_t*>(text.m_str));
    TakeText(known, rules, wishes, value);
}

} // namespace

HRESULT ReadRequestedValue(const CWomClassObject& source, const KnownSetting& known, const ValueRules& rules,
                           int displayUnsupported, ORL_SETTING_VAL_INT& value)
{
    HRESULT status = WBEM_S_NO_ERROR;
    Wishes wishes;
    wishes.workingValue = known.currentValue;
    ReadNumbers(source, known, displayUnsupported != 0, wishes, value);
    if (displayUnsupported == 0)
    {
        ReadText(source, known, rules, wishes, value);
        if (wishes.conflict || wishes.nothingSupplied)
        {
            // One text for both; tools know it.
            g_OrlDebug.Print(L"ERROR:  Detected multiple changed fields - unable to continue.");
            status = static_cast<HRESULT>(WBEM_E_FAILED);
        }
    }
    if (wishes.changes == 0)
    {
        value.Value = wishes.workingValue;
        value.DisplayValue = wishes.workingText;
    }
    if (displayUnsupported != 0)
        value.DisplayValue = ORL_SETTING_VAL_INT::NoDisplayValue;
    return status;
}

} // namespace orl
