// COrlTraceScope: entry and exit lines.

#include "Common/Src/OrlDebug.h"

#include "Common/Src/OrlSecure.h"

#include <cwchar>
#include <new>

namespace
{

constexpr wchar_t SourceName[] = L"..\\..\\Common\\Src\\OrlDebug";

// Null when there is no name or no memory.
wchar_t* CopyName(const wchar_t* name)
{
    if (name == nullptr)
        return nullptr;
    const size_t capacity = std::wcslen(name) + 1;
    wchar_t* copy = new (std::nothrow) wchar_t[capacity];
    if (copy != nullptr)
        OrlSafeCopy(SourceName, __LINE__, copy, capacity, name);
    return copy;
}

} // namespace

void COrlTraceScope::Enter(const wchar_t* name) noexcept
{
    g_OrlDebug.m_tier.fetch_add(1, std::memory_order_relaxed);
    m_counted = true;
    // Where errors only are logged, the name would be copied for nothing.
    if (!g_OrlDebug.AdmitsPrint())
        return;
    m_name = CopyName(name);
    g_OrlDebug.Print(L"ENTRY:  %s", name != nullptr ? name : L"");
}

void COrlTraceScope::Leave() noexcept
{
    if (m_name != nullptr)
        PrintExit();
    delete[] m_name;
    g_OrlDebug.m_tier.fetch_sub(1, std::memory_order_relaxed);
}

void COrlTraceScope::PrintExit() const
{
    if (m_kind == Kind::Bool && m_boolResult != nullptr)
        g_OrlDebug.Print(L"EXIT:  %s, bReturn=%s", m_name, *m_boolResult ? L"true" : L"false");
    else if (m_kind == Kind::Int && m_intResult != nullptr)
        g_OrlDebug.Print(L"EXIT:  %s, nReturn=%d", m_name, *m_intResult);
    else if (m_kind == Kind::Record && m_recordResult != nullptr)
        g_OrlDebug.Print(L"EXIT:  %s, res.ulErrCode=%d", m_name, *m_recordResult);
    else if (m_kind == Kind::Hresult && m_hresultResult != nullptr)
        g_OrlDebug.Print(L"EXIT:  %s, HRESULT=0X%x", m_name, *m_hresultResult);
    else
        g_OrlDebug.Print(L"EXIT:  %s", m_name);
}
