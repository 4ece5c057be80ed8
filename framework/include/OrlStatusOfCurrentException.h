// OrlStatusOfCurrentException: an exception of any kind as a status.
#pragma once

#include "com/OrlAtl.h"
#include "framework/include/CWomProviderException.h"

#include <new>

// To be called inside a handler. Always a failure: an exception that carries a success is still one.
//
// Inline on purpose: an exception can only be thrown on by the module that handles it.
inline HRESULT OrlStatusOfCurrentException() noexcept
{
    HRESULT status = WBEM_E_FAILED;
    try
    {
        throw;
    }
    catch (const CWomProviderException& failure)
    {
        status = failure.WbemStatus();
    }
    catch (const CAtlException& failure)
    {
        status = failure.m_hr;
    }
    catch (const std::bad_alloc&)
    {
        status = WBEM_E_OUT_OF_MEMORY;
    }
    catch (...)
    {
        // Without a name there is no more to say than that it failed.
    }
    return FAILED(status) ? status : WBEM_E_FAILED;
}
