// CComBSTR: an owned BSTR. What cannot be allocated throws E_OUTOFMEMORY.
#pragma once

#include "com/OrlBstr.h"
#include "com/OrlThrow.h"

#include <cwchar>
#include <string_view>
#include <utility>

class CComBSTR
{
public:
    // The text held, or null for an empty one.
    BSTR m_str = nullptr;

    CComBSTR() noexcept = default;
    CComBSTR(std::nullptr_t) noexcept {}
    CComBSTR(LPCOLESTR text) : m_str(text ? Make(text, std::wcslen(text)) : nullptr) {}
    CComBSTR(int length, LPCOLESTR text) : m_str(Make(text, static_cast<size_t>(length))) {}
    CComBSTR(const CComBSTR& other) : m_str(other.Copy()) {}
    CComBSTR(CComBSTR&& other) noexcept : m_str(other.Detach()) {}
    ~CComBSTR() { SysFreeString(m_str); }

    CComBSTR& operator=(LPCOLESTR text)
    {
        CComBSTR(text).Swap(*this);
        return *this;
    }
    CComBSTR& operator=(std::nullptr_t) noexcept
    {
        Empty();
        return *this;
    }
    CComBSTR& operator=(const CComBSTR& other)
    {
        CComBSTR(other).Swap(*this);
        return *this;
    }
    CComBSTR& operator=(CComBSTR&& other) noexcept
    {
        CComBSTR(std::move(other)).Swap(*this);
        return *this;
    }

    operator BSTR() const noexcept { return m_str; }
    // For an out-parameter: what is held is freed first, so that it cannot leak.
    BSTR* operator&() noexcept
    {
        Empty();
        return &m_str;
    }
    bool operator!() const noexcept { return !m_str; }

    // In characters and in bytes, zeros within the text included.
    unsigned int Length() const noexcept { return SysStringLen(m_str); }
    unsigned int ByteLength() const noexcept { return SysStringByteLen(m_str); }

    // A copy that the caller owns; null for null.
    BSTR Copy() const { return m_str ? Make(m_str, Length()) : nullptr; }
    HRESULT CopyTo(BSTR* other) const noexcept
    {
        if (!other)
            return E_POINTER;
        *other = m_str ? OrlAllocBstr(m_str, Length()) : nullptr;
        return m_str && !*other ? E_OUTOFMEMORY : S_OK;
    }
    void Attach(BSTR other) noexcept
    {
        if (m_str != other)
            SysFreeString(std::exchange(m_str, other));
    }
    BSTR Detach() noexcept { return std::exchange(m_str, nullptr); }
    void Empty() noexcept { SysFreeString(Detach()); }

    HRESULT Append(LPCOLESTR text, int length) noexcept
    {
        const size_t held = Length();
        const size_t added = static_cast<size_t>(length);
        BSTR joined = OrlAllocBstr(nullptr, held + added);
        if (!joined)
            return E_OUTOFMEMORY;
        if (held)
            std::wmemcpy(joined, m_str, held);
        if (added)
            std::wmemcpy(joined + held, text, added);
        // Only now: the text appended may be this one's own.
        Attach(joined);
        return S_OK;
    }
    HRESULT Append(LPCOLESTR text) noexcept { return text ? Append(text, static_cast<int>(std::wcslen(text))) : S_OK; }
    HRESULT Append(const CComBSTR& other) noexcept { return Append(other.m_str, static_cast<int>(other.Length())); }
    CComBSTR& operator+=(LPCOLESTR text)
    {
        ThrowIf(Append(text));
        return *this;
    }
    CComBSTR& operator+=(const CComBSTR& other)
    {
        ThrowIf(Append(other));
        return *this;
    }

    // By characters; null equals the empty text.
    bool operator==(const CComBSTR& other) const noexcept { return View() == other.View(); }
    bool operator==(LPCOLESTR text) const noexcept
    {
        return View() == (text ? std::wstring_view(text) : std::wstring_view());
    }
    bool operator==(LPOLESTR text) const noexcept { return *this == static_cast<LPCOLESTR>(text); }
    bool operator==(std::nullptr_t) const noexcept { return !m_str; }
    bool operator<(const CComBSTR& other) const noexcept { return View() < other.View(); }

private:
    static BSTR Make(LPCOLESTR text, size_t length)
    {
        BSTR made = OrlAllocBstr(text, length);
        if (!made)
            AtlThrow(E_OUTOFMEMORY);
        return made;
    }
    static void ThrowIf(HRESULT hr)
    {
        if (FAILED(hr))
            AtlThrow(hr);
    }
    std::wstring_view View() const noexcept { return {m_str ? m_str : L"", Length()}; }
    void Swap(CComBSTR& other) noexcept { std::swap(m_str, other.m_str); }
};
