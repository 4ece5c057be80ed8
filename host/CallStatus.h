// How a call ended, and how that reaches a client.
#pragma once

#include "com/OrlCom.h"

#include <exception>
#include <string>
#include <utility>

namespace orl
{

// The status and, for a failure, what an __ExtendedStatus tells about it.
struct CallStatus
{
    HRESULT code = WBEM_S_NO_ERROR;
    std::wstring description; // the cause in a sentence that names the class, key or property
    std::wstring operation;   // GetObject, ExecQuery, ...
    std::wstring parameter;   // the path, the class, the query: what the operation was called with
    std::wstring provider;    // the provider that was asked, if one was
    // A provider's own __ExtendedStatus, handed on as it is.
    CComPtr<IWbemClassObject> object;
    // The path that a put ended with, where the provider told one.
    std::wstring text;

    bool Failed() const noexcept { return FAILED(code); }
};

// Ends a call early. Never leaves a COM method.
class CallFailure : public std::exception
{
public:
    CallFailure(HRESULT code, std::wstring description) : status{code, std::move(description), {}, {}, {}, {}, {}} {}
    // Of a provider.
    CallFailure(HRESULT code, std::wstring description, std::wstring provider)
        : status{code, std::move(description), {}, {}, std::move(provider), {}, {}}
    {
    }
    explicit CallFailure(CallStatus ended) : status(std::move(ended)) {}
    const char* what() const noexcept override { return "a call of the service failed"; }

    CallStatus status;
};

// For out-parameters: throws WBEM_E_INVALID_PARAMETER for a null pointer.
inline void NeedPlace(const void* place)
{
    if (!place)
        throw CallFailure(WBEM_E_INVALID_PARAMETER, L"there is no place for the answer");
}

// The status of the exception that is being handled: a CallFailure's own, WBEM_E_OUT_OF_MEMORY for std::bad_alloc, an
// ATL exception's code, WBEM_E_FAILED for any other.
CallStatus StatusOfCurrentException() noexcept;

// The thread's error object becomes an __ExtendedStatus of the failure; a success clears it. Returns the code.
HRESULT Publish(const CallStatus& status) noexcept;

// What SetStatus hands to a client beside the code: an __ExtendedStatus, or null for a success.
CComPtr<IWbemClassObject> ExtendedStatusOf(const CallStatus& status) noexcept;

// Takes the thread's error object and, where it holds one, answers its __ExtendedStatus.
CComPtr<IWbemClassObject> TakeExtendedStatus() noexcept;

// 0x80041002
std::wstring HexText(HRESULT code);

// The body of a COM method: no exception leaves it, and a failure has its error object. The body answers an HRESULT.
template <class Body>
HRESULT ComCall(Body&& body) noexcept
{
    try
    {
        return std::forward<Body>(body)();
    }
    catch (...)
    {
        return Publish(StatusOfCurrentException());
    }
}

} // namespace orl
