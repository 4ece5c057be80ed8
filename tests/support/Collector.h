// What a client of a test brings to an asynchronous call: a sink, and something to wait for.
#pragma once

#include "com/OrlCom.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace orl::test
{

// A client's sink. Thread safe.
class Collector : public ComObject<IWbemObjectSink>
{
public:
    struct Status
    {
        HRESULT code;
        std::wstring text;
        CComPtr<IWbemClassObject> object;
    };

    // Called with each object's number, from 1; its answer is Indicate's.
    std::function<HRESULT(std::size_t count)> onObject;

    // Waits for the final status.
    Status Await();
    bool HasStatus() const;
    std::size_t Count() const;
    std::size_t Statuses() const;
    std::vector<CComPtr<IWbemClassObject>> Objects() const;

    HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject** objects) override;
    HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT code, BSTR text, IWbemClassObject* object) override;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<CComPtr<IWbemClassObject>> m_objects;
    std::vector<Status> m_statuses;
};

// Something that one thread waits for and another one lets happen.
class Gate
{
public:
    void Open();
    void Pass(); // waits

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isOpen = false;
};

} // namespace orl::test
