// A client's sink that holds the service to its word: objects, then exactly one status, then nothing.
#pragma once

#include "com/OrlCom.h"
#include "tests/stress/Ledger.h"

#include <condition_variable>
#include <functional>
#include <mutex>

namespace orl::test
{

// Thread safe.
class CountingSink final : public ComObject<IWbemObjectSink>
{
public:
    explicit CountingSink(Ledger& ledger) : m_ledger(ledger) {}

    // Called with each object's number, from 1; its answer is Indicate's. Set before the sink is handed out.
    std::function<HRESULT(std::size_t number)> onObject;

    // Notes that the service has taken the sink: from now on it owes a status.
    void Accepted() { m_isOwed = true; }
    // Waits for the status; none in time is wrong.
    void Await();
    // When nothing runs any more.
    void Check();

    HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject** objects) override;
    HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT code, BSTR text, IWbemClassObject* object) override;

private:
    Ledger& m_ledger;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::size_t m_objects = 0;
    std::size_t m_statuses = 0;
    bool m_isOwed = false;
};

} // namespace orl::test
