// ErrorText: the error object.

#include "framework/com/ErrorText.h"

#include "com/OrlCom.h"

namespace orl
{

namespace
{

class ErrorText final : public ComObject<IErrorInfo>
{
public:
    ErrorText(const wchar_t* source, const wchar_t* description) : m_source(source), m_description(description) {}

    HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) override
    {
        if (guid == nullptr)
            return E_POINTER;
        *guid = GUID{};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return Copy(m_source, source); }
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) override { return Copy(m_description, description); }
    HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) override { return Copy(CComBSTR(), file); }
    HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) override
    {
        if (context == nullptr)
            return E_POINTER;
        *context = 0;
        return S_OK;
    }

private:
    static HRESULT Copy(const CComBSTR& text, BSTR* copy)
    {
        if (copy == nullptr)
            return E_POINTER;
        *copy = nullptr;
        if (text.m_str == nullptr)
            return S_OK;
        *copy = OrlAllocBstr(text.m_str, text.Length());
        return *copy != nullptr ? S_OK : E_OUTOFMEMORY;
    }

    CComBSTR m_source;
    CComBSTR m_description;
};

} // namespace

void SetErrorText(const wchar_t* source, const wchar_t* description) noexcept
{
    try
    {
        ::SetErrorInfo(0, MakeObject<ErrorText>(source, description));
    }
    catch (...)
    {
        // Words of an earlier call would mislead.
        ::SetErrorInfo(0, nullptr);
    }
}

} // namespace orl
