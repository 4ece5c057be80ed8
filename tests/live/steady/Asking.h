// Asking the machine's WMI service for whatever it has.
#pragma once

#include "tests/live/steady/Report.h"

#include "com/OrlAtl.h"
#include <wbemidl.h>

#include <string>
#include <vector>

namespace orl::test
{

class Asking
{
public:
    explicit Asking(Report& report) : m_report(report) {}

    // Connects to root\KESTA and finds the classes that a provider answers for. False when that fails, with the reason
    // in the report.
    [[nodiscard]] bool Begin();
    // Enumerates each of the classes. A call that is never answered keeps it for ever.
    void Round();

private:
    void Enumerate(const std::wstring& className);
    void Look(IWbemClassObject& object);

    Report& m_report;
    CComPtr<IWbemServices> m_services;
    std::vector<std::wstring> m_classes;
};

} // namespace orl::test
