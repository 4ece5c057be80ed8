// What a client asked for, checked and ready to run.
#pragma once

#include "host/Call.h"
#include "host/Results.h"

#include <string>

namespace orl
{

class Host;
class Namespace;

// Where a request stands: the same for all that one IWbemServices makes.
struct RequestScope
{
    Host& host;
    const Namespace& nameSpace;
    CComPtr<IWbemContext> context; // handed to providers untouched; may be null
    LONG flags = 0;
};

// Errors that can be told from the request alone are thrown where it is made; the rest are its outcome. A request may
// be run several times, and in several threads at once.
class Request : public RefCounted
{
public:
    // Runs to the end on this thread: all objects, then the status.
    void Run(Call& call, ResultSink& results) noexcept;

    // The status with what an __ExtendedStatus tells about the request, as far as it does not know better.
    CallStatus Named(CallStatus status) const;

protected:
    Request(RequestScope scope, std::wstring operation, std::wstring parameter)
        : m_scope(std::move(scope)), m_operation(std::move(operation)), m_parameter(std::move(parameter))
    {
    }

    // May throw; the exception is the outcome.
    virtual CallStatus Answer(Call& call, ResultSink& results) = 0;

    const RequestScope& Scope() const noexcept { return m_scope; }

private:
    RequestScope m_scope;
    std::wstring m_operation;
    std::wstring m_parameter;
};

// Makes a request; a failure to make it gets the operation and the parameter too.
template <class Made, class... Arguments>
Ref<Request> MakeRequest(Arguments&&... arguments)
{
    return Ref<Request>(new Made(std::forward<Arguments>(arguments)...));
}

} // namespace orl
