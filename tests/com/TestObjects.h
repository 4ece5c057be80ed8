// Objects and identifiers that the tests of the COM frame share with the server library that they load.
#pragma once

#include "com/OrlCom.h"

// Invented classes.
inline constexpr CLSID CLSID_Counter = {0x5B0C71E4, 0x93A6, 0x4C1D, {0x8F, 0x02, 0x6A, 0x1D, 0x3E, 0x97, 0x54, 0xB8}};
inline constexpr CLSID CLSID_Thrower = {0x5B0C71E5, 0x93A6, 0x4C1D, {0x8F, 0x02, 0x6A, 0x1D, 0x3E, 0x97, 0x54, 0xB8}};
inline constexpr CLSID CLSID_Nobody = {0x5B0C71EF, 0x93A6, 0x4C1D, {0x8F, 0x02, 0x6A, 0x1D, 0x3E, 0x97, 0x54, 0xB8}};

// Two interfaces; says when it goes.
class Counter final : public orl::ComObject<IWbemObjectSink, IWbemShutdown>
{
public:
    Counter() = default;
    explicit Counter(bool* gone) : m_gone(gone) {}

    HRESULT STDMETHODCALLTYPE Indicate(LONG count, IWbemClassObject**) override
    {
        m_indicated += count;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetStatus(LONG, HRESULT result, BSTR, IWbemClassObject*) override { return result; }
    HRESULT STDMETHODCALLTYPE Shutdown(LONG, ULONG, IWbemContext*) override
    {
        return static_cast<HRESULT>(m_indicated);
    }

private:
    ~Counter() override
    {
        if (m_gone)
            *m_gone = true;
    }

    LONG m_indicated = 0;
    bool* m_gone = nullptr;
};
