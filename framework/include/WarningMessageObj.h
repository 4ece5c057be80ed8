// WarningMessageObj: a message beside a method's return value. CWomClassObject publishes it as an embedded instance of
// Zarn_WarningMessage with the properties Kind, MessageID and Message.
#pragma once

#include "agent/WarningMessageObj.h"
