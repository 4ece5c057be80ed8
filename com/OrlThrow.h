// The exception that carries an HRESULT.
#pragma once

#include <windows.h>

class CAtlException
{
public:
    HRESULT m_hr;

    CAtlException() noexcept : m_hr(E_FAIL) {}
    explicit CAtlException(HRESULT hr) noexcept : m_hr(hr) {}
    operator HRESULT() const noexcept { return m_hr; }
};

[[noreturn]] void AtlThrow(HRESULT hr);
