// A text as the VARIANT that IWbemClassObject::Put reads.

#include "framework/src/TextArgument.h"

#include "framework/src/PropertyValue.h"

#include <algorithm>

namespace orl
{

TextArgument::TextArgument(const wchar_t* text, std::size_t length)
{
    VariantInit(&m_variant);
    m_variant.vt = VT_NULL;
    if (text == nullptr)
        return;
    m_variant.vt = VT_BSTR;
    if (length > Capacity)
    {
        m_long = MakeBstr(text, length);
        m_variant.bstrVal = m_long;
        return;
    }
    m_short.bytes = static_cast<std::uint32_t>(length * sizeof(wchar_t));
    *std::copy_n(text, length, m_short.characters) = L'\0';
    m_variant.bstrVal = m_short.characters;
}

} // namespace orl
