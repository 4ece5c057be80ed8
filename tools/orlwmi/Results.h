// Requests that yield objects, and waiting for them.
#pragma once

#include "tools/orlwmi/Deadline.h"
#include "tools/orlwmi/Output.h"
#include "tools/orlwmi/Wmi.h"

#include <array>
#include <optional>
#include <string>

namespace orl::client
{

// The object at a path: an instance, or a class for a path without key. Throws Failure.
[[nodiscard]] CComPtr<IWbemClassObject> GetObjectAt(IWbemServices* services, const std::string& path,
                                                    const Deadline& deadline);

// A result set, taken while it is still being made. Memory does not grow with its size.
class Results
{
public:
    // The requests. `what` of a later failure says what was attempted.
    static Results Instances(IWbemServices* services, const std::string& className);
    static Results Query(IWbemServices* services, const std::string& wql);
    static Results Classes(IWbemServices* services);

    Results(Results&& other) noexcept = default;
    Results& operator=(Results&&) = delete;
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;
    ~Results();

    // The next object, or null at the end. The output is flushed before a wait, so that what is there can be seen.
    // Throws Failure, after the last object that came before it.
    CComPtr<IWbemClassObject> Next(const Deadline& deadline, Output& output);

private:
    Results(CComPtr<IEnumWbemClassObject> enumerator, std::string what);

    void Fetch(const Deadline& deadline, Output& output);
    void Accept(HRESULT status);

    static constexpr ULONG BatchSize = 64;

    CComPtr<IEnumWbemClassObject> m_enumerator;
    std::string m_what;
    std::array<CComPtr<IWbemClassObject>, BatchSize> m_batch;
    ULONG m_count = 0;
    ULONG m_taken = 0;
    bool m_ended = false;
    bool m_givenUp = false;
    std::optional<Failure> m_failure;
};

} // namespace orl::client
