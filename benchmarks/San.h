// What the benchmarks of whole requests share: an inventory of a size, the registry that names it, a connection, and a
// sink that counts.
#pragma once

#include "com/OrlAtl.h"
#include "com/OrlCom.h"

#include <wbemidl.h>

#include <atomic>
#include <cstddef>
#include <filesystem>

namespace orl::bench
{

// How many of each kind the inventory is to hold.
struct San
{
    std::size_t hbas;
    std::size_t targetsPerHba;
    std::size_t lunsPerTarget;
    std::size_t settingsPerHba = 0;
};

// The agent notices that its file has changed.
void WriteInventory(const San& san);

// Before the first request: makes a registry that names the build's own libraries and the inventory, and this process's
// registry of it.
void SetUp();

// Throws std::runtime_error for a failure.
void Require(HRESULT hr, const char* what);

CComPtr<IWbemServices> Connect();

class CountingSink final : public ComObject<IWbemObjectSink>
{
public:
    std::size_t count = 0;
    std::atomic<HRESULT> status = WBEM_S_PENDING; // set by the host's thread

    HRESULT STDMETHODCALLTYPE Indicate(LONG objects, IWbemClassObject**) override
    {
        count += static_cast<std::size_t>(objects);
        return WBEM_S_NO_ERROR;
    }
    HRESULT STDMETHODCALLTYPE SetStatus(LONG flags, HRESULT result, BSTR, IWbemClassObject*) override
    {
        if (flags == WBEM_STATUS_COMPLETE)
        {
            status = result;
            status.notify_all();
        }
        return WBEM_S_NO_ERROR;
    }
    // The host answers a call when the request is under way; it is done when the status has come.
    HRESULT Await() const
    {
        status.wait(WBEM_S_PENDING);
        return status;
    }
};

} // namespace orl::bench
