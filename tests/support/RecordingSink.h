// RecordingSink: a client's sink that keeps what it was told.
#pragma once

#include "tests/support/FakeClassObject.h"

#include <mutex>

namespace orl::test
{

// Safe for calls from any thread.
class RecordingSink final : public ComObject<IWbemObjectSink>
{
public:
    struct Status
    {
        LONG flags;
        HRESULT result;
        std::wstring text;
        CComPtr<IWbemClassObject> object;
    };

    // What the n-th Indicate answers, from 1; a failure keeps no object.
    std::function<HRESULT(ULONG n)> indicate;
    // What SetStatus answers.
    HRESULT statusAnswer = WBEM_S_NO_ERROR;
    // Whether objects are kept; counting alone is enough for many.
    bool keepsObjects = true;

    // Objects taken, in order.
    std::vector<CComPtr<IWbemClassObject>> Objects() const;
    // The object at that place as the fake that it is.
    CComPtr<FakeClassObject> Fake(std::size_t index) const;
    ULONG IndicateCalls() const;
    ULONG Taken() const;
    std::vector<Status> Statuses() const;
    // The one final status. Fails the test when there is not exactly one.
    Status Final() const;
    // A property of the final status's object; "<none>" when there is no object or no such property.
    std::wstring Extended(const std::wstring& name) const;
    // How many references are out, the caller's own included.
    ULONG References()
    {
        AddRef();
        return Release();
    }

    HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject** objects) override;
    HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT result, BSTR text, IWbemClassObject* object) override;

private:
    mutable std::mutex m_lock;
    ULONG m_calls = 0;
    ULONG m_taken = 0;
    std::vector<CComPtr<IWbemClassObject>> m_objects;
    std::vector<Status> m_statuses;
};

} // namespace orl::test
