// What the adapter agent tells users about changes of settings.
#pragma once

#include "agent/WarningMessageObj.h"
#include "agentlibs/BackendError.h"

#include <string>
#include <vector>

namespace orl
{

// Numbers of texts in the common resource library; the comments say what is inserted.
enum class SettingMessage : ULONG
{
    MtuTooSmall = 3001,       // adapter, MTU
    OutOfRange = 3002,        // setting, value, lowest, highest
    NotAStep = 3003,          // setting, value, lowest, step
    UnknownChoice = 3004,     // setting, value, all choices
    UnknownSetting = 3005,    // setting, adapter
    ControllerEnabled = 3006, // setting, adapter
    KernelRefused = 3007,     // setting, adapter, reason
    WhenEnabledAgain = 3008,  // setting, adapter
    ReadOnly = 3009,          // setting, adapter
    NoNumber = 3010,          // setting, text
    ReadsOtherwise = 3011     // setting, adapter, value, what it reads
};

// The text with the inserts in place of its "%s", in their order. Where the library or the text is missing, the
// message's number and the inserts.
std::wstring TextOf(SettingMessage message, const std::vector<std::wstring>& inserts);

// About a change that is possible, or was made, and has a drawback.
WarningMessageObj Advice(SettingMessage message, const std::vector<std::wstring>& inserts);

// A value that a setting cannot have, or cannot have now. Asking whether it can is no failure and answers the text.
class SettingRefusal : public BackendError
{
public:
    SettingRefusal(ULONG code, SettingMessage message, const std::vector<std::wstring>& inserts)
        : BackendError(code, TextOf(message, inserts)), m_message(message)
    {
    }

    WarningMessageObj Warning() const
    {
        return {WarningMessageObj::KindError, static_cast<ULONG>(m_message), Text().c_str()};
    }

private:
    SettingMessage m_message;
};

} // namespace orl
