// Completion: the one final SetStatus that every accepted request owes its client.
#pragma once

#include "com/OrlAtl.h"

#include <wbemcli.h>

namespace orl
{

// Made when a request is accepted, on the stack, before anything that can fail. Whatever way the request is left, the
// client hears its end once: what Finish says, or WBEM_E_FAILED when nobody came to say anything.
class Completion
{
public:
    explicit Completion(IWbemObjectSink* sink) noexcept : m_sink(sink) {}
    ~Completion() { Finish(WBEM_E_FAILED); }
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;

    // Only the first call counts.
    void Finish(HRESULT status, BSTR text = nullptr, IWbemClassObject* object = nullptr) noexcept;

private:
    CComPtr<IWbemObjectSink> m_sink; // null once the debt is paid
};

} // namespace orl
